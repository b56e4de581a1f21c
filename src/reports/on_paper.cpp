// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/on_paper.h"

#include "reports/sections.h"

#include <algorithm>
#include <limits>
#include <memory>

namespace zelto::reports {

namespace {

using calc::Stampato;

/// How wide the text in the column of an allocation may be, the narrowest of the tables.
float widthIn(const print::PrintEngine& engine, const TableKind& kind, std::size_t column,
              double figure)
{
    std::vector<Cell> cells(kind.allocationColumns.size());
    for (std::size_t i = column + 1; i < cells.size(); ++i)
        if (const auto* mask = kind.allocationColumns[i].mask; mask != nullptr)
            cells[i].text = mask->format(figure);
        else
            cells[i].text = u"-"_s;
    return endOfText(engine, kind.allocationColumns, cells, column) -
           kind.allocationColumns[column].position;
}

} // namespace

calc::SullaCarta sullaCarta()
{
    const auto engine = std::make_shared<print::PrintEngine>(QString(), text::DecimalSeparators());
    ReportPage::setBody(*engine);
    return [engine](Stampato che, const QString& nome, double cifra) {
        if (che == Stampato::Ambiente)
            return roomNameOnPaper(*engine, nome, static_cast<float>(cifra));
        float width = std::numeric_limits<float>::infinity();
        for (const TableKind& kind : tableKinds())
            width = std::min(width, widthIn(*engine, kind, std::size_t(che), cifra));
        return engine->fitted(nome, width).text;
    };
}

} // namespace zelto::reports
