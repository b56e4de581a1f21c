// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "register/register_lists.h"

#include <QHash>
#include <QTreeWidget>

namespace zelto::registro {

/// The tree of the building: staircases, their units, the units' rooms.
class Navig : public QTreeWidget
{
    Q_OBJECT

public:
    explicit Navig(QWidget* parent = nullptr);

    /// Builds the whole tree anew.
    void build(const std::vector<TreeScala>& tree);

    /// A unit among those of its staircase in the order of their numbers; nothing when the tree has
    /// no such staircase.
    void addUnit(int unit, const QString& scala, const QString& text);

    /// A room among those of its unit in the order of their positions.
    void addRoom(int unit, int position, const QString& text);

    // Each does nothing where there is no such node.
    void setUnitText(int unit, const QString& text);
    void setRoomText(int unit, int position, const QString& text);
    void removeUnit(int unit);
    void removeRoom(int unit, int position);

    /// Takes the unit with its rooms to another staircase; it leaves the tree when there is no such
    /// staircase.
    void moveUnit(int unit, const QString& scala);

    [[nodiscard]] bool hasUnit(int unit) const { return m_units.contains(unit); }

    /// Makes the unit's node current, or one of its rooms', without reporting it.
    void select(int unit, int position = 0);

    /// The unit of the current node, 0 for a staircase.
    [[nodiscard]] int selectedUnit() const;

signals:
    /// The user went to another node of a unit or of one of its rooms.
    void unitSelected(int unit);

private:
    class Node;

    [[nodiscard]] Node* scala(const QString& code) const;
    [[nodiscard]] Node* room(int unit, int position) const;
    Node* newUnit(const TreeUnit& unit);
    void remove(Node* node);

    QHash<QString, Node*>
        m_scale; ///< by code in upper case, as the store does not tell cases apart
    QHash<int, Node*> m_units;
};

} // namespace zelto::registro
