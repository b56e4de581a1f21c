// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/ui/controllo.h"

#include "register/job_remarks.h"
#include "register/ui/remark_model.h"
#include "widgets/keys.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>
#include <optional>

namespace zelto::registro {

using calc::Osservazione;

Controllo::Controllo(const JobRemarks& remarks, QWidget* parent)
    : QWidget(parent), m_remarks(remarks), m_model(new RemarkModel(this)),
      m_filter(new QLineEdit(this)), m_count(new QLabel(this)),
      m_go(new QPushButton(u"&Vai"_s, this)), m_list(new QTreeView(this))
{
    setObjectName(u"Controllo"_s);
    setWindowTitle(u"Controllo del lavoro"_s);
    build();
    connect(&remarks, &JobRemarks::changed, this, &Controllo::refresh);
    connect(m_filter, &QLineEdit::textChanged, this, &Controllo::refresh);
    connect(m_filter, &QLineEdit::returnPressed, this, &Controllo::takeFocus);
    connect(m_go, &QPushButton::clicked, this, &Controllo::go);
    connect(m_list, &QTreeView::doubleClicked, this, &Controllo::go);
    connect(m_list->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& current) {
                m_go->setEnabled(m_model->remark(current) != nullptr);
            });
    for (const Qt::Key enter : {Qt::Key_Return, Qt::Key_Enter})
        widgets::addKey(*m_list, enter, [this] { go(); });
    widgets::addKey(*m_list, QKeySequence::Copy, [this] {
        if (const Osservazione* const remark = m_model->remark(m_list->currentIndex()))
            QGuiApplication::clipboard()->setText(calc::testo(*remark));
    });
    widgets::keepRedoKey(*m_filter);
    widgets::addKey(*this, Qt::Key_Escape, [this] { emit left(); });
}

void Controllo::build()
{
    constexpr int FilterWidth = 32; // in characters
    m_filter->setObjectName(u"Filtro"_s);
    m_filter->setAccessibleName(u"Filtra le osservazioni"_s);
    m_filter->setPlaceholderText(u"Filtra"_s);
    m_filter->setClearButtonEnabled(true);
    m_filter->setMaximumWidth(m_filter->fontMetrics().averageCharWidth() * FilterWidth);
    m_count->setObjectName(u"Conteggio"_s);
    m_go->setObjectName(u"Vai"_s);
    m_go->setToolTip(u"Mostra di che cosa si tratta (Invio)"_s);
    m_list->setObjectName(u"Osservazioni"_s);
    m_list->setAccessibleName(u"Osservazioni"_s);
    m_list->setModel(m_model);
    m_list->setUniformRowHeights(true);
    m_list->setAllColumnsShowFocus(true);
    m_list->setExpandsOnDoubleClick(false);
    m_list->header()->setStretchLastSection(false);
    m_list->header()->setSectionResizeMode(RemarkModel::What, QHeaderView::Stretch);

    auto* row = new QHBoxLayout;
    row->addWidget(m_filter, 1);
    row->addWidget(m_count, 1);
    row->addStretch(1);
    row->addWidget(m_go);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(row);
    layout->addWidget(m_list);
}

/// What is not seen need not follow.
void Controllo::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    refresh();
}

/// The places are seen whole, as far as they leave room for the rest.
void Controllo::widenPlaces()
{
    const int before = m_list->columnWidth(RemarkModel::Place);
    m_list->resizeColumnToContents(RemarkModel::Place);
    const int wanted =
        m_list->columnWidth(RemarkModel::Place) + 2 * fontMetrics().averageCharWidth();
    const int most = m_list->viewport()->width() * 4 / 10;
    m_list->setColumnWidth(RemarkModel::Place, std::max(before, std::min(wanted, most)));
}

void Controllo::refresh()
{
    if (!isVisible())
        return;
    const QModelIndex current = m_list->currentIndex();
    const Osservazione* const remark = m_model->remark(current);
    const std::optional<Osservazione> former =
        remark != nullptr ? std::optional(*remark) : std::nullopt;
    m_model->show(m_remarks.remarks(), m_filter->text().trimmed());
    for (int kind = 0; kind < m_model->rowCount({}); ++kind)
        m_list->setFirstColumnSpanned(kind, {}, true);
    m_list->expandAll();
    widenPlaces();
    keepCurrent(former, current.row());
    showCount();
}

void Controllo::showCount()
{
    const auto& all = m_remarks.remarks();
    const QString counts = calc::conteggio(all);
    if (!m_remarks.failure().isEmpty())
        m_count->setText(m_remarks.failure());
    else if (all.empty())
        m_count->setText(u"Nessuna osservazione."_s);
    else if (m_filter->text().trimmed().isEmpty())
        m_count->setText(counts);
    else
        m_count->setText(u"%1 di %2 (%3)"_s.arg(m_model->count()).arg(all.size()).arg(counts));
}

void Controllo::keepCurrent(const std::optional<Osservazione>& former, int formerRow)
{
    QModelIndex index = former ? m_model->find(*former, formerRow) : QModelIndex();
    if (!index.isValid())
        index = m_model->index(0, RemarkModel::Place, m_model->index(0, RemarkModel::Place, {}));
    m_list->setCurrentIndex(index);
    m_go->setEnabled(m_model->remark(index) != nullptr);
}

void Controllo::takeFocus()
{
    m_list->setFocus();
}

/// With a copy of the place: the list may follow a change before it has been gone to.
void Controllo::go()
{
    if (const Osservazione* const remark = m_model->remark(m_list->currentIndex()))
        emit chosen(calc::Posto(remark->posto));
}

} // namespace zelto::registro
