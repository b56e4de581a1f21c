// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/ui/unit_list.h"

#include "register/ui/register_columns.h"
#include "widgets/cell_picker.h"
#include "widgets/grid.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace zelto::registro {

using widgets::CellPicker;
using widgets::Grid;

namespace {

const QString Blank = QStringLiteral(" ");

void refill(QComboBox& list, const QStringList& entries)
{
    const QSignalBlocker quiet(&list);
    list.clear();
    list.addItem(Blank);
    list.addItems(entries);
}

/// The entry chosen, untrimmed as it was listed; empty for the blank first one.
QString chosen(const QComboBox& list)
{
    return list.currentIndex() > 0 && !list.currentText().trimmed().isEmpty() ? list.currentText()
                                                                              : QString();
}

} // namespace

UnitList::UnitList(QWidget* parent)
    : QWidget(parent), m_livello(addFilter(QStringLiteral("Livello"))),
      m_scala(addFilter(QStringLiteral("CodScala"))),
      m_grid(new Grid({}, unitColumns(), Grid::AtEnd::Stays, this)), m_picker(new CellPicker(this))
{
    m_grid->setObjectName(QStringLiteral("UI"));
    m_grid->setAccessibleName(QStringLiteral("Unità immobiliari"));
    m_grid->setContextMenuPolicy(Qt::CustomContextMenu);
    m_picker->setObjectName(QStringLiteral("Combo2"));
    m_picker->setAccessibleName(QStringLiteral("Codici scala"));

    auto* filters = new QHBoxLayout;
    for (const auto& [text, list] : {std::pair{QStringLiteral(" Livello"), m_livello},
                                     std::pair{QStringLiteral(" Scala"), m_scala}}) {
        auto* label = new QLabel(text, this);
        label->setBuddy(list);
        filters->addWidget(label);
        filters->addWidget(list);
        filters->addSpacing(fontMetrics().averageCharWidth() * 2);
    }
    filters->addStretch();
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(filters);
    layout->addWidget(m_grid);

    connect(m_grid, &Grid::cellRequested, this, &UnitList::openCell);
    connect(m_picker, &CellPicker::chosen, this, [this](const QString& entry) {
        m_grid->setFocus();
        emit scalaChosen(m_pickedRow, entry.trimmed());
    });
    connect(m_picker, &CellPicker::dismissed, m_grid, [this] { m_grid->setFocus(); });
}

QComboBox* UnitList::addFilter(const QString& name)
{
    auto* list = new QComboBox(this);
    list->setObjectName(name);
    list->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    list->setMinimumContentsLength(8);
    connect(list, &QComboBox::currentIndexChanged, this, &UnitList::filterChanged);
    return list;
}

void UnitList::setLists(const QStringList& scale, const QStringList& livelli)
{
    m_scale = scale;
    refill(*m_scala, scale);
    refill(*m_livello, livelli);
}

QString UnitList::filterScala() const
{
    return chosen(*m_scala);
}

QString UnitList::filterLivello() const
{
    return chosen(*m_livello);
}

widgets::GridRow UnitList::rowFor(const UnitRow& unit)
{
    widgets::GridRow row{.number = QString::number(unit.number),
                         .cells = QStringList(unit.texts.begin(), unit.texts.end())};
    for (const QChar flag : unit.flags.left(NumTables))
        row.cells << QString(flag).trimmed();
    return row;
}

int UnitList::rowOf(int unit) const
{
    for (int row = 0; row < m_grid->cells().rowCount(); ++row)
        if (unitIn(row) == unit)
            return row;
    return -1;
}

int UnitList::unitIn(int row) const
{
    return row < 0 || row >= m_grid->cells().rowCount() ? 0 : m_grid->cells().number(row).toInt();
}

void UnitList::openCell(int row, int column, int keyCode)
{
    if (unitIn(row) == 0)
        return;
    if (column == ColumnScala)
        openScale(row, keyCode);
    else
        emit flagToggled(row, column - ColumnFirstTable + 1);
}

void UnitList::openScale(int row, int keyCode)
{
    m_pickedRow = row;
    const QModelIndex cell = m_grid->cells().index(row, ColumnScala);
    const QRect inside = m_grid->visualRect(cell);
    const QRect place(m_grid->viewport()->mapTo(this, inside.topLeft()), inside.size());
    m_picker->open(QStringList(Blank) + m_scale, place, m_grid->cells().text(row, ColumnScala),
                   CellPicker::Match::Whole);
    m_picker->searchFor(keyCode);
}

} // namespace zelto::registro
