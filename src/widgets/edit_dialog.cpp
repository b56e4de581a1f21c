// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/edit_dialog.h"

#include "store/database_error.h"
#include "store/settings.h"
#include "widgets/dialogs.h"
#include "widgets/typed_line.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace zelto::widgets {

namespace {

const QString WindowKey = u"Finestra"_s;

/// Enter belongs to fields and grids, so no button is the default one.
QPushButton* addButton(QHBoxLayout& row, const QString& name, const QString& caption)
{
    auto* button = new QPushButton(caption);
    button->setObjectName(name);
    button->setAutoDefault(false);
    row.addWidget(button);
    return button;
}

} // namespace

EditDialog::EditDialog(const QString& name, const QString& caption, Dialogs& dialogs,
                       store::Settings& settings, QWidget* parent)
    : QDialog(parent), m_dialogs(dialogs), m_settings(settings), m_layout(new QVBoxLayout(this)),
      m_remark(new QLabel(this))
{
    setObjectName(name);
    setWindowTitle(caption);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    m_remark->setObjectName(u"Stato"_s);
    m_remark->setAccessibleName(u"Osservazioni"_s);
    m_remark->setWordWrap(true);
}

void EditDialog::setContents(QWidget* contents)
{
    m_layout->addWidget(contents, 1);
    addButtons();
    restoreGeometry(
        QByteArray::fromBase64(m_settings.LeggiIni(objectName(), WindowKey).toLatin1()));
}

void EditDialog::addButtons()
{
    auto* row = new QHBoxLayout;
    row->addWidget(m_remark, 1);
    m_applica = addButton(*row, u"BtApplica"_s, u"&Applica"_s);
    m_applica->setEnabled(false);
    QPushButton* annulla = addButton(*row, u"BtAnnulla"_s, u"A&nnulla"_s);
    annulla->setProperty(TypedLine::LeavesUnchecked, true);
    QPushButton* ok = addButton(*row, u"BtOK"_s, u"&OK"_s);
    m_layout->addLayout(row);
    connect(m_applica, &QPushButton::clicked, this, &EditDialog::apply);
    connect(annulla, &QPushButton::clicked, this, &EditDialog::reject);
    connect(ok, &QPushButton::clicked, this, &EditDialog::close);
}

void EditDialog::setChanged(bool changed)
{
    m_changed = changed;
    m_applica->setEnabled(changed);
}

void EditDialog::markChanged()
{
    setChanged(true);
}

void EditDialog::showRemark(const QString& text)
{
    m_remark->setText(text);
}

void EditDialog::apply()
{
    if (finishTyping())
        askAndStore();
}

bool EditDialog::askAndStore()
{
    if (!m_dialogs.askYesNo(u"Vuoi salvare i cambiamenti?"_s))
        return true;
    try {
        store();
    } catch (const store::DatabaseError& error) {
        m_dialogs.ReportError(error);
        return false;
    }
    setChanged(false);
    return true;
}

void EditDialog::reject()
{
    m_discarded = true;
    close();
}

void EditDialog::closeEvent(QCloseEvent* event)
{
    const bool kept = !m_discarded && (!finishTyping() || (m_changed && !askAndStore()));
    if (kept) {
        event->ignore();
        return;
    }
    setChanged(false);
    saveSettings();
    m_settings.ScriviIni(objectName(), WindowKey, QString::fromLatin1(saveGeometry().toBase64()));
    event->accept();
}

} // namespace zelto::widgets
