// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/grid_delegate.h"

#include "widgets/grid_model.h"
#include "widgets/marks.h"

#include <QPainter>

namespace zelto::widgets {

QColor shadeColour(const QPalette& palette)
{
    constexpr QColor Yellow(255, 255, 128);
    constexpr int Half = 128;
    const QColor base = palette.base().color();
    if (base.lightness() >= Half)
        return Yellow;
    constexpr int Part = 6; // one part of yellow in so many
    const auto mixed = [](int under, int over) { return (under * (Part - 1) + over) / Part; };
    return {mixed(base.red(), Yellow.red()), mixed(base.green(), Yellow.green()),
            mixed(base.blue(), Yellow.blue())};
}

void GridDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const
{
    if (index.data(GridModel::ShadedRole).toBool())
        painter->fillRect(option.rect, shadeColour(option.palette));
    QStyledItemDelegate::paint(painter, option, index);
    if (index.data(GridModel::MarkRole).toString().isEmpty())
        return;
    drawMark(*painter, option.rect);
}

void GridDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    if (index.data(GridModel::UnusedRole).toBool())
        option->state &= ~QStyle::State_Enabled;
}

} // namespace zelto::widgets
