// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "register/register_lists.h"

#include <QHash>
#include <QTreeWidget>

namespace zelto::registro {

/// The tree of the building: staircases, their units, the units' rooms. What it reports was done by
/// the user.
class Navig : public QTreeWidget
{
    Q_OBJECT

public:
    /// How names that are empty show: "-" where the user emptied or has not yet entered them, the
    /// number in a tree built anew.
    enum class EmptyNames { Dash, Number };

    explicit Navig(QWidget* parent = nullptr);

    /// Builds the whole tree anew; units that were expanded are so again.
    void build(const std::vector<TreeScala>& tree);

    /// Shows a unit with its rooms as it is now, among those of its staircase and in the order of
    /// the numbers. It is not in the tree when that has no such staircase.
    void showUnit(const UnitRow& unit, const std::vector<RoomRow>& rooms, EmptyNames names);
    void removeUnit(int unit);

    /// Makes the unit's node current, unless one of its rooms' is. No node is when it has none.
    void select(int unit);

    /// The unit of the current node, 0 for a staircase or none.
    [[nodiscard]] int selectedUnit() const;

signals:
    /// The user went to a node of the unit or of one of its rooms, or clicked on it.
    void unitSelected(int unit);
    /// The user clicked on a room's node or pressed Enter there.
    void roomSelected(int unit, int position);

private:
    class Node;

    [[nodiscard]] Node* scala(const QString& code) const;
    Node* newUnit(const TreeUnit& unit);
    void placeUnit(Node* node, Node* parent);
    static void followRooms(Node& node, const std::vector<RoomRow>& rooms, EmptyNames names);
    void pick(const QTreeWidgetItem* item);
    void drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                 const QModelIndex& index) const override;

    QHash<QString, Node*>
        m_scale; ///< by code in upper case, as the store does not tell cases apart
    QHash<int, Node*> m_units;
};

} // namespace zelto::registro
