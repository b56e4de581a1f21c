// SPDX-License-Identifier: GPL-3.0-or-later
#include "data/data_text.h"

#include <QFile>
#include <QStringDecoder>

namespace zelto::data {
namespace {

QStringList readLines(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw DataFault(path, 0, file.errorString());
    QStringDecoder decode(QStringDecoder::Utf8);
    QString text = decode(file.readAll());
    if (decode.hasError())
        throw DataFault(path, 0, u"il testo non è in UTF-8."_s);
    text.remove(u'\r');
    if (text.endsWith(u'\n'))
        text.chop(1);
    return text.split(u'\n');
}

Row parseRow(const QString& text, int line)
{
    const QString trimmed = text.trimmed();
    if (trimmed.startsWith(u'[') && trimmed.endsWith(u']') && !trimmed.contains(u'|'))
        return {line, RowKind::Heading, {trimmed.sliced(1, trimmed.size() - 2)}};
    Row row{line, text.front() == u' ' ? RowKind::Indented : RowKind::Plain, text.split(u'|')};
    for (QString& cell : row.cells)
        cell = cell.trimmed();
    return row;
}

} // namespace

DataFault::DataFault(const QString& path, int line, const QString& what)
    : std::runtime_error(
          ((line > 0 ? u"%1:%2: "_s.arg(path).arg(line) : path + u": "_s) + what).toStdString())
{}

DataText DataText::read(const QString& path)
{
    DataText result;
    result.m_path = path;
    int line = 0;
    for (const QString& text : readLines(path)) {
        ++line;
        // Stored tables separate their cells with it.
        if (text.contains(u'\t'))
            throw DataFault(path, line, u"tabulazione al posto degli spazi."_s);
        const QString trimmed = text.trimmed();
        if (!trimmed.isEmpty() && !trimmed.startsWith(u'#'))
            result.m_rows.push_back(parseRow(text, line));
    }
    return result;
}

void DataText::fail(const Row& row, const QString& what) const
{
    throw DataFault(m_path, row.line, what);
}

void DataText::requireCells(const Row& row, qsizetype count) const
{
    if (row.cells.size() != count)
        fail(row, u"%1 celle invece di %2."_s.arg(row.cells.size()).arg(count));
}

QString DataText::cell(const Row& row, qsizetype index, qsizetype maxLength) const
{
    const QString& text = row.cells.at(index);
    if (text.size() > maxLength)
        fail(row, u"«%1» è più lungo di %2 caratteri."_s.arg(text).arg(maxLength));
    return text;
}

QString readParagraphs(const QString& path)
{
    const QString paragraphEnd = u"\r\n"_s;
    QString result;
    for (const QString& text : readLines(path)) {
        const QString line = text.trimmed();
        const bool inParagraph = !result.isEmpty() && !result.endsWith(paragraphEnd);
        if (line.isEmpty())
            result += paragraphEnd;
        else if (inParagraph)
            result += (line.startsWith(u"- ") ? paragraphEnd : u" "_s) + line;
        else
            result += line;
    }
    return result.endsWith(paragraphEnd) ? result : result + paragraphEnd;
}

} // namespace zelto::data
