// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "text/literals.h"
#include "text/table_text.h"
#include "widgets/field_tag.h"

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
    QString tag = u"AOL"_s;
    FieldTag::Holds holds = FieldTag::Holds::Words; ///< what a free text is about
    int maxLength = 0;                              ///< in characters, 0 for any
    int width = 1200;                               ///< in twips, until the user changes it
    Editing editing = Editing::InPlace;
    /// What a cell has to say of its text to who rests the mouse on it and to assistive technology;
    /// empty for nothing.
    std::function<QString(const QString& text)> remark = {};
    QString hint = {};   ///< what the header stands for, where its caption does not say it
    bool unused = false; ///< nothing is kept in it for now: dimmed and narrow
};

/// One row: what the number column shows, and the cells.
struct GridRow
{
    QString number;
    QStringList cells;
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

    GridModel(QString numberHeader, const std::vector<GridColumn>& columns,
              QObject* parent = nullptr);

    [[nodiscard]] const GridColumn& column(int column) const;
    [[nodiscard]] const FieldTag& tag(int column) const;
    [[nodiscard]] const QString& text(int row, int column) const;
    /// What the number column shows.
    [[nodiscard]] const QString& number(int row) const;
    [[nodiscard]] const QString& numberHeader() const { return m_numberHeader; }

    void setText(int row, int column, const QString& text);

    /// What the column's header stands for, and whether anything is kept in it.
    void setHint(int column, const QString& hint, bool unused);

    /// Remarks may be others by now.
    void remarksChanged();

    /// Replaces all rows by those of the table that lie within the range; they are numbered from 1
    /// and every second one is shaded.
    void setRows(const text::CellTable& table, const text::CellRange& range);

    /// The table text of all rows.
    [[nodiscard]] QString tableText() const;

    /// Becomes these rows, which both before and after are in the order of their numbers: only what
    /// differs is changed, inserted or removed. None is shaded; missing cells are empty. Without
    /// any there is one row, empty and without number.
    void followRows(std::vector<GridRow> rows);

    /// Rows put in later are never shaded.
    void insertRow(int row, const GridRow& content);
    void appendRow(const QString& number) { insertRow(rowCount(), {number, {}}); }
    void removeRow(int row);

    /// The row of the number, -1 when there is none.
    [[nodiscard]] int rowOf(int number) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

private:
    struct Row
    {
        QString number;
        std::vector<QString> cells = {};
        bool shaded = false;
    };

    [[nodiscard]] Row newRow(const GridRow& content) const;
    [[nodiscard]] QString spokenText(int row, int column) const;
    [[nodiscard]] QString remark(int row, int column) const;
    [[nodiscard]] const Row& row(int row) const { return m_rows[static_cast<std::size_t>(row)]; }
    [[nodiscard]] Row& row(int row) { return m_rows[static_cast<std::size_t>(row)]; }

    QString m_numberHeader;
    std::vector<GridColumn> m_columns;
    std::vector<FieldTag> m_tags;
    std::vector<Row> m_rows;
};

} // namespace zelto::widgets
