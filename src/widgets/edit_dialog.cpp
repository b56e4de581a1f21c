// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/edit_dialog.h"

#include "store/files/database_error.h"
#include "store/settings.h"
#include "widgets/announcement.h"
#include "widgets/column_widths.h"
#include "widgets/dialogs.h"
#include "widgets/keys.h"
#include "widgets/typed_line.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <array>

namespace zelto::widgets {

namespace {

const QString WindowKey = u"Finestra"_s;

/// Enter belongs to fields and grids, so no button is the default one.
QPushButton* newButton(const QString& name, const QString& caption)
{
    auto* button = new QPushButton(caption);
    button->setObjectName(name);
    button->setAutoDefault(false);
    return button;
}

} // namespace

EditDialog::EditDialog(const Screen& screen, Dialogs& dialogs, store::Settings& settings,
                       QWidget* parent)
    : QDialog(parent), m_dialogs(dialogs), m_settings(settings), m_widthKey(screen.widthKey),
      m_grid(u"n."_s, screen.columns, Grid::AtEnd::AppendsRow), m_layout(new QVBoxLayout(this)),
      m_remark(new QLabel(this))
{
    setObjectName(screen.name);
    setWindowTitle(screen.caption);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    m_remark->setObjectName(u"Stato"_s);
    m_remark->setAccessibleDescription(u"Osservazioni"_s);
    m_remark->setWordWrap(true);
    m_grid.setObjectName(u"Lavori"_s);
    connect(&m_grid, &Grid::editorOpenedByKey, this, &EditDialog::markChanged);
    connect(&m_grid, &Grid::cellsChanged, this, &EditDialog::markChanged);
    connect(&m_grid, &Grid::pasteRefused, this,
            [this](const QString& why) { m_dialogs.showMessage(why); });
}

QWidget* EditDialog::buildTable()
{
    struct Command
    {
        QString name;
        QString caption;
        QKeySequence key;
        void (EditDialog::*run)();
    };
    const std::array commands{
        Command{u"InserisciRiga"_s, u"&Inserisci riga"_s, Qt::Key_Insert, &EditDialog::insertRow},
        Command{u"EliminaRiga"_s, u"&Elimina riga"_s, Qt::CTRL | Qt::Key_Delete,
                &EditDialog::removeRows}};
    auto* row = new QHBoxLayout;
    for (const Command& command : commands) {
        QPushButton* button = newButton(command.name, command.caption);
        button->setToolTip(command.key.toString(QKeySequence::NativeText));
        connect(button, &QPushButton::clicked, this, command.run);
        // The editor of a cell keeps these keys.
        addKey(
            m_grid, command.key, [this, run = command.run] { (this->*run)(); }, Qt::WidgetShortcut);
        row->addWidget(button);
    }
    row->addStretch(1);
    auto* table = new QWidget;
    auto* layout = new QVBoxLayout(table);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(&m_grid, 1);
    layout->addLayout(row);
    return table;
}

void EditDialog::insertRow()
{
    m_grid.commitEditor();
    const int row = std::max(m_grid.currentRow(), 0);
    m_grid.cells().insertEmptyRow(row);
    m_grid.setCurrentCell(row, 0);
    m_grid.setFocus();
    markChanged();
}

/// Those that are selected.
void EditDialog::removeRows()
{
    m_grid.commitEditor();
    const auto [first, last] = m_grid.selectedRows();
    if (first < 0)
        return;
    const int column = m_grid.currentColumn();
    m_grid.cells().deleteRows(first, last);
    m_grid.setCurrentCell(std::min(first, m_grid.cells().rowCount() - 1), column);
    m_grid.setFocus();
    markChanged();
}

void EditDialog::setContents(QWidget* contents)
{
    m_layout->addWidget(contents, 1);
    addButtons();
    restoreColumnWidths(m_grid, m_settings, objectName(), m_widthKey);
    restoreGeometry(
        QByteArray::fromBase64(m_settings.LeggiIni(objectName(), WindowKey).toLatin1()));
}

void EditDialog::addButtons()
{
    auto* row = new QHBoxLayout;
    row->addWidget(m_remark, 1);
    m_applica = newButton(u"BtApplica"_s, u"&Applica"_s);
    QPushButton* annulla = newButton(u"BtAnnulla"_s, u"A&nnulla"_s);
    QPushButton* ok = newButton(u"BtOK"_s, u"&OK"_s);
    for (QPushButton* button : {m_applica, annulla, ok})
        row->addWidget(button);
    m_layout->addLayout(row);
    m_applica->setEnabled(false);
    annulla->setProperty(TypedLine::LeavesUnchecked, true);
    connect(m_applica, &QPushButton::clicked, this, [this] {
        if (finishTyping())
            askAndStore();
    });
    connect(annulla, &QPushButton::clicked, this, &EditDialog::reject);
    connect(ok, &QPushButton::clicked, this, &EditDialog::close);
}

void EditDialog::markChanged()
{
    m_applica->setEnabled(true);
}

void EditDialog::showRemark(const QString& text)
{
    announce(*m_remark, text);
}

bool EditDialog::finishTyping()
{
    m_grid.commitEditor();
    return true;
}

bool EditDialog::askAndStore()
{
    if (!m_dialogs.askYesNo(u"Vuoi salvare i cambiamenti?"_s))
        return true;
    try {
        if (!store())
            return false;
    } catch (const store::DatabaseError& error) {
        m_dialogs.ReportError(error);
        return false;
    }
    m_applica->setEnabled(false);
    emit stored();
    return true;
}

void EditDialog::reject()
{
    m_discarded = true;
    close();
}

void EditDialog::closeEvent(QCloseEvent* event)
{
    const bool kept =
        !m_discarded && (!finishTyping() || (m_applica->isEnabled() && !askAndStore()));
    if (kept) {
        event->ignore();
        return;
    }
    saveColumnWidths(m_grid, m_settings, objectName(), m_widthKey);
    m_settings.ScriviIni(objectName(), WindowKey, QString::fromLatin1(saveGeometry().toBase64()));
    event->accept();
}

} // namespace zelto::widgets
