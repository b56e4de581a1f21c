// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "register/register_model.h"

#include <QHash>
#include <QTreeWidget>

namespace zelto::registro {

/// The tree of the building: staircases, their units, the units' rooms. It follows the model; what
/// it reports was done by the user. The nodes of a unit's rooms are made when the unit is opened or
/// becomes the current one: a big job has thousands.
class Navig : public QTreeWidget
{
    Q_OBJECT

public:
    /// The model outlives it.
    explicit Navig(RegisterModel& model);

    /// Makes the current unit's node current, unless one of its rooms' is. No node is when it has
    /// none.
    void showCurrent();

    /// The unit of the current node, 0 for a staircase or none.
    [[nodiscard]] int selectedUnit() const;

signals:
    /// The user went to a node of the unit or of one of its rooms, or clicked on it.
    void unitSelected(int unit);
    /// The user clicked on a room's node or pressed Enter there.
    void roomSelected(int unit, int position);

private:
    class Node;

    /// How names that are empty show: "-" where the user emptied or has not yet entered them, the
    /// number in nodes made of what was stored and after what was taken back.
    enum class EmptyNames { Dash, Number };

    void build(const std::vector<Record>& units);
    Node* placeUnit(const Record& unit, EmptyNames names);
    void makeRooms(Node& unit);
    void showUnit(const Record& unit, EmptyNames names);
    void removeUnit(int unit);
    void pick(const QTreeWidgetItem* item);
    void drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                 const QModelIndex& index) const override;

    RegisterModel& m_model;
    /// By code in upper case, as the store does not tell cases apart.
    QHash<QString, Node*> m_scale;
    QHash<int, Node*> m_units;
};

} // namespace zelto::registro
