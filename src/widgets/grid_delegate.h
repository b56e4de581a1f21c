// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStyledItemDelegate>

namespace zelto::widgets {

/// The colours of a view, with a pale selection while keys go elsewhere than to it.
[[nodiscard]] QPalette viewPalette(const QWidget* view, QPalette palette);

/// Draws the cells of a grid: shaded rows, dimmed columns, and the corner of marked cells.
class GridDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};

/// The background of shaded rows: pale yellow, in dark themes so deep that light text is legible.
[[nodiscard]] QColor shadeColour(const QPalette& palette);

} // namespace zelto::widgets
