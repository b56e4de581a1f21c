// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/grid_block.h"
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

/// What became of one cell.
struct CellChange
{
    int row = 0;
    int column = 0;
    QString before;
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

    /// The character codes by which the editor is opened other than by a character.
    static constexpr int F2Code = 0;
    static constexpr int DoubleClickCode = 32;

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
    void leaveCells();

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

    /// Opens the editor over the current cell. A character (33 and above, or negative) starts the
    /// text, in numeric columns only one of "0123456789-."; otherwise the editor starts with the
    /// cell's text. A column that the screen edits itself emits cellRequested instead.
    void MsFlexGridEdit(int keyCode);

    /// What Enter, Esc, Up and Down (Qt::Key) do in the editor.
    void EditKeyCode(int key);

    /// Closes the editor and puts into its cell what was typed; nothing when it is closed already.
    void commitEditor();
    [[nodiscard]] bool isEditing() const;

    void copySelection() const;
    void pasteBlock();
    void emptySelection();

    /// Width of a column as the settings keep it: 0 is the number column, then the others; twips.
    /// Of a column that is narrow because it is unused, the one that it has otherwise.
    [[nodiscard]] int widthInTwips(int column) const;
    void setWidthInTwips(int column, int twips);

    /// What a column stands for, and whether anything is kept in it for now.
    void setHint(int column, const QString& hint, bool unused);

signals:
    /// byKey: by a key or F2, not by a double click.
    void editorOpened(bool byKey);
    /// The user changed these cells, by the editor, a paste or a deletion. Of a block that is
    /// longer than the grid, rows behind the last one are the owner's to add.
    void cellsChanged(const QList<zelto::widgets::CellChange>& changes);
    /// By Enter, Tab or a paste.
    void rowAppended(int row);
    /// Nothing was pasted; why, and which cell is the first that does not fit.
    void pasteRefused(const QString& why);
    /// A cell of a column that the screen edits itself was to be opened.
    void cellRequested(int row, int column, int keyCode);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    [[nodiscard]] QItemSelectionModel::SelectionFlags
    selectionCommand(const QModelIndex& index, const QEvent* event) const override;
    void updateGeometries() override;
    void scrollContentsBy(int dx, int dy) override;
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // Columns
    void setUpHeaders();
    void fitRows();
    void fitColumns();
    void fitColumn(int column);
    void fitNumbers();
    void paintCorner();
    [[nodiscard]] int numberWidth() const;

    // The editor
    void buildEditor();
    void openEditor(const QString& typed);
    void placeEditor();
    void hideEditor();
    bool filterEditor(QEvent* event);
    void appendRow();
    bool command(QKeyEvent* event);

    // Blocks
    [[nodiscard]] QModelIndexList selectedCells() const;
    void selectBlock(const QModelIndex& first, const QModelIndex& last);
    void fillSelection(const QString& cell);
    void pasteAt(const QModelIndex& first, const CellBlock& block);
    void apply(const QList<CellChange>& changes);

    /// A column's width when it is not unused.
    struct Width
    {
        int pixels = 0;
        bool chosen = false; ///< by the user or the settings
    };

    GridModel* m_model;
    AtEnd m_atEnd;
    std::function<int()> m_mostRows = [] { return std::numeric_limits<int>::max(); };
    TypedLine* m_editor;
    QAbstractButton* m_corner = nullptr;
    QPersistentModelIndex m_edited;
    std::vector<Width> m_widths;
    bool m_fitting = false; ///< columns change their widths by themselves
    int m_numberWidth = 0;  ///< as the user set it, in pixels
};

} // namespace zelto::widgets
