// SPDX-License-Identifier: GPL-3.0-or-later
// What a database of the Windows edition's engine holds, as text that can be compared.
#pragma once

#include "store/jet/table.h"
#include "text/literals.h"

#include <QDateTime>

#include <cmath>

namespace zelto::test {

class FieldText
{
public:
    QString operator()(std::monostate /*null*/) const { return u"~"_s; }
    QString operator()(bool value) const { return value ? u"b:1"_s : u"b:0"_s; }
    QString operator()(qint64 value) const { return u"i:%1"_s.arg(value); }
    QString operator()(double value) const { return u"f:"_s + QString::asprintf("%.17g", value); }
    QString operator()(store::jet::Money value) const
    {
        return u"m:%1"_s.arg(value.tenThousandths);
    }
    QString operator()(store::jet::Date value) const
    {
        const double day = std::trunc(value.days);
        const QDateTime midnight(QDate(1899, 12, 30).addDays(static_cast<qint64>(day)), QTime(0, 0),
                                 Qt::UTC);
        const auto time = static_cast<qint64>(std::llround(std::abs(value.days - day) * 86400000));
        return u"d:"_s + midnight.addMSecs(time).toString(u"yyyy-MM-ddTHH:mm:ss.zzz"_s);
    }
    QString operator()(const QString& value) const
    {
        QString text = u"s:"_s;
        for (const QChar c : value)
            text += c == u'\\'                 ? u"\\\\"_s
                    : c < u' ' || c == u'\x7f' ? u"\\x%1"_s.arg(c.unicode(), 2, 16, QChar(u'0'))
                                               : QString(c);
        return text;
    }
    QString operator()(const QByteArray& value) const { return u"x:%1"_s.arg(value.size()); }
};

/// Every table with its columns and rows; counts what could not be read.
inline QString jetDump(const QString& path, int& unreadable)
{
    const store::jet::JetFile file(path);
    QString dump;
    for (const store::jet::TableEntry& entry : store::jet::userTables(file)) {
        const store::jet::Table table(file, entry.definitionPage);
        dump += u"T\t%1\n"_s.arg(entry.name);
        for (const store::jet::Column& column : table.columns())
            dump += u"C\t%1\t%2\t%3\n"_s.arg(column.name)
                        .arg(static_cast<unsigned>(column.type))
                        .arg(column.size);
        const auto counts = table.forEachRow([&](const std::vector<store::jet::Field>& fields) {
            dump += u'R';
            for (const store::jet::Field& field : fields)
                dump += u'\t' + std::visit(FieldText(), field);
            dump += u'\n';
        });
        unreadable += counts.unreadable;
    }
    return dump;
}

} // namespace zelto::test
