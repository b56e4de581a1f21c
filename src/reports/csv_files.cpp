// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/complete_file.h"
#include "reports/table_export.h"

#include <QDir>

#include <algorithm>
#include <memory>

namespace zelto::reports {

namespace {

/// Quoted where a separator, a quote or a line break is part of the text. A spreadsheet would take
/// a text that begins like a formula for one: the apostrophe makes it a text.
QString textField(QString text)
{
    if (!text.isEmpty() && u"=+-@"_s.contains(text.front()))
        text.prepend(u'\'');
    const auto needsQuotes = [](QChar c) {
        return c == u';' || c == u'"' || c == u'\n' || c == u'\r';
    };
    if (std::none_of(text.cbegin(), text.cend(), needsQuotes))
        return text;
    return u'"' + text.replace(u'"', u"\"\""_s) + u'"';
}

QString field(const TableColumn& column, const Cell& cell)
{
    if (column.isText())
        return textField(cell.text.trimmed());
    return cell.value ? QString::number(*cell.value, 'f', column.decimals).replace(u'.', u',')
                      : QString();
}

QByteArray csvOf(const TableReport& table)
{
    QStringList heads;
    for (const TableColumn& column : table.columns)
        heads << textField(column.head);
    QStringList lines{heads.join(u';')};
    for (const TableRow& row : table.rows) {
        QStringList fields;
        for (std::size_t i = 0; i < table.columns.size(); ++i)
            fields << field(table.columns[i], row.cells[i]);
        lines << fields.join(u';');
    }
    return "\xEF\xBB\xBF" + (lines.join(u"\r\n"_s) + u"\r\n"_s).toUtf8();
}

} // namespace

void writeCsv(const QString& folder, const Tables& tables, const print::PdfInfo& /*info*/)
{
    print::makeFolder(folder);
    const QStringList names = sheetNames(tables);
    std::vector<std::unique_ptr<print::CompleteFile>> files;
    for (std::size_t i = 0; i < tables.size(); ++i) {
        const QString path = QDir(folder).filePath(names[static_cast<qsizetype>(i)] + u".csv"_s);
        files.push_back(i == 0 ? std::make_unique<print::CompleteFile>(path)
                               : std::make_unique<print::CompleteFile>(path, *files.front()));
        files.back()->device().write(csvOf(tables[i]));
        files.back()->finish();
    }
    print::CompleteFile::commitAll(files);
}

} // namespace zelto::reports
