// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/ui/shown_columns.h"

#include "calc/figure_remarks.h"

#include <algorithm>

namespace zelto::registro {

using widgets::GridColumn;

namespace {

constexpr Qt::Alignment RightCentre = Qt::AlignRight | Qt::AlignVCenter;

QString osservaScala(const QStringList& scale, const QString& code)
{
    return code.isEmpty() || scale.contains(code, Qt::CaseInsensitive)
               ? QString()
               : u"«%1» non è fra i codici delle scale."_s.arg(code);
}

GridColumn gridColumn(const Column& column, RegisterModel& model)
{
    GridColumn shown{.header = column.title, .maxLength = column.longest, .width = column.width};
    switch (column.holds) {
    case Holds::Words:
        break;
    case Holds::Height:
    case Holds::Size:
        shown.alignment = RightCentre;
        shown.kind = widgets::FieldKind::DecimalNumber;
        shown.remark = column.holds == Holds::Size ? calc::osservaConsistenza : calc::osservaCifra;
        break;
    case Holds::Staircase:
        shown.editing = GridColumn::Editing::ByScreen;
        shown.remark = [&model](const QString& code) {
            return osservaScala(model.lists().scale, code);
        };
        break;
    case Holds::Flag:
        shown.alignment = Qt::AlignCenter;
        shown.editing = GridColumn::Editing::ByScreen;
        break;
    case Holds::Coefficient:
        shown.alignment = RightCentre;
        shown.kind = widgets::FieldKind::FreeFigure;
        shown.editing = GridColumn::Editing::ByScreen;
        shown.remark = [&list = model.coefficients().at(static_cast<std::size_t>(column.index))](
                           const QString& text) { return calc::osservaCoefficiente(list, text); };
    }
    return shown;
}

} // namespace

std::vector<GridColumn> gridColumns(Table table, RegisterModel& model)
{
    std::vector<GridColumn> shown;
    for (const Column& column : columnsOf(table))
        shown.push_back(gridColumn(column, model));
    return shown;
}

QStringList cellsOf(const std::vector<Column>& columns, const Record& record)
{
    QStringList cells;
    for (const Column& column : columns) {
        const QString text = textOf(record, column.field);
        cells << (column.holds == Holds::Flag ? text.mid(column.index, 1).trimmed() : text);
    }
    return cells;
}

Offer offeredStaircases(const RegisterLists& lists, const QString& text)
{
    Offer offer{.entries = {{}}};
    for (const QString& code : lists.scale)
        offer.entries.push_back({.code = code, .value = {}, .description = {}});
    const qsizetype listed = lists.scale.indexOf(text);
    offer.current = text.trimmed().isEmpty() ? 0 : listed < 0 ? -1 : static_cast<int>(listed) + 1;
    return offer;
}

Offer offeredCoefficients(const RegisterLists& lists, int list, const QString& text)
{
    const auto& entries = lists.coefficienti.at(static_cast<std::size_t>(list));
    if (entries.empty())
        return {};
    Offer offer;
    for (const CoefficientEntry& entry : entries)
        offer.entries.push_back(
            {.code = entry.code, .value = entry.value, .description = entry.description});
    const auto current = std::ranges::find_if(
        entries, [&](const CoefficientEntry& entry) { return entry.text().startsWith(text); });
    offer.current = current == entries.end() ? 0 : static_cast<int>(current - entries.begin());
    offer.entries.emplace_back();
    return offer;
}

} // namespace zelto::registro
