// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "register/register_lists.h"

#include <QHash>
#include <QTreeWidget>

namespace zelto::registro {

/// The tree of the building: staircases, their units, the units' rooms. Every node has a key:
/// "Scala_" and the staircase code, "UI:" and the unit number, "UI:1_V:" and the room's position.
class Navig : public QTreeWidget
{
    Q_OBJECT

public:
    explicit Navig(QWidget* parent = nullptr);

    [[nodiscard]] static QString scalaKey(const QString& code);
    [[nodiscard]] static QString unitKey(int unit);
    [[nodiscard]] static QString roomKey(int unit, int position);

    /// Builds the whole tree anew.
    void build(const std::vector<TreeScala>& tree);

    /// A unit among those of its staircase in the order of their numbers; nothing when the tree has
    /// no such staircase.
    void addUnit(int unit, const QString& scala, const QString& text);

    /// A room among those of its unit in the order of their positions.
    void addRoom(int unit, int position, const QString& text);

    /// Renames a node, or removes it; nothing when there is none.
    void setText(const QString& key, const QString& text);
    void removeNode(const QString& key);

    /// Takes the unit with its rooms to another staircase; it leaves the tree when there is no such
    /// staircase.
    void moveUnit(int unit, const QString& scala);

    [[nodiscard]] bool hasNode(const QString& key) const { return m_nodes.contains(key); }

    /// Makes the node current without reporting it; false when there is none.
    bool select(const QString& key);

    /// The unit of the current node, 0 for a staircase.
    [[nodiscard]] int selectedUnit() const;

signals:
    /// The user went to another node of a unit or of one of its rooms.
    void unitSelected(int unit);

private:
    [[nodiscard]] static int numberOf(const QTreeWidgetItem* node);
    QTreeWidgetItem* newNode(const QString& key, int unit, int number, const QString& text);
    QTreeWidgetItem* newUnit(const TreeUnit& unit);
    static void insertInOrder(QTreeWidgetItem& parent, QTreeWidgetItem* node);
    void forget(const QTreeWidgetItem* node);

    QHash<QString, QTreeWidgetItem*> m_nodes;
};

} // namespace zelto::registro
