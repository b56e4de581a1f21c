// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/window.h"
#include "widgets/grid.h"
#include "widgets/typed_line.h"

#include <QLineEdit>
#include <QSignalSpy>
#include <QVBoxLayout>

namespace zelto::test {

using widgets::Grid;
using widgets::GridColumn;
using widgets::TypedLine;

/// Three columns over a field, in a window of their own: text of five characters, a number, and
/// one that its screen edits.
class GridDesk : public QWidget
{
public:
    explicit GridDesk(Grid::AtEnd atEnd = Grid::AtEnd::Stays,
                      const QString& rows = u"uno\t1.5\tA\r\ndue\t2\tB\r\ntre\t3\tC\r\n"_s)
        : grid(u"n."_s,
               {{.header = u"Nome"_s, .maxLength = 5},
                {.header = u"Misura"_s, .kind = widgets::FieldKind::DecimalNumber, .maxLength = 6},
                {.header = u"Scelta"_s, .editing = GridColumn::Editing::ByScreen}},
               atEnd)
    {
        grid.cells().setTableText(rows);
        auto* layout = new QVBoxLayout(this);
        layout->addWidget(&grid);
        layout->addWidget(&other);
        appear(*this);
        grid.setFocus();
        grid.setCurrentCell(0, 0);
    }

    [[nodiscard]] TypedLine& editor() { return *grid.findChild<TypedLine*>(); }
    [[nodiscard]] QPoint cell(int row, int column)
    {
        return grid.visualRect(grid.cells().index(row, column)).center();
    }
    void click(int row, int column, Qt::KeyboardModifiers modifiers = {},
               Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mouseClick(grid.viewport(), button, modifiers, cell(row, column));
    }
    /// The cells with "|" between them and "/" between rows.
    [[nodiscard]] QString content() const
    {
        return grid.cells().tableText().replace(u"\r\n"_s, u"/"_s).replace(u'\t', u'|');
    }
    [[nodiscard]] QString place() const
    {
        return u"%1,%2"_s.arg(grid.currentRow()).arg(grid.currentColumn());
    }

    Grid grid;
    QLineEdit other;
    QSignalSpy changes{&grid, &Grid::cellsChanged};
};

} // namespace zelto::test
