// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/cell_picker.h"

#include "text/literals.h"
#include "widgets/keys.h"
#include "widgets/marks.h"
#include "widgets/typed_line.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QScrollBar>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <array>

namespace zelto::widgets {

namespace {

constexpr int Columns = 3;

constexpr int NoMatch = 6;

/// How well the entry matches what was typed, 0 best.
int rank(const PickerEntry& entry, const QString& typed)
{
    const auto withPoint = [](QString text) { return text.replace(u',', u'.'); };
    const QString value = withPoint(entry.value);
    const QString figure = withPoint(typed);
    const std::array<bool, NoMatch> matches{entry.code == typed,
                                            entry.code.compare(typed, Qt::CaseInsensitive) == 0,
                                            entry.code.startsWith(typed),
                                            entry.code.startsWith(typed, Qt::CaseInsensitive),
                                            value == figure,
                                            value.startsWith(figure, Qt::CaseInsensitive)};
    return static_cast<int>(std::ranges::find(matches, true) - matches.begin());
}

/// The entry that is meant by what was typed, -1 for none.
int entryTyped(const std::vector<PickerEntry>& entries, const QString& typed)
{
    const auto best =
        std::ranges::min_element(entries, {}, [&](const auto& e) { return rank(e, typed); });
    const bool found = best != entries.end() && rank(*best, typed) < NoMatch;
    return found ? static_cast<int>(best - entries.begin()) : -1;
}

} // namespace

CellPicker::CellPicker(QWidget* parent)
    : QFrame(parent), m_typed(new QLabel(this)), m_list(new QTreeWidget(this))
{
    setFrameShape(StyledPanel);
    setAutoFillBackground(true);
    setFocusProxy(m_list);
    m_typed->setObjectName(u"Cercato"_s);
    m_typed->setTextFormat(Qt::PlainText);
    m_typed->setContentsMargins(4, 1, 4, 1);
    m_list->setObjectName(u"Voci"_s);
    m_list->setColumnCount(Columns);
    m_list->setHeaderHidden(true);
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setFrameShape(NoFrame);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->header()->setMinimumSectionSize(0);
    m_list->installEventFilter(this);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_typed);
    layout->addWidget(m_list);
    hide();
    connect(m_list, &QTreeWidget::itemClicked, this, [this] { choose(Then::Stays); });
}

void CellPicker::open(const std::vector<PickerEntry>& entries, int current, const QRect& place,
                      const QString& typed)
{
    m_entries = entries;
    m_opened = current;
    m_list->setAccessibleName(accessibleName());
    fill();
    search({});
    placeOver(place);
    show();
    raise();
    setFocus(Qt::PopupFocusReason);
    m_list->scrollToItem(m_list->currentItem());
    if (!typed.isEmpty() && typed != u" ")
        search(typed);
}

void CellPicker::fill()
{
    m_list->clear();
    QList<QTreeWidgetItem*> lines;
    for (const PickerEntry& entry : m_entries)
        lines << new QTreeWidgetItem(
            {entry.code, entry.value, entry.isBlank() ? u"(nessuno)"_s : entry.description});
    m_list->addTopLevelItems(lines);
    for (QTreeWidgetItem* line : lines)
        line->setTextAlignment(1, Qt::AlignRight | Qt::AlignVCenter);
    for (int column = 0; column < Columns; ++column)
        m_list->resizeColumnToContents(column);
}

/// The next text that was typed; empty goes back to what was selected at first.
void CellPicker::search(const QString& typed)
{
    m_search = typed;
    m_typed->setText(typed.isEmpty() ? u"Scrivere codice o valore"_s : u"Cerca: %1"_s.arg(typed));
    m_typed->setEnabled(!typed.isEmpty());
    const int found = typed.isEmpty() ? m_opened : entryTyped(m_entries, typed);
    select(found);
    if (found < 0 && !typed.isEmpty())
        refuse(*this);
}

void CellPicker::select(int entry)
{
    QTreeWidgetItem* line = m_list->topLevelItem(entry);
    m_list->setCurrentItem(line);
    if (line == nullptr)
        m_list->clearSelection();
    else
        m_list->scrollToItem(line);
}

int CellPicker::selected() const
{
    const QList<QTreeWidgetItem*> lines = m_list->selectedItems();
    return lines.isEmpty() ? -1 : m_list->indexOfTopLevelItem(lines.front());
}

void CellPicker::placeOver(const QRect& place)
{
    constexpr int MostRows = 12;
    constexpr int Gap = 8;
    const int frame = 2 * frameWidth();
    const int count = m_list->topLevelItemCount();
    const int rowHeight = std::max(m_list->sizeHintForRow(0), fontMetrics().height());
    int width =
        frame + Gap + (count > MostRows ? m_list->verticalScrollBar()->sizeHint().width() : 0);
    for (int column = 0; column < Columns; ++column)
        width += m_list->columnWidth(column);
    const int header = m_typed->sizeHint().height();
    width = std::max({width, place.width(), m_typed->sizeHint().width() + frame});
    QRect list(place.topLeft() - QPoint(0, header),
               QSize(width, header + std::clamp(count, 1, MostRows) * rowHeight + frame));
    const QRect all = parentWidget()->rect();
    list.moveRight(std::min(list.right(), std::max(all.right(), list.width() - 1)));
    list.moveBottom(std::min(list.bottom(), std::max(all.bottom(), list.height() - 1)));
    list.moveTop(std::max(list.top(), 0));
    setGeometry(list);
}

void CellPicker::choose(Then then)
{
    const int entry = selected();
    if (!isVisible())
        return;
    if (entry < 0) {
        refuse(*this);
        return;
    }
    hide();
    emit chosen(entry, then);
}

void CellPicker::dismiss()
{
    if (isHidden())
        return;
    hide();
    emit dismissed();
}

/// Hidden with its panel, it must not be there when that is shown again.
void CellPicker::hideEvent(QHideEvent* event)
{
    QFrame::hideEvent(event);
    dismiss();
}

bool CellPicker::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        const auto& key = *static_cast<QKeyEvent*>(event);
        return filterKey(key.key(), typedBy(key));
    }
    // A menu or another window in front leaves the list open.
    if (event->type() == QEvent::FocusOut && !isPassing(static_cast<QFocusEvent*>(event)->reason()))
        dismiss();
    return QFrame::eventFilter(watched, event);
}

bool CellPicker::filterKey(int key, const QString& typed)
{
    switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Tab:
        choose(Then::Next);
        return true;
    case Qt::Key_Backtab:
        choose(Then::Previous);
        return true;
    case Qt::Key_Escape:
        dismiss();
        return true;
    case Qt::Key_Backspace:
        search(m_search.chopped(std::min<qsizetype>(m_search.size(), 1)));
        return true;
    default:
        break;
    }
    if (typed.isEmpty())
        return false;
    // A blank alone means the blank entry.
    const auto blank = std::ranges::find_if(m_entries, &PickerEntry::isBlank);
    if (m_search.isEmpty() && typed == u" " && blank != m_entries.end())
        select(static_cast<int>(blank - m_entries.begin()));
    else
        search(m_search + typed);
    return true;
}

} // namespace zelto::widgets
