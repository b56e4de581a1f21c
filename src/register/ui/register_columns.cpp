// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/ui/register_columns.h"

#include "calc/figure_remarks.h"
#include "coefficients/coefficient_groups.h"

namespace zelto::registro {

using widgets::FieldKind;
using widgets::GridColumn;
using widgets::PickerEntry;

namespace {

constexpr Qt::Alignment LeftCentre = Qt::AlignLeft | Qt::AlignVCenter;
constexpr Qt::Alignment RightCentre = Qt::AlignRight | Qt::AlignVCenter;

GridColumn coefficient(const QString& header, calc::CoefficientList& lista)
{
    return {
        .header = header,
        .alignment = RightCentre,
        .kind = FieldKind::FreeFigure,
        .maxLength = 15,
        .width = 1000,
        .editing = GridColumn::Editing::ByScreen,
        .remark = [&lista](const QString& text) { return calc::osservaCoefficiente(lista, text); }};
}

} // namespace

std::vector<GridColumn> unitColumns(const RegisterLists& lists)
{
    std::vector<GridColumn> columns{
        {.header = u"Riferimento"_s, .maxLength = 23, .width = 2700},
        {.header = u"Livello"_s, .maxLength = 20, .width = 1600},
        {.header = u"Scala"_s,
         .alignment = LeftCentre,
         .maxLength = 1,
         .width = 700,
         .editing = GridColumn::Editing::ByScreen,
         .remark =
             [&lists](const QString& code) {
                 const bool known =
                     code.isEmpty() || lists.scale.contains(code, Qt::CaseInsensitive);
                 return known ? QString() : u"«%1» non è fra i codici delle scale."_s.arg(code);
             }},
        {.header = u"H"_s,
         .alignment = RightCentre,
         .kind = FieldKind::DecimalNumber,
         .maxLength = 10,
         .width = 800,
         .remark = calc::osservaCifra}};
    for (int table = 1; table <= NumTables; ++table)
        columns.push_back({.header = u"T%1"_s.arg(table),
                           .alignment = Qt::AlignCenter,
                           .maxLength = 1,
                           .width = 450,
                           .editing = GridColumn::Editing::ByScreen});
    return columns;
}

std::vector<GridColumn> roomColumns(calc::Liste& liste)
{
    std::vector<GridColumn> columns{{.header = u"Ambiente"_s, .maxLength = 15, .width = 1600},
                                    {.header = u"Consistenza"_s,
                                     .alignment = RightCentre,
                                     .kind = FieldKind::DecimalNumber,
                                     .maxLength = 10,
                                     .width = 1000,
                                     .remark = calc::osservaConsistenza}};
    for (int group = 1; group <= NumCoefficients; ++group)
        columns.push_back(coefficient(coefficients::groupNames().at(group),
                                      liste.at(static_cast<std::size_t>(group - 1))));
    return columns;
}

std::vector<PickerEntry> scalaEntries(const QStringList& scale)
{
    std::vector<PickerEntry> entries{{}};
    for (const QString& code : scale)
        entries.push_back({.code = code, .value = {}, .description = {}});
    return entries;
}

int scalaEntry(const QStringList& scale, const QString& code)
{
    if (code.trimmed().isEmpty())
        return 0;
    const qsizetype found = scale.indexOf(code);
    return static_cast<int>(found < 0 ? found : found + 1);
}

} // namespace zelto::registro
