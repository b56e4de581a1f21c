// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/ui/navig.h"

#include "text/literals.h"
#include "widgets/grid_delegate.h"

#include <QHeaderView>
#include <QSet>
#include <QSignalBlocker>

#include <algorithm>

namespace zelto::registro {

namespace {

const QString UnitPrefix = u"UI:"_s;
const QString RoomPrefix = u"V:"_s;

QString keyOf(const QString& scala)
{
    return scala.trimmed().toUpper();
}

} // namespace

/// A node with what it stands for: a big job has thousands.
class Navig::Node : public QTreeWidgetItem
{
public:
    /// unit is 0 for a staircase, number its own or its room's; siblings are in the order of their
    /// numbers.
    Node(int unit, int number) : m_unit(unit), m_number(number) {}

    [[nodiscard]] int unit() const { return m_unit; }
    [[nodiscard]] int number() const { return m_number; }
    [[nodiscard]] Node* at(int place) const { return static_cast<Node*>(child(place)); }

    void insertInOrder(Node* node)
    {
        int place = childCount();
        while (place > 0 && at(place - 1)->number() > node->number())
            --place;
        insertChild(place, node);
    }

    /// Shows a name; an empty one as it shows already, if it was empty before.
    void setName(const QString& name, const QString& prefix, EmptyNames names)
    {
        if (!name.isEmpty()) {
            setText(0, name);
            return;
        }
        const QString numbered = prefix + QString::number(m_number);
        if (text(0) != u"-" && text(0) != numbered)
            setText(0, names == EmptyNames::Dash ? u"-"_s : numbered);
    }

    /// Its rooms become these, in the order of their positions.
    void followRooms(std::vector<TreeRoom> rooms, EmptyNames names)
    {
        std::ranges::sort(rooms, {}, &TreeRoom::position);
        int place = 0;
        for (const TreeRoom& room : rooms) {
            while (place < childCount() && at(place)->number() < room.position)
                delete takeChild(place);
            if (place == childCount() || at(place)->number() > room.position)
                insertChild(place, new Node(m_unit, room.position));
            at(place++)->setName(room.name, RoomPrefix, names);
        }
        while (childCount() > place)
            delete takeChild(place);
    }

private:
    int m_unit;
    int m_number;
};

Navig::Navig(RegisterModel& model) : m_model(model)
{
    setObjectName(u"Navig"_s);
    setAccessibleName(u"Scale, unità immobiliari e vani"_s);
    setColumnCount(1);
    setHeaderHidden(true);
    setUniformRowHeights(true);
    header()->setStretchLastSection(true);
    connect(this, &QTreeWidget::currentItemChanged, this, [this] {
        if (const int unit = selectedUnit(); unit > 0)
            emit unitSelected(unit);
    });
    connect(this, &QTreeWidget::itemClicked, this, &Navig::pick);
    connect(this, &QTreeWidget::itemActivated, this, &Navig::pick);
    connect(&model, &RegisterModel::reloaded, this, &Navig::build);
    connect(&model, &RegisterModel::unitChanged, this, [this](const TreeUnit& unit) {
        showUnit(unit, m_model.isReplaying() ? EmptyNames::Number : EmptyNames::Dash);
    });
    connect(&model, &RegisterModel::unitRemoved, this, &Navig::removeUnit);
    connect(&model, &RegisterModel::unitShown, this, &Navig::showCurrent);
}

void Navig::drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                    const QModelIndex& index) const
{
    QStyleOptionViewItem row = option;
    row.palette = widgets::viewPalette(this, option.palette);
    QTreeWidget::drawRow(painter, row, index);
}

void Navig::pick(const QTreeWidgetItem* item)
{
    const auto* node = static_cast<const Node*>(item);
    if (node->unit() == 0)
        return;
    if (static_cast<const Node*>(node->parent())->unit() > 0)
        emit roomSelected(node->unit(), node->number());
    else
        emit unitSelected(node->unit());
}

/// Units that were expanded are so again.
void Navig::build(const std::vector<TreeUnit>& tree)
{
    const QSignalBlocker quiet(this);
    QSet<int> expanded;
    for (const Node* node : std::as_const(m_units))
        if (node->isExpanded())
            expanded.insert(node->unit());
    m_scale.clear();
    m_units.clear();
    clear();
    for (const QString& code : QStringList(QString()) + m_model.lists().scale) {
        Node*& node = m_scale[keyOf(code)];
        if (node != nullptr)
            continue; // a code that is listed twice
        node = new Node(0, 0);
        node->setText(0, (u"Scala: "_s + code).trimmed());
        addTopLevelItem(node);
        node->setExpanded(true);
    }
    for (const TreeUnit& unit : tree)
        showUnit(unit, EmptyNames::Number);
    for (const int unit : std::as_const(expanded))
        if (Node* node = m_units.value(unit))
            node->setExpanded(true);
}

/// Shows the unit as it is now, among those of its staircase and in the order of the numbers. It is
/// not in the tree when that has no such staircase.
void Navig::showUnit(const TreeUnit& unit, EmptyNames names)
{
    const QSignalBlocker quiet(this);
    Node* const parent = m_scale.value(keyOf(unit.scala));
    if (parent == nullptr) {
        removeUnit(unit.number);
        return;
    }
    Node*& node = m_units[unit.number];
    if (node == nullptr)
        node = new Node(unit.number, unit.number);
    node->setName(unit.name, UnitPrefix, names);
    node->followRooms(unit.rooms, names);
    if (node->parent() == parent)
        return;
    const bool expanded = node->isExpanded();
    if (node->parent() != nullptr)
        node->parent()->removeChild(node);
    parent->insertInOrder(node);
    node->setExpanded(expanded);
}

void Navig::removeUnit(int unit)
{
    const QSignalBlocker quiet(this);
    delete m_units.take(unit);
}

void Navig::showCurrent()
{
    const QSignalBlocker quiet(this);
    const int unit = m_model.current();
    if (selectedUnit() == unit && unit > 0)
        return;
    Node* node = m_units.value(unit);
    setCurrentItem(node);
    if (node == nullptr)
        clearSelection();
    else
        scrollToItem(node);
    viewport()->update();
}

int Navig::selectedUnit() const
{
    const auto* node = static_cast<const Node*>(currentItem());
    return node != nullptr ? node->unit() : 0;
}

} // namespace zelto::registro
