// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "text/literals.h"
#include "widgets/field_rules.h"

#include <QAbstractTableModel>
#include <QStringList>

#include <functional>
#include <vector>

namespace zelto::widgets {

/// One column of a grid beside the number column.
struct GridColumn
{
    /// Who edits the column's cells: the in-grid editor, or the screen with a picker of its own.
    enum class Editing { InPlace, ByScreen };

    QString header;
    Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignVCenter;
    FieldKind kind = FieldKind::Words;
    int maxLength = 0; ///< in characters, 0 for any
    int width = 1200;  ///< in twips, until the user changes it
    Editing editing = Editing::InPlace;
    /// What is odd about a cell's text, as tool tip and for assistive technology; empty for
    /// nothing.
    std::function<QString(const QString& text)> remark = {};
    QString hint = {};   ///< what the header stands for, where its caption does not say it
    bool unused = false; ///< nothing is kept in it for now: dimmed and narrow
};

/// One row: what the number column shows, and the cells.
struct GridRow
{
    QString number;
    QStringList cells = {};
};

/// The texts of a grid. Rows and columns count from 0 and leave out header and number column.
class GridModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    // For delegates: whether the row is shaded, what is odd about the cell's text, whether the
    // column is unused.
    static constexpr int ShadedRole = Qt::UserRole;
    static constexpr int MarkRole = Qt::UserRole + 1;
    static constexpr int UnusedRole = Qt::UserRole + 2;

    GridModel(const std::vector<GridColumn>& columns, QObject* parent);

    [[nodiscard]] const GridColumn& column(int column) const { return m_columns[column]; }
    [[nodiscard]] const QString& text(int row, int column) const
    {
        return m_rows[row].cells[column];
    }
    /// What the number column shows.
    [[nodiscard]] const QString& number(int row) const { return m_rows[row].number; }

    void setText(int row, int column, const QString& text);

    /// What the column's header stands for, and whether anything is kept in it.
    void setHint(int column, const QString& hint, bool unused);

    /// Remarks may be others by now.
    void remarksChanged();

    /// Becomes the rows of a table text, and empty ones up to the least number of rows. They are
    /// numbered from 1 and every second one is shaded.
    void setTableText(const QString& content, int leastRows = 1);
    [[nodiscard]] QString tableText() const;

    /// Becomes these rows, which both before and after are in the order of their numbers: only what
    /// differs is changed, inserted or removed. None is shaded; missing cells are empty. Without
    /// any there is one row, empty and without number.
    void followRows(std::vector<GridRow> rows);

    /// An empty row with the next number, which is not shaded.
    void appendRow();

    /// Of a table text: an empty row before that one, and without these rows; those that follow are
    /// numbered anew. One row stays.
    void insertEmptyRow(int row);
    void deleteRows(int first, int last);

    /// The row of the number, -1 when there is none.
    [[nodiscard]] int rowOf(int number) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

private:
    [[nodiscard]] GridRow complete(GridRow row) const;
    void putIn(int row, const GridRow& content);
    void takeOut(int row);
    void renumber();
    [[nodiscard]] QString spokenText(int row, int column) const;
    [[nodiscard]] QString remark(int row, int column) const;

    QList<GridColumn> m_columns;
    QList<GridRow> m_rows;
    int m_tableRows = 0; ///< how many rows came from a table text
};

} // namespace zelto::widgets
