// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/grid_delegate.h"

#include "widgets/grid_model.h"
#include "widgets/marks.h"

#include <QApplication>
#include <QPainter>

namespace zelto::widgets {

namespace {

/// A colour of which one in so many parts is the second.
QColor mixed(const QColor& under, const QColor& over, int parts)
{
    const auto mix = [parts](int one, int other) { return (one * (parts - 1) + other) / parts; };
    return {mix(under.red(), over.red()), mix(under.green(), over.green()),
            mix(under.blue(), over.blue())};
}

} // namespace

QColor shadeColour(const QPalette& palette)
{
    constexpr QColor Yellow(255, 255, 128);
    constexpr int Half = 128;
    constexpr int Part = 6;
    const QColor base = palette.base().color();
    return base.lightness() >= Half ? Yellow : mixed(base, Yellow, Part);
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

QPalette viewPalette(const QWidget* view, QPalette palette)
{
    const QWidget* focus = QApplication::focusWidget();
    if (view == nullptr || view == focus || view->isAncestorOf(focus))
        return palette;
    constexpr int Part = 4;
    palette.setColor(QPalette::Highlight,
                     mixed(palette.base().color(), palette.highlight().color(), Part));
    palette.setColor(QPalette::HighlightedText, palette.text().color());
    return palette;
}

void GridDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    option->palette = viewPalette(option->widget, option->palette);
    if (index.data(GridModel::UnusedRole).toBool())
        option->state &= ~QStyle::State_Enabled;
}

} // namespace zelto::widgets
