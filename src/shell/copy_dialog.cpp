// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/copy_dialog.h"

#include "text/literals.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace zelto::shell {

namespace {

QStringList cellsOf(const store::JobCopy& copy)
{
    return {copy.kept.toString(u"dd/MM/yyyy HH:mm:ss"_s),
            QLocale().formattedDataSize(copy.size, 1, QLocale::DataSizeTraditionalFormat),
            copy.units ? QString::number(*copy.units) : u"illeggibile"_s};
}

void addLabel(QVBoxLayout& layout, const QString& caption, QWidget* buddy)
{
    auto* label = new QLabel(caption);
    label->setBuddy(buddy);
    layout.addWidget(label);
    layout.addWidget(buddy);
}

} // namespace

CopyDialog::CopyDialog(const store::JobCopies& copies, const QString& job, QWidget* parent)
    : QDialog(parent), m_copies(copies), m_jobs(new QComboBox), m_table(new QTreeWidget),
      m_restore(new QPushButton(u"&Ripristina ..."_s))
{
    setObjectName(u"RipristinaCopia"_s);
    setWindowTitle(u"Ripristina copia"_s);
    auto* layout = new QVBoxLayout(this);
    addJobs(*layout, job);
    addTable(*layout);
    addButtons(*layout);
    connect(m_jobs, &QComboBox::currentIndexChanged, this, &CopyDialog::showCopies);
    showCopies();
    m_table->setFocus();
    constexpr QSize FirstSize(640, 420);
    resize(FirstSize);
}

void CopyDialog::addJobs(QVBoxLayout& layout, const QString& job)
{
    for (const QString& path : m_copies.jobs())
        m_jobs->addItem(QDir::toNativeSeparators(path), path);
    m_jobs->setCurrentIndex(std::max(0, m_jobs->findData(job)));
    m_jobs->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    addLabel(layout, u"&Lavoro:"_s, m_jobs);
}

void CopyDialog::addTable(QVBoxLayout& layout)
{
    constexpr int ColumnWidth = 180;
    m_table->setHeaderLabels({u"Stato del lavoro al"_s, u"Dimensione"_s, u"Unità"_s});
    m_table->header()->setStretchLastSection(false);
    m_table->header()->setDefaultSectionSize(ColumnWidth);
    m_table->setRootIsDecorated(false);
    m_table->setUniformRowHeights(true);
    m_table->setAllColumnsShowFocus(true);
    m_table->setAccessibleName(u"Copie di sicurezza"_s);
    addLabel(layout, u"&Copie di sicurezza:"_s, m_table);
    connect(m_table, &QTreeWidget::currentItemChanged, this,
            [this] { m_restore->setEnabled(chosen().has_value()); });
    connect(m_table, &QTreeWidget::itemDoubleClicked, m_restore, [this] { m_restore->click(); });
}

void CopyDialog::addButtons(QVBoxLayout& layout)
{
    auto* hint =
        new QLabel(u"La copia diventa un nuovo lavoro; quello di oggi non cambia. Le copie sono "
                   u"nella cartella %1."_s.arg(QDir::toNativeSeparators(m_copies.folder())));
    hint->setWordWrap(true);
    hint->setTextInteractionFlags(Qt::TextSelectableByMouse);
    layout.addWidget(hint);
    auto* buttons = new QDialogButtonBox;
    m_restore->setObjectName(u"BtRipristina"_s);
    m_restore->setDefault(true);
    buttons->addButton(m_restore, QDialogButtonBox::AcceptRole);
    buttons->addButton(u"A&nnulla"_s, QDialogButtonBox::RejectRole);
    layout.addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void CopyDialog::showCopies()
{
    m_table->clear();
    m_shown = m_copies.copiesOf(m_jobs->currentData().toString());
    for (const store::JobCopy& copy : m_shown) {
        auto* row = new QTreeWidgetItem(m_table, cellsOf(copy));
        row->setTextAlignment(1, Qt::AlignRight | Qt::AlignVCenter);
        row->setTextAlignment(2, Qt::AlignRight | Qt::AlignVCenter);
    }
    m_table->setCurrentItem(m_table->topLevelItem(0));
    m_restore->setEnabled(chosen().has_value());
}

std::optional<store::JobCopy> CopyDialog::chosen() const
{
    const int row = m_table->indexOfTopLevelItem(m_table->currentItem());
    if (row < 0 || !m_shown.at(static_cast<std::size_t>(row)).units)
        return std::nullopt;
    return m_shown.at(static_cast<std::size_t>(row));
}

} // namespace zelto::shell
