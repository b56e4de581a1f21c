// SPDX-License-Identifier: GPL-3.0-or-later
// What a database of the Windows edition's engine holds, as text that can be compared.
#pragma once

#include "store/jet/table.h"

#include <QDateTime>

#include <cmath>

namespace zelto::test {

class FieldText
{
public:
    QString operator()(std::monostate /*null*/) const { return QStringLiteral("~"); }
    QString operator()(bool value) const
    {
        return value ? QStringLiteral("b:1") : QStringLiteral("b:0");
    }
    QString operator()(qint64 value) const { return QStringLiteral("i:%1").arg(value); }
    QString operator()(double value) const
    {
        return QStringLiteral("f:") + QString::asprintf("%.17g", value);
    }
    QString operator()(store::jet::Money value) const
    {
        return QStringLiteral("m:%1").arg(value.tenThousandths);
    }
    QString operator()(store::jet::Date value) const
    {
        const double day = std::trunc(value.days);
        const QDateTime midnight(QDate(1899, 12, 30).addDays(static_cast<qint64>(day)), QTime(0, 0),
                                 Qt::UTC);
        const auto time = static_cast<qint64>(std::llround(std::abs(value.days - day) * 86400000));
        return QStringLiteral("d:") +
               midnight.addMSecs(time).toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss.zzz"));
    }
    QString operator()(const QString& value) const
    {
        QString text = QStringLiteral("s:");
        for (const QChar c : value)
            text += c == u'\\' ? QStringLiteral("\\\\")
                    : c < u' ' || c == u'\x7f'
                        ? QStringLiteral("\\x%1").arg(c.unicode(), 2, 16, QChar(u'0'))
                        : QString(c);
        return text;
    }
    QString operator()(const QByteArray& value) const
    {
        return QStringLiteral("x:%1").arg(value.size());
    }
};

/// Every table with its columns and rows; counts what could not be read.
inline QString jetDump(const QString& path, int& unreadable)
{
    const store::jet::PageFile file(path);
    QString dump;
    for (const store::jet::TableEntry& entry : store::jet::userTables(file)) {
        const store::jet::Table table(file, entry.definitionPage);
        dump += QStringLiteral("T\t%1\n").arg(entry.name);
        for (const store::jet::Column& column : table.columns())
            dump += QStringLiteral("C\t%1\t%2\t%3\n")
                        .arg(column.name)
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
