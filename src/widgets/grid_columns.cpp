// SPDX-License-Identifier: GPL-3.0-or-later
// Headers of a grid, heights of its rows and widths of its columns.
#include "widgets/grid.h"

#include <QAbstractButton>
#include <QEvent>
#include <QHeaderView>
#include <QScopedValueRollback>
#include <QStyleOptionHeader>
#include <QStylePainter>

#include <algorithm>

namespace zelto::widgets {

namespace {

constexpr int TwipsPerInch = 1440;

int twipsOf(const QWidget& widget, int pixels)
{
    return qRound(static_cast<double>(pixels) * TwipsPerInch / widget.logicalDpiX());
}

int pixelsOf(const QWidget& widget, int twips)
{
    return qRound(static_cast<double>(twips) * widget.logicalDpiX() / TwipsPerInch);
}

} // namespace

/// A click on a header does nothing: whole columns are too easily emptied.
void Grid::setUpHeaders()
{
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setSectionsClickable(false);
    horizontalHeader()->setSectionsClickable(false);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setMinimumSectionSize(1);
    setCornerButtonEnabled(false);
    // Qt has no caption for the corner between the headers.
    m_corner = findChild<QAbstractButton*>();
    if (m_corner != nullptr) {
        m_corner->installEventFilter(this);
        m_corner->setAccessibleName(u"Numeri di riga"_s);
    }
    m_widths.resize(m_model->columnCount());
    connect(horizontalHeader(), &QHeaderView::sectionResized, this,
            [this](int column, int /*before*/, int pixels) {
                if (!m_fitting)
                    m_widths[column] = {pixels, true};
                placeEditor();
            });
    connect(m_model, &QAbstractItemModel::modelReset, this, &Grid::fitNumbers);
    connect(m_model, &QAbstractItemModel::rowsInserted, this, &Grid::fitNumbers);
    fitRows();
}

void Grid::fitRows()
{
    constexpr int Margins = 6;
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + Margins);
    fitNumbers();
    for (int column = 0; column < m_model->columnCount(); ++column)
        fitColumn(column);
}

/// A width that nobody chose is at least that of the header.
void Grid::fitColumn(int column)
{
    const QScopedValueRollback fitting(m_fitting, true);
    const GridColumn& kind = m_model->column(column);
    Width& width = m_widths[column];
    if (!width.chosen)
        width.pixels =
            std::max(pixelsOf(*this, kind.width), horizontalHeader()->sectionSizeHint(column));
    constexpr int Margins = 6;
    const int narrow = horizontalHeader()->fontMetrics().horizontalAdvance(kind.header) + Margins;
    setColumnWidth(column, kind.unused ? std::min(narrow, width.pixels) : width.pixels);
}

void Grid::fitNumbers()
{
    constexpr int Margins = 8;
    const int rows = m_model->rowCount();
    int width = m_numberWidth;
    for (const QString& text :
         {u"00"_s, m_numberHeader, rows > 0 ? m_model->number(rows - 1) : QString()})
        width = std::max(width, fontMetrics().horizontalAdvance(u' ' + text + u' ') + Margins);
    verticalHeader()->setFixedWidth(width);
}

void Grid::changeEvent(QEvent* event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        fitRows();
}

void Grid::paintCorner()
{
    QStylePainter painter(m_corner);
    QStyleOptionHeader option;
    option.initFrom(m_corner);
    option.state |= QStyle::State_Enabled;
    option.text = m_numberHeader;
    option.textAlignment = Qt::AlignCenter;
    painter.drawControl(QStyle::CE_Header, option);
}

int Grid::widthInTwips(int column) const
{
    return twipsOf(*this, column == 0 ? verticalHeader()->width() : m_widths[column - 1].pixels);
}

void Grid::setWidthInTwips(int column, int twips)
{
    const int pixels = pixelsOf(*this, twips);
    if (column == 0) {
        m_numberWidth = pixels;
        fitNumbers();
        return;
    }
    m_widths[column - 1] = {pixels, true};
    fitColumn(column - 1);
}

void Grid::setHint(int column, const QString& hint, bool unused)
{
    m_model->setHint(column, hint, unused);
    fitColumn(column);
}

} // namespace zelto::widgets
