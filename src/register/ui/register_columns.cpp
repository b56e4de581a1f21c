// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/ui/register_columns.h"

namespace zelto::registro {

using widgets::GridColumn;

namespace {

constexpr Qt::Alignment LeftCentre = Qt::AlignLeft | Qt::AlignVCenter;
constexpr Qt::Alignment RightCentre = Qt::AlignRight | Qt::AlignVCenter;

GridColumn coefficient(const QString& header)
{
    return {.header = header,
            .alignment = RightCentre,
            .tag = QStringLiteral("AOL"),
            .maxLength = 15,
            .width = 1500,
            .editing = GridColumn::Editing::ByScreen};
}

} // namespace

std::vector<GridColumn> unitColumns()
{
    std::vector<GridColumn> columns{
        {.header = QStringLiteral("Riferimento"), .maxLength = 23, .width = 3000},
        {.header = QStringLiteral("Livello"), .maxLength = 20, .width = 2000},
        {.header = QStringLiteral("Scala"),
         .alignment = LeftCentre,
         .maxLength = 1,
         .width = 700,
         .editing = GridColumn::Editing::ByScreen},
        {.header = QStringLiteral("H"),
         .alignment = RightCentre,
         .tag = QStringLiteral("SOL"),
         .maxLength = 10,
         .width = 800}};
    for (int table = 1; table <= NumTables; ++table)
        columns.push_back({.header = QStringLiteral("T%1").arg(table),
                           .alignment = Qt::AlignCenter,
                           .maxLength = 1,
                           .width = 500,
                           .editing = GridColumn::Editing::ByScreen});
    return columns;
}

std::vector<GridColumn> roomColumns()
{
    return {{.header = QStringLiteral("Ambiente"), .maxLength = 15, .width = 2400},
            {.header = QStringLiteral("Consistenza"),
             .alignment = RightCentre,
             .tag = QStringLiteral("SOL"),
             .maxLength = 10,
             .width = 1400},
            coefficient(QStringLiteral("Destinazione")),
            coefficient(QStringLiteral("Orientamento")),
            coefficient(QStringLiteral("Prospetto")),
            coefficient(QStringLiteral("Luminosità")),
            coefficient(QStringLiteral("Funzionalità")),
            coefficient(QStringLiteral("Piano riduttore"))};
}

} // namespace zelto::registro
