// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/ui/navig.h"

#include <QHeaderView>
#include <QSignalBlocker>

namespace zelto::registro {

/// A node with what it stands for: a big job has thousands.
class Navig::Node : public QTreeWidgetItem
{
public:
    /// unit is 0 for a staircase; siblings are in the order of their numbers.
    Node(int unit, int number, const QString& text) : m_unit(unit), m_number(number)
    {
        setText(0, text);
    }

    [[nodiscard]] int unit() const { return m_unit; }
    [[nodiscard]] int number() const { return m_number; }

    void insertInOrder(Node* node)
    {
        int place = childCount();
        while (place > 0 && at(place - 1)->number() > node->number())
            --place;
        insertChild(place, node);
    }
    [[nodiscard]] Node* at(int place) const { return static_cast<Node*>(child(place)); }

private:
    int m_unit;
    int m_number;
};

Navig::Navig(QWidget* parent) : QTreeWidget(parent)
{
    setObjectName(QStringLiteral("Navig"));
    setAccessibleName(QStringLiteral("Scale, unità immobiliari e vani"));
    setColumnCount(1);
    setHeaderHidden(true);
    setUniformRowHeights(true);
    header()->setStretchLastSection(true);
    connect(this, &QTreeWidget::currentItemChanged, this, [this] {
        if (const int unit = selectedUnit(); unit > 0)
            emit unitSelected(unit);
    });
}

Navig::Node* Navig::scala(const QString& code) const
{
    return m_scale.value(code.trimmed().toUpper());
}

Navig::Node* Navig::room(int unit, int position) const
{
    const Node* parent = m_units.value(unit);
    for (int i = 0; parent != nullptr && i < parent->childCount(); ++i)
        if (parent->at(i)->number() == position)
            return parent->at(i);
    return nullptr;
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
    m_scale.clear();
    m_units.clear();
    clear();
    for (const TreeScala& staircase : tree) {
        if (scala(staircase.code) != nullptr)
            continue; // a code that is listed twice
        auto* node = new Node(0, 0, (QStringLiteral("Scala: ") + staircase.code).trimmed());
        for (const TreeUnit& unit : staircase.units)
            node->addChild(newUnit(unit));
        m_scale.insert(staircase.code.trimmed().toUpper(), node);
        addTopLevelItem(node);
        node->setExpanded(true);
    }
}

void Navig::addUnit(int unit, const QString& scala, const QString& text)
{
    if (Node* parent = this->scala(scala))
        parent->insertInOrder(newUnit({.number = unit, .text = text, .rooms = {}}));
}

void Navig::addRoom(int unit, int position, const QString& text)
{
    if (Node* parent = m_units.value(unit))
        parent->insertInOrder(new Node(unit, position, text));
}

void Navig::setUnitText(int unit, const QString& text)
{
    if (Node* node = m_units.value(unit))
        node->setText(0, text);
}

void Navig::setRoomText(int unit, int position, const QString& text)
{
    if (Node* node = room(unit, position))
        node->setText(0, text);
}

void Navig::remove(Node* node)
{
    const QSignalBlocker quiet(this);
    delete node;
}

void Navig::removeUnit(int unit)
{
    remove(m_units.take(unit));
}

void Navig::removeRoom(int unit, int position)
{
    remove(room(unit, position));
}

void Navig::moveUnit(int unit, const QString& scala)
{
    Node* node = m_units.value(unit);
    Node* target = this->scala(scala);
    if (target == nullptr) {
        removeUnit(unit);
        return;
    }
    if (node == nullptr || node->parent() == target)
        return;
    const QSignalBlocker quiet(this);
    const bool current = currentItem() == node;
    const bool expanded = node->isExpanded();
    node->parent()->removeChild(node);
    target->insertInOrder(node);
    node->setExpanded(expanded);
    if (current)
        setCurrentItem(node);
}

void Navig::select(int unit, int position)
{
    Node* node = position > 0 ? room(unit, position) : m_units.value(unit);
    if (node == nullptr)
        return;
    const QSignalBlocker quiet(this);
    setCurrentItem(node);
    scrollToItem(node);
}

int Navig::selectedUnit() const
{
    const auto* node = static_cast<const Node*>(currentItem());
    return node != nullptr ? node->unit() : 0;
}

} // namespace zelto::registro
