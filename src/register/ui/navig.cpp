// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/ui/navig.h"

#include "text/literals.h"
#include "widgets/grid_delegate.h"

#include <QHeaderView>
#include <QSet>
#include <QSignalBlocker>

namespace zelto::registro {

namespace {

const QString UnitPrefix = u"UI:"_s;
const QString RoomPrefix = u"V:"_s;

QString keyOf(const QString& scala)
{
    return scala.trimmed().toUpper();
}

} // namespace

/// A node with what it stands for.
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

    [[nodiscard]] bool roomsAreMade() const
    {
        return childIndicatorPolicy() != QTreeWidgetItem::ShowIndicator;
    }

    /// Its rooms become these, which are in the order of their positions.
    void followRooms(const std::vector<Record>& rooms, EmptyNames names)
    {
        setChildIndicatorPolicy(QTreeWidgetItem::DontShowIndicatorWhenChildless);
        int place = 0;
        for (const Record& room : rooms) {
            const int position = numberOf(room, RoomPosition);
            while (place < childCount() && at(place)->number() < position)
                delete takeChild(place);
            if (place == childCount() || at(place)->number() > position)
                insertChild(place, new Node(m_unit, position));
            at(place++)->setName(textOf(room, RoomAmbiente), RoomPrefix, names);
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
    connect(this, &QTreeWidget::itemExpanded, this,
            [this](QTreeWidgetItem* item) { makeRooms(*static_cast<Node*>(item)); });
    connect(&model, &RegisterModel::reloaded, this, &Navig::build);
    connect(&model, &RegisterModel::unitChanged, this, [this](const Record& unit) {
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
void Navig::build(const std::vector<Record>& units)
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
    for (const Record& unit : units)
        if (Node* node = placeUnit(unit, EmptyNames::Number);
            node != nullptr && expanded.contains(node->unit())) {
            makeRooms(*node);
            node->setExpanded(true);
        }
}

/// The unit's node as it is now, among those of its staircase and in the order of the numbers.
/// There is none when the job has no such staircase.
Navig::Node* Navig::placeUnit(const Record& unit, EmptyNames names)
{
    const int number = numberOf(unit, UnitNumber);
    Node* const parent = m_scale.value(keyOf(textOf(unit, UnitScala)));
    if (parent == nullptr) {
        removeUnit(number);
        return nullptr;
    }
    Node*& node = m_units[number];
    if (node == nullptr) {
        node = new Node(number, number);
        node->setChildIndicatorPolicy(QTreeWidgetItem::ShowIndicator);
    }
    node->setName(textOf(unit, UnitRiferimento), UnitPrefix, names);
    if (node->parent() == parent)
        return node;
    const bool expanded = node->isExpanded();
    if (node->parent() != nullptr)
        node->parent()->removeChild(node);
    parent->insertInOrder(node);
    node->setExpanded(expanded);
    return node;
}

void Navig::makeRooms(Node& node)
{
    if (!node.roomsAreMade())
        node.followRooms(m_model.roomsOf(node.unit()), EmptyNames::Number);
}

/// The rooms of a unit that is new are new as well.
void Navig::showUnit(const Record& unit, EmptyNames names)
{
    const QSignalBlocker quiet(this);
    const bool added = !m_units.contains(numberOf(unit, UnitNumber));
    Node* node = placeUnit(unit, names);
    if (node != nullptr && (added || node->roomsAreMade()))
        node->followRooms(m_model.roomsOf(node->unit()), names);
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
    Node* node = m_units.value(unit);
    if (node != nullptr && !node->roomsAreMade())
        node->followRooms(m_model.rooms(), EmptyNames::Number);
    if (selectedUnit() == unit && unit > 0)
        return;
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
