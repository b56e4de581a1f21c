// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/grid_model.h"

#include <QList>
#include <QTableView>

#include <functional>
#include <limits>
#include <utility>
#include <vector>

class QAbstractButton;

namespace zelto::widgets {

class TypedLine;

/// Rows of cells.
using CellBlock = std::vector<QStringList>;

/// What became of one cell.
struct CellChange
{
    int row = 0;
    int column = 0;
    QString after;
};

/// A grid of texts with a header, a number column and an editor laid over the current cell. The
/// selection is always one rectangle that holds the current cell. It works by keyboard alone;
/// blocks of cells go to and come from spreadsheets by way of the clipboard.
class Grid : public QTableView
{
    Q_OBJECT

public:
    /// What Enter does in the last column of the last row. Rows that a pasted block is longer by
    /// are appended as well, or else left to the owner.
    enum class AtEnd { Stays, AppendsRow };

    Grid(const QString& numberHeader, const std::vector<GridColumn>& columns, AtEnd atEnd,
         QWidget* parent = nullptr);

    [[nodiscard]] GridModel& cells() { return *m_model; }
    [[nodiscard]] const GridModel& cells() const { return *m_model; }

    /// -1 when there is none.
    [[nodiscard]] int currentRow() const { return currentIndex().row(); }
    [[nodiscard]] int currentColumn() const { return currentIndex().column(); }
    void setCurrentCell(int row, int column);
    /// Selects the first cells of the rows from the first, which becomes current, to the last.
    void selectRows(int first, int last);
    /// No cell is current and none is selected.
    void leaveCells() { selectionModel()->clear(); }

    /// First and last row of the selection; -1 when no cell is current.
    struct RowRange
    {
        int first = -1;
        int last = -1;
    };
    [[nodiscard]] RowRange selectedRows() const;

    /// Goes to the next cell, from the end of a row to the beginning of the following one, or back.
    void step(bool forward);

    /// How many rows a paste may lead to, asked when something is pasted.
    void setMostRows(std::function<int()> rows) { m_mostRows = std::move(rows); }

    /// Opens the editor over the current cell with the character that was typed, if the column's
    /// kind takes it and it is no blank, or else with the cell's text. A column that the screen
    /// edits itself emits cellRequested instead.
    void MsFlexGridEdit(const QString& typed = {});

    /// Closes the editor and puts into its cell what was typed; nothing when it is closed already.
    void commitEditor();
    [[nodiscard]] bool isEditing() const { return m_edited.isValid(); }

    /// Width of a column as the settings keep it: 0 is the number column, then the others; twips.
    /// Of a column that is narrow because it is unused, the one that it has otherwise.
    [[nodiscard]] int widthInTwips(int column) const;
    void setWidthInTwips(int column, int twips);

    /// What a column stands for, and whether anything is kept in it for now.
    void setHint(int column, const QString& hint, bool unused);

signals:
    /// Not by a double click.
    void editorOpenedByKey();
    /// The user changed these cells, by the editor, a paste or a deletion. Of a block that is
    /// longer than the grid, rows behind the last one are the owner's to add.
    void cellsChanged(const QList<zelto::widgets::CellChange>& changes);
    /// By Enter, Tab or a paste.
    void rowAppended();
    /// Nothing was pasted; why, and which cell is the first that does not fit.
    void pasteRefused(const QString& why);
    /// A cell of a column that the screen edits itself was to be opened.
    void cellRequested(int row, int column, const QString& typed);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    [[nodiscard]] QItemSelectionModel::SelectionFlags
    selectionCommand(const QModelIndex& index, const QEvent* event) const override;
    void setSelection(const QRect& rect, QItemSelectionModel::SelectionFlags command) override;
    void updateGeometries() override;
    void scrollContentsBy(int dx, int dy) override;
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // Columns
    void setUpHeaders();
    void fitRows();
    void fitColumn(int column);
    void fitNumbers();
    void paintCorner();

    // The editor
    void buildEditor();
    void editByKey(const QString& typed);
    void openEditor(const QString& typed);
    void placeEditor();
    void hideEditor();
    bool filterEditor(QEvent* event);
    bool EditKeyCode(int key);
    void appendRow();
    bool command(QKeyEvent* event);

    // Blocks
    [[nodiscard]] QModelIndexList selectedCells() const;
    void selectBlock(const QModelIndex& first, const QModelIndex& last);
    void copySelection() const;
    void pasteBlock();
    void emptySelection();
    void fillSelection(const QString& cell);
    void pasteAt(const QModelIndex& first, const CellBlock& block);
    void refusePaste(const QString& why);
    bool accept(int row, int column, const QString& cell, QList<CellChange>& changes);
    void apply(const QList<CellChange>& changes);

    /// A column's width when it is not unused.
    struct Width
    {
        int pixels = 0;
        bool chosen = false; ///< by the user or the settings
    };

    QString m_numberHeader;
    GridModel* m_model;
    /// The cells between which the selection is being stretched: Qt's own beginning of it moves
    /// with some versions.
    mutable QPersistentModelIndex m_from;
    mutable QPersistentModelIndex m_to;
    AtEnd m_atEnd;
    std::function<int()> m_mostRows = [] { return std::numeric_limits<int>::max(); };
    TypedLine* m_editor;
    QAbstractButton* m_corner = nullptr;
    QPersistentModelIndex m_edited;
    QList<Width> m_widths;
    bool m_fitting = false; ///< columns change their widths by themselves
    int m_numberWidth = 0;  ///< as the user set it, in pixels
    int m_wheelTurn = 0;    ///< not yet scrolled, in eighths of a degree
};

} // namespace zelto::widgets
