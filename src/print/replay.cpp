// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/print_engine.h"
#include "print/print_error.h"
#include "store/files/own_file.h"
#include "text/system_reason.h"

#include <QFile>

#include <algorithm>
#include <fcntl.h>
#include <string>
#include <vector>

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

/// Uses every line of the device without its end and what it holds beyond MaxRecordLength bytes.
/// Throws PrintError when the device cannot be read.
template <typename Use>
void forEachLine(QIODevice& device, const Use& use)
{
    std::string line;
    const auto grow = [&](std::string_view piece) {
        line += piece.substr(0, MaxRecordLength - line.size());
    };
    const auto end = [&] {
        if (line.ends_with('\r'))
            line.pop_back();
        use(line);
        line.clear();
    };
    std::vector<char> block(MaxRecordLength);
    qint64 count = 0;
    while ((count = device.read(block.data(), static_cast<qint64>(block.size()))) > 0) {
        std::string_view rest(block.data(), static_cast<std::size_t>(count));
        for (std::size_t length = 0; (length = rest.find('\n')) < rest.size();) {
            grow(rest.substr(0, length));
            end();
            rest.remove_prefix(length + 1);
        }
        grow(rest);
    }
    if (count < 0)
        throw PrintError(
            PrintErrorNumber::DeviceFailed,
            u"Impossibile leggere il file di pagina: %1."_s.arg(text::systemReason(device)));
    if (!line.empty())
        end();
}

/// Calls the operation with the fields behind the opcode, one for each parameter; false for a
/// record of fewer.
template <typename... Parameters>
bool call(PrintEngine& engine, void (PrintEngine::*operation)(Parameters...),
          const RecordFields& record)
{
    constexpr std::size_t Count = sizeof...(Parameters);
    if (record.count() <= static_cast<int>(Count))
        return false;
    [&]<std::size_t... Index>(std::index_sequence<Index...>)
    {
        (engine.*operation)(record.value<std::remove_cvref_t<Parameters>>(Index + 1)...);
    }
    (std::make_index_sequence<Count>{});
    return true;
}

} // namespace

PageCondition PrintEngine::ReplayPage()
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
    const auto length = m_lengths.find(m_pageNumber);
    const bool isCut = length != m_lengths.end() && file.size() != length->second;
    const PageCondition condition = ReplayRecords(file);
    return isCut && condition == PageCondition::Whole ? PageCondition::Damaged : condition;
}

PageCondition PrintEngine::ReplayRecords(QIODevice& device)
{
    m_page.abandon();
    int records = 0;
    bool isWhole = true;
    forEachLine(device, [&](std::string_view line) {
        const bool isRecord = replayRecord(RecordFields{line});
        records += isRecord ? 1 : 0;
        isWhole = isWhole && isRecord;
    });
    if (records == 0)
        return PageCondition::Empty;
    return isWhole ? PageCondition::Whole : PageCondition::Damaged;
}

void PrintEngine::PrintDocument(int first, int last)
{
    m_page.abandon();
    forgetSection();
    for (int page = first; page <= last; ++page) {
        m_pageNumber = page - 1;
        if (const auto known = m_marks.find(m_pageNumber); known != m_marks.end())
            mark(known->second);
        ReplayPage();
        NewPage();
    }
    EndDocument();
}

/// False for a record of no operation, or of too few fields.
bool PrintEngine::replayRecord(const RecordFields& record)
{
    bool replayed = false;
    const auto on = [&, opcode = record.opcode()](Opcode wanted, auto operation) {
        if (opcode == wanted)
            replayed = call(*this, operation, record);
    };
    on(Opcode::State, &PrintEngine::replayState);
    on(Opcode::FontName, &PrintEngine::SetFontName);
    on(Opcode::FontSize, &PrintEngine::SetFontSize);
    on(Opcode::FontBold, &PrintEngine::SetFontBold);
    on(Opcode::FontUnderline, &PrintEngine::SetFontUnderline);
    on(Opcode::Colours, &PrintEngine::SetColours);
    on(Opcode::Field, &PrintEngine::replayField);
    on(Opcode::Text, &PrintEngine::PrintText);
    on(Opcode::Right, &PrintEngine::PrintRight);
    on(Opcode::Centred, &PrintEngine::PrintCentred);
    on(Opcode::Number, &PrintEngine::PrintNumber);
    on(Opcode::Box, &PrintEngine::replayBox);
    on(Opcode::HLine, &PrintEngine::DrawHLine);
    on(Opcode::VLine, &PrintEngine::DrawVLine);
    on(Opcode::Picture, &PrintEngine::DrawPicture);
    return replayed;
}

void PrintEngine::replayState(float lineHeight, float charWidth, const QString& fontName,
                              float fontSize, bool bold, bool underline, bool italic)
{
    m_lineHeight = gridUnit(lineHeight);
    m_charWidth = gridUnit(charWidth);
    if (!fontName.trimmed().isEmpty())
        SetFontName(fontName);
    if (fontSize != 0)
        SetFontSize(fontSize);
    SetFontBold(bold);
    SetFontUnderline(underline);
    SetFontItalic(italic);
}

void PrintEngine::replayField(float row, float column, float width, float size, int alignment,
                              const QString& flags, const QString& text)
{
    const auto on = [&](qsizetype place) { return flags.mid(place, 1) == u'1'; };
    const FieldStyle style{.size = size,
                           .alignment = alignmentOf(alignment),
                           .bold = on(0),
                           .italic = on(1),
                           .underline = on(2)};
    PrintField(row, column, width, style, text);
}

void PrintEngine::replayBox(float top, float left, float bottom, float right, float penWidth,
                            int shadow)
{
    DrawBox(top, left, bottom, right, penWidth, shadow == 1);
}

} // namespace zelto::print
