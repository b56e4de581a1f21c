// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/page_reader.h"
#include "print/print_engine.h"
#include "print/print_error.h"
#include "store/files/own_file.h"
#include "text/system_reason.h"

#include <QFile>

#include <algorithm>
#include <fcntl.h>

namespace zelto::print {

namespace {

Alignment alignmentOf(int number)
{
    if (number == static_cast<int>(Alignment::Left))
        return Alignment::Left;
    return number == static_cast<int>(Alignment::Right) ? Alignment::Right : Alignment::Centred;
}

/// Row heights and column widths of a damaged page stay those of a page.
float gridUnit(float twips)
{
    return std::clamp(twips, 0.0F, 100'000.0F);
}

} // namespace

void PrintEngine::ReplayPage()
{
    m_page.abandon();
    const QString path = m_pages.pagePath(m_pageNumber);
    store::OwnFile page(QFile::encodeName(path), O_RDONLY);
    if (!page.isOpen())
        throw PrintError(PrintErrorNumber::FileNotFound,
                         u"Impossibile leggere il file di pagina «%1»: %2."_s.arg(
                             path, text::systemReason(page.error())));
    QFile file;
    file.open(page.release(), QIODevice::ReadOnly | QIODevice::Unbuffered,
              QFileDevice::AutoCloseHandle);
    ReplayRecords(file);
}

void PrintEngine::ReplayRecords(QIODevice& device)
{
    m_page.abandon();
    PageReader reader(device);
    while (const auto line = reader.nextLine())
        replayRecord(RecordFields{*line});
}

void PrintEngine::PrintDocument(int first, int last)
{
    for (int page = first; page <= last; ++page) {
        m_pageNumber = page - 1;
        ReplayPage();
        NewPage();
    }
    EndDocument();
}

void PrintEngine::replayRecord(const RecordFields& record)
{
    const Opcode opcode = record.opcode();
    const int fields = fieldCount(opcode);
    if (fields == 0 || record.count() < fields)
        return;
    const auto number = [&](std::size_t field) { return record.number(field); };
    switch (opcode) {
    case Opcode::State:
        return replayState(record);
    case Opcode::FontName:
        return SetFontName(record.text(1));
    case Opcode::FontSize:
        return SetFontSize(number(1));
    case Opcode::FontBold:
        return SetFontBold(record.flag(1));
    case Opcode::FontUnderline:
        return SetFontUnderline(record.flag(1));
    case Opcode::Colours:
        return SetColours(record.integer(1), record.integer(2));
    case Opcode::Field:
        return replayField(record);
    case Opcode::Text:
        return PrintText(number(1), number(2), number(3), record.tabbedText(4));
    case Opcode::Right:
        return PrintRight(number(1), number(2), number(3), record.tabbedText(4));
    case Opcode::Centred:
        return PrintCentred(number(1), number(2), number(3), record.tabbedText(4));
    case Opcode::Number:
        return PrintNumber(number(1), number(2), record.text(3));
    case Opcode::Box:
        return DrawBox(number(1), number(2), number(3), number(4), number(5),
                       record.integer(6) == 1);
    case Opcode::HLine:
        return DrawHLine(number(1), number(2), number(3), number(4));
    case Opcode::VLine:
        return DrawVLine(number(1), number(2), number(3), number(4));
    case Opcode::Picture:
        return DrawPicture(number(1), number(2), number(3), number(4), record.text(5));
    }
}

void PrintEngine::replayState(const RecordFields& record)
{
    m_lineHeight = gridUnit(record.number(1));
    m_charWidth = gridUnit(record.number(2));
    if (const QString name = record.text(3); !name.trimmed().isEmpty())
        SetFontName(name);
    if (const float size = record.number(4); size != 0)
        SetFontSize(size);
    SetFontBold(record.flag(5));
    SetFontUnderline(record.flag(6));
    SetFontItalic(record.flag(7));
}

void PrintEngine::replayField(const RecordFields& record)
{
    const QString flags = record.text(6);
    const auto on = [&](qsizetype place) { return flags.size() > place && flags[place] == u'1'; };
    const FieldStyle style{.size = record.number(4),
                           .alignment = alignmentOf(record.integer(5)),
                           .bold = on(0),
                           .italic = on(1),
                           .underline = on(2)};
    PrintField(record.number(1), record.number(2), record.number(3), style, record.tabbedText(7));
}

} // namespace zelto::print
