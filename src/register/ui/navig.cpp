// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/ui/navig.h"

#include <QHeaderView>
#include <QSignalBlocker>

namespace zelto::registro {

namespace {

enum Role : int {
    KeyRole = Qt::UserRole, ///< text: the node's key
    NumberRole,             ///< unit number or room position, by which siblings are ordered
    UnitRole                ///< the node's unit, 0 for a staircase
};

} // namespace

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

// Codes are compared as the store does, without regard to letter case.

QString Navig::scalaKey(const QString& code)
{
    return QStringLiteral("Scala_") + code.trimmed().toUpper();
}

QString Navig::unitKey(int unit)
{
    return QStringLiteral("UI:%1").arg(unit);
}

QString Navig::roomKey(int unit, int position)
{
    return QStringLiteral("UI:%1_V:%2").arg(unit).arg(position);
}

QTreeWidgetItem* Navig::newNode(const QString& key, int unit, int number, const QString& text)
{
    auto* node = new QTreeWidgetItem({text});
    node->setData(0, KeyRole, key);
    node->setData(0, UnitRole, unit);
    node->setData(0, NumberRole, number);
    m_nodes.insert(key, node);
    return node;
}

QTreeWidgetItem* Navig::newUnit(const TreeUnit& unit)
{
    QTreeWidgetItem* node = newNode(unitKey(unit.number), unit.number, unit.number, unit.text);
    for (const TreeRoom& room : unit.rooms)
        node->addChild(
            newNode(roomKey(unit.number, room.position), unit.number, room.position, room.text));
    return node;
}

void Navig::build(const std::vector<TreeScala>& tree)
{
    const QSignalBlocker quiet(this);
    m_nodes.clear();
    clear();
    for (const TreeScala& scala : tree) {
        if (hasNode(scalaKey(scala.code)))
            continue; // a code that is listed twice
        const QString text =
            QStringLiteral("Scala:") + (scala.code.isEmpty() ? QString() : u' ' + scala.code);
        QTreeWidgetItem* node = newNode(scalaKey(scala.code), 0, 0, text);
        for (const TreeUnit& unit : scala.units)
            node->addChild(newUnit(unit));
        addTopLevelItem(node);
        node->setExpanded(true);
    }
}

int Navig::numberOf(const QTreeWidgetItem* node)
{
    return node->data(0, NumberRole).toInt();
}

void Navig::insertInOrder(QTreeWidgetItem& parent, QTreeWidgetItem* node)
{
    int place = parent.childCount();
    while (place > 0 && numberOf(parent.child(place - 1)) > numberOf(node))
        --place;
    parent.insertChild(place, node);
}

void Navig::addUnit(int unit, const QString& scala, const QString& text)
{
    if (QTreeWidgetItem* parent = m_nodes.value(scalaKey(scala)))
        insertInOrder(*parent, newUnit({.number = unit, .text = text, .rooms = {}}));
}

void Navig::addRoom(int unit, int position, const QString& text)
{
    if (QTreeWidgetItem* parent = m_nodes.value(unitKey(unit)))
        insertInOrder(*parent, newNode(roomKey(unit, position), unit, position, text));
}

void Navig::setText(const QString& key, const QString& text)
{
    if (QTreeWidgetItem* node = m_nodes.value(key))
        node->setText(0, text);
}

void Navig::forget(const QTreeWidgetItem* node)
{
    for (int i = 0; i < node->childCount(); ++i)
        forget(node->child(i));
    m_nodes.remove(node->data(0, KeyRole).toString());
}

void Navig::removeNode(const QString& key)
{
    QTreeWidgetItem* node = m_nodes.value(key);
    if (node == nullptr)
        return;
    const QSignalBlocker quiet(this);
    forget(node);
    delete node;
}

void Navig::moveUnit(int unit, const QString& scala)
{
    QTreeWidgetItem* node = m_nodes.value(unitKey(unit));
    QTreeWidgetItem* target = m_nodes.value(scalaKey(scala));
    if (target == nullptr) {
        removeNode(unitKey(unit));
        return;
    }
    if (node == nullptr || node->parent() == target)
        return;
    const QSignalBlocker quiet(this);
    const bool current = currentItem() == node;
    const bool expanded = node->isExpanded();
    node->parent()->removeChild(node);
    insertInOrder(*target, node);
    node->setExpanded(expanded);
    if (current)
        setCurrentItem(node);
}

bool Navig::select(const QString& key)
{
    QTreeWidgetItem* node = m_nodes.value(key);
    if (node == nullptr)
        return false;
    const QSignalBlocker quiet(this);
    setCurrentItem(node);
    scrollToItem(node);
    return true;
}

int Navig::selectedUnit() const
{
    const QTreeWidgetItem* node = currentItem();
    return node != nullptr ? node->data(0, UnitRole).toInt() : 0;
}

} // namespace zelto::registro
