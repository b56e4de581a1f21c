// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/cell_picker.h"

#include "widgets/grid.h"

#include <QKeyEvent>
#include <QScrollBar>

#include <algorithm>

namespace zelto::widgets {

CellPicker::CellPicker(QWidget* parent) : QListWidget(parent)
{
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setUniformItemSizes(true);
    setTabKeyNavigation(false);
    hide();
    connect(this, &QListWidget::itemClicked, this, &CellPicker::choose);
}

void CellPicker::open(const QStringList& entries, const QRect& place, const QString& text,
                      Match match)
{
    clear();
    addItems(entries);
    const bool whole = match == Match::Whole;
    const auto found = std::find_if(entries.begin(), entries.end(), [&](const QString& entry) {
        return whole ? entry == text : entry.startsWith(text);
    });
    const auto row = static_cast<int>(std::distance(entries.begin(), found));
    setCurrentRow(found != entries.end() ? row : whole ? -1 : 0);
    placeOver(place);
    show();
    raise();
    setFocus(Qt::PopupFocusReason);
    scrollToItem(currentItem());
}

void CellPicker::searchFor(int keyCode)
{
    if (keyCode <= Grid::DoubleClickCode)
        return;
    // As if nothing were current yet, so that the entry which is may be found again.
    const int before = currentRow();
    setCurrentRow(-1);
    keyboardSearch(QChar(static_cast<char16_t>(keyCode)));
    if (currentRow() < 0)
        setCurrentRow(before);
}

void CellPicker::keyboardSearch(const QString& typed)
{
    const auto begins = [&](const QString& entry) {
        return entry.sliced(entry.startsWith(u'[') ? 1 : 0).startsWith(typed, Qt::CaseInsensitive);
    };
    const auto hasValue = [&](const QString& entry) {
        return entry.section(u' ', -1).startsWith(typed, Qt::CaseInsensitive);
    };
    const auto goTo = [this](auto matches) {
        for (int step = 1; step <= count(); ++step) {
            const int row = (currentRow() + step) % count();
            if (matches(item(row)->text())) {
                setCurrentRow(row);
                return true;
            }
        }
        return false;
    };
    if (!goTo(begins))
        goTo(hasValue);
}

void CellPicker::placeOver(const QRect& place)
{
    constexpr int MostRows = 12;
    const int frame = 2 * frameWidth();
    const int rowHeight = std::max(count() > 0 ? sizeHintForRow(0) : 0, fontMetrics().height());
    const bool scrolls = count() > MostRows;
    const int bar = scrolls ? verticalScrollBar()->sizeHint().width() : 0;
    QRect list(place.topLeft(), QSize(std::max(place.width(), sizeHintForColumn(0) + bar + frame),
                                      std::clamp(count(), 1, MostRows) * rowHeight + frame));
    const QRect room = parentWidget()->rect();
    list.moveRight(std::min(list.right(), std::max(room.right(), list.width() - 1)));
    list.moveBottom(std::min(list.bottom(), std::max(room.bottom(), list.height() - 1)));
    setGeometry(list);
}

void CellPicker::choose(QListWidgetItem* item)
{
    if (!isVisible() || item == nullptr)
        return;
    const QString entry = item->text();
    hide();
    emit chosen(entry);
}

void CellPicker::dismiss()
{
    if (!isVisible())
        return;
    hide();
    emit dismissed();
}

void CellPicker::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        // Getting the focus makes the first entry current, but selects none.
        choose(selectedItems().value(0));
        return;
    case Qt::Key_Escape:
        dismiss();
        return;
    default:
        QListWidget::keyPressEvent(event);
    }
}

void CellPicker::focusOutEvent(QFocusEvent* event)
{
    QListWidget::focusOutEvent(event);
    // Another window in front is no answer.
    if (event->reason() != Qt::ActiveWindowFocusReason && event->reason() != Qt::PopupFocusReason)
        dismiss();
}

} // namespace zelto::widgets
