// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/grid_block.h"

#include "text/literals.h"

#include <optional>

namespace zelto::widgets {

namespace {

/// Reads cell by cell.
class BlockReader
{
public:
    explicit BlockReader(const QString& text) : m_text(text) {}

    CellBlock read()
    {
        CellBlock block;
        while (!atEnd()) {
            block.emplace_back(readCell());
            while (take(u'\t'))
                block.back() += readCell();
            take(u'\r');
            take(u'\n');
        }
        return block;
    }

private:
    [[nodiscard]] bool atEnd() const { return m_place >= m_text.size(); }

    bool take(QChar expected)
    {
        const bool found = !atEnd() && m_text[m_place] == expected;
        m_place += found ? 1 : 0;
        return found;
    }

    QString readCell()
    {
        const qsizetype start = m_place;
        if (take(u'"')) {
            if (const std::optional<QString> quoted = readQuoted())
                return *quoted;
            m_place = start; // an ordinary cell that begins with a quote
        }
        while (!atEnd() && !QStringView(u"\t\r\n").contains(m_text[m_place]))
            ++m_place;
        return m_text.mid(start, m_place - start);
    }

    /// From behind the opening quote; nothing when the closing one does not end the cell.
    std::optional<QString> readQuoted()
    {
        QString cell;
        while (!atEnd()) {
            if (!take(u'"'))
                cell += m_text[m_place++];
            else if (take(u'"'))
                cell += u'"';
            else if (atEnd() || QStringView(u"\t\r\n").contains(m_text[m_place]))
                return cell;
            else
                return std::nullopt;
        }
        return std::nullopt;
    }

    const QString& m_text;
    qsizetype m_place = 0;
};

} // namespace

QString blockText(const CellBlock& block)
{
    QString text;
    for (const QStringList& row : block)
        text += row.join(u'\t') + u'\n';
    return text;
}

CellBlock readBlock(const QString& text)
{
    return BlockReader(text).read();
}

} // namespace zelto::widgets
