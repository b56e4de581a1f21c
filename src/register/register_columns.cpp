// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/register_columns.h"

#include "store/schema.h"

#include <algorithm>
#include <span>

namespace zelto::registro {

namespace {

/// A column as it is written down; most are called what their field is called.
struct Row
{
    QStringView field;
    Holds holds;
    int width;
    QString title = store::headingOf(field);
    QString name = title.toLower();
};

std::vector<Row> unitRows()
{
    std::vector<Row> rows{
        {u"Riferimento", Holds::Words, 2700},
        {u"Livello", Holds::Words, 1600},
        {u"Codice scala", Holds::Staircase, 700},
        {u"H piano", Holds::Height, 800, store::headingOf(u"H piano"), u"altezza"_s}};
    for (int table = 1; table <= store::SpecialTables; ++table)
        rows.push_back({u"Flag tabelle", Holds::Flag, 450, u"T%1"_s.arg(table), u"tabelle"_s});
    return rows;
}

std::vector<Row> roomRows()
{
    std::vector<Row> rows{{u"Ambiente", Holds::Words, 1600},
                          {u"Consistenza reale", Holds::Size, 1000}};
    for (const QStringView coefficient : std::span(store::GroupNames).subspan<1>())
        rows.push_back({coefficient, Holds::Coefficient, 1000});
    return rows;
}

/// A flag is one character of its field, and no figure needs more than ten.
int longestOf(Holds holds, int size)
{
    constexpr int LongestFigure = 10;
    const bool figure = holds == Holds::Size || holds == Holds::Height;
    return holds == Holds::Flag ? 1 : figure ? std::min(size, LongestFigure) : size;
}

std::vector<Column> columnsFrom(Table table, const std::vector<Row>& rows)
{
    const std::vector<store::FieldDef>& fields = store::jobTable(nameOf(table)).fields;
    std::vector<Column> columns;
    for (const Row& row : rows) {
        const auto field = std::ranges::find(fields, row.field, &store::FieldDef::name);
        Q_ASSERT(field != fields.end());
        columns.push_back(
            {.field = static_cast<int>(field - fields.begin()),
             .holds = row.holds,
             .index = static_cast<int>(std::ranges::count(columns, row.holds, &Column::holds)),
             .longest = longestOf(row.holds, field->size),
             .width = row.width,
             .title = row.title,
             .name = row.name});
    }
    return columns;
}

} // namespace

QStringView nameOf(Table table)
{
    return table == Table::Units ? store::TabellaUnita : store::TabellaVani;
}

int numberField(Table table)
{
    return table == Table::Units ? static_cast<int>(UnitNumber) : RoomPosition;
}

const std::vector<Column>& columnsOf(Table table)
{
    static const std::vector<Column> units = columnsFrom(Table::Units, unitRows());
    static const std::vector<Column> rooms = columnsFrom(Table::Rooms, roomRows());
    return table == Table::Units ? units : rooms;
}

} // namespace zelto::registro
