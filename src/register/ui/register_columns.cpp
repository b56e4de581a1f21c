// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/ui/register_columns.h"

#include "calc/figure_remarks.h"
#include "store/schema.h"

namespace zelto::registro {

using widgets::FieldTag;
using widgets::GridColumn;
using widgets::PickerEntry;

namespace {

constexpr Qt::Alignment LeftCentre = Qt::AlignLeft | Qt::AlignVCenter;
constexpr Qt::Alignment RightCentre = Qt::AlignRight | Qt::AlignVCenter;

int longestOfUnit(QStringView field)
{
    return store::longestText(store::TabellaUnita, field);
}

int longestOfRoom(QStringView field)
{
    return store::longestText(store::TabellaVani, field);
}

GridColumn coefficient(QStringView header, calc::CoefficientList& lista)
{
    return {
        .header = header.toString(),
        .alignment = RightCentre,
        .tag = u"AOL"_s,
        .holds = FieldTag::Holds::Figures,
        .maxLength = longestOfRoom(header),
        .width = 1000,
        .editing = GridColumn::Editing::ByScreen,
        .remark = [&lista](const QString& text) { return calc::osservaCoefficiente(lista, text); }};
}

} // namespace

std::vector<GridColumn> unitColumns(const RegisterLists& lists)
{
    std::vector<GridColumn> columns{
        {.header = u"Riferimento"_s, .maxLength = longestOfUnit(u"Riferimento"), .width = 2700},
        {.header = u"Livello"_s, .maxLength = longestOfUnit(u"Livello"), .width = 1600},
        {.header = u"Scala"_s,
         .alignment = LeftCentre,
         .maxLength = longestOfUnit(u"Codice scala"),
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
         .tag = u"SOL"_s,
         .maxLength = longestOfUnit(u"H piano"),
         .width = 800,
         .remark = calc::osservaCifra}};
    for (int table = 1; table <= store::SpecialTables; ++table)
        columns.push_back({.header = u"T%1"_s.arg(table),
                           .alignment = Qt::AlignCenter,
                           .maxLength = 1,
                           .width = 450,
                           .editing = GridColumn::Editing::ByScreen});
    return columns;
}

std::vector<GridColumn> roomColumns(calc::Liste& liste)
{
    std::vector<GridColumn> columns{
        {.header = u"Ambiente"_s, .maxLength = longestOfRoom(u"Ambiente"), .width = 1600},
        {.header = u"Consistenza"_s,
         .alignment = RightCentre,
         .tag = u"SOL"_s,
         .maxLength = 10,
         .width = 1000,
         .remark = calc::osservaConsistenza}};
    for (std::size_t lista = 0; lista < liste.size(); ++lista)
        columns.push_back(coefficient(store::GroupNames[lista + 1], liste[lista]));
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
