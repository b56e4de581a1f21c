// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/ui/navig.h"

#include "text/literals.h"
#include "widgets/grid_delegate.h"

#include <QHeaderView>
#include <QSet>
#include <QSignalBlocker>

namespace zelto::registro {

/// A node with what it stands for: a big job has thousands.
class Navig::Node : public QTreeWidgetItem
{
public:
    /// unit is 0 for a staircase, number its own or its room's; siblings are in the order of their
    /// numbers.
    Node(int unit, int number, const QString& text) : m_unit(unit), m_number(number)
    {
        setText(0, text);
    }

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
        const QString numbered = prefix + QString::number(m_number);
        const bool wasEmpty = text(0) == u"-" || text(0) == numbered;
        const QString empty = names == EmptyNames::Dash ? u"-"_s : numbered;
        if (!name.isEmpty() || !wasEmpty)
            setText(0, name.isEmpty() ? empty : name);
    }

private:
    int m_unit;
    int m_number;
};

namespace {

const QString UnitPrefix = u"UI:"_s;
const QString RoomPrefix = u"V:"_s;

} // namespace

Navig::Navig(QWidget* parent) : QTreeWidget(parent)
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

Navig::Node* Navig::scala(const QString& code) const
{
    return m_scale.value(code.trimmed().toUpper());
}

Navig::Node* Navig::newUnit(const TreeUnit& unit)
{
    auto* node = new Node(unit.number, unit.number, unit.text);
    QList<QTreeWidgetItem*> rooms;
    rooms.reserve(static_cast<qsizetype>(unit.rooms.size()));
    for (const TreeRoom& room : unit.rooms)
        rooms.append(new Node(unit.number, room.position, room.text));
    node->addChildren(rooms);
    m_units.insert(unit.number, node);
    return node;
}

void Navig::build(const std::vector<TreeScala>& tree)
{
    const QSignalBlocker quiet(this);
    QSet<int> expanded;
    for (const Node* node : std::as_const(m_units))
        if (node->isExpanded())
            expanded.insert(node->unit());
    m_scale.clear();
    m_units.clear();
    clear();
    for (const TreeScala& staircase : tree) {
        if (scala(staircase.code) != nullptr)
            continue; // a code that is listed twice
        auto* node = new Node(0, 0, (u"Scala: "_s + staircase.code).trimmed());
        for (const TreeUnit& unit : staircase.units)
            node->addChild(newUnit(unit));
        m_scale.insert(staircase.code.trimmed().toUpper(), node);
        addTopLevelItem(node);
        node->setExpanded(true);
    }
    for (const int unit : std::as_const(expanded))
        if (Node* node = m_units.value(unit))
            node->setExpanded(true);
}

void Navig::followRooms(Node& node, const std::vector<RoomRow>& rooms, EmptyNames names)
{
    int at = 0;
    for (const RoomRow& room : rooms) {
        while (at < node.childCount() && node.at(at)->number() < room.position)
            delete node.takeChild(at);
        if (at == node.childCount() || node.at(at)->number() > room.position)
            node.insertChild(at, new Node(node.unit(), room.position, {}));
        node.at(at++)->setName(room.texts.front(), RoomPrefix, names);
    }
    while (node.childCount() > at)
        delete node.takeChild(at);
}

void Navig::placeUnit(Node* node, Node* parent)
{
    if (node->parent() == parent)
        return;
    const bool expanded = node->isExpanded();
    if (node->parent() != nullptr)
        node->parent()->removeChild(node);
    parent->insertInOrder(node);
    node->setExpanded(expanded);
}

void Navig::showUnit(const UnitRow& unit, const std::vector<RoomRow>& rooms, EmptyNames names)
{
    Node* parent = scala(unit.texts.at(UnitTextScala));
    if (parent == nullptr) {
        removeUnit(unit.number);
        return;
    }
    const QSignalBlocker quiet(this);
    Node* node = m_units.value(unit.number);
    if (node == nullptr)
        node = newUnit({.number = unit.number, .text = {}, .rooms = {}});
    placeUnit(node, parent);
    node->setName(unit.texts.front(), UnitPrefix, names);
    followRooms(*node, rooms, names);
}

void Navig::removeUnit(int unit)
{
    const QSignalBlocker quiet(this);
    delete m_units.take(unit);
}

void Navig::select(int unit)
{
    const QSignalBlocker quiet(this);
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
