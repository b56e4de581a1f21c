// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/start_page.h"

#include "store/files/file_names.h"
#include "widgets/keys.h"

#include <QAction>
#include <QCommandLinkButton>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

#include <array>
#include <utility>

namespace zelto::shell {

StartPage::StartPage(JobSurvey::Look look, QWidget* parent)
    : QWidget(parent), m_survey(std::move(look)), m_jobs(new JobList(this)),
      m_found(new FoundJobs(this)), m_commands(new QVBoxLayout), m_search(new QLineEdit(this)),
      m_list(new QTreeView(this)), m_count(new QLabel(this)), m_fault(new QLabel(this)),
      m_open(new QPushButton(this)), m_repair(new QPushButton(u"Ripara ..."_s, this)),
      m_restore(new QPushButton(u"Ripristina copia ..."_s, this))
{
    setObjectName(u"PaginaIniziale"_s);
    buildList();
    auto* jobs = new QVBoxLayout;
    jobs->addLayout(searchRow());
    jobs->addWidget(m_list, 1);
    m_fault->setWordWrap(true);
    jobs->addWidget(m_fault);
    jobs->addLayout(actionRow());
    auto* both = new QHBoxLayout(this);
    both->addLayout(m_commands);
    both->addLayout(jobs, 1);
    m_commands->addStretch(1);
    connect(&m_survey, &JobSurvey::found, m_jobs, &JobList::add);
    connect(&m_survey, &JobSurvey::found, this, &StartPage::showCount);
    connect(&m_survey, &JobSurvey::finished, this, [this] {
        m_jobs->end();
        showCurrent();
        showCount();
    });
    showCurrent();
    showCount();
}

void StartPage::buildList()
{
    m_found->setSourceModel(m_jobs);
    m_found->setSortRole(JobList::SortRole);
    m_list->setObjectName(u"Lavori"_s);
    m_list->setAccessibleName(u"Lavori"_s);
    m_list->setModel(m_found);
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setAllColumnsShowFocus(true);
    m_list->setSortingEnabled(true);
    m_list->sortByColumn(JobList::Name, Qt::AscendingOrder);
    constexpr std::array Letters{20, 20, 16, 14, 8, 18}; // of the columns
    for (int column = 0; const int letters : Letters)
        m_list->setColumnWidth(column++, letters * m_list->fontMetrics().averageCharWidth());
    m_list->header()->setStretchLastSection(false);
    for (const int column : {JobList::Description, JobList::SecondDescription})
        m_list->header()->setSectionResizeMode(column, QHeaderView::Stretch);
    m_list->installEventFilter(this);
    connect(m_list, &QTreeView::doubleClicked, this, [this] { ask(&StartPage::openRequested); });
    connect(m_list->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &StartPage::showCurrent);
}

QBoxLayout* StartPage::searchRow()
{
    auto* label = new QLabel(u"&Cerca:"_s, this);
    label->setBuddy(m_search);
    m_search->setObjectName(u"CercaLavoro"_s);
    m_search->setAccessibleName(u"Cerca tra i lavori"_s);
    m_search->setPlaceholderText(u"nome, descrizione, data, stato"_s);
    m_search->setClearButtonEnabled(true);
    m_search->installEventFilter(this);
    connect(m_search, &QLineEdit::textChanged, this, [this](const QString& text) {
        m_found->search(text);
        showCurrent();
        showCount();
    });
    auto* row = new QHBoxLayout;
    row->addWidget(label);
    row->addWidget(m_search, 1);
    return row;
}

QBoxLayout* StartPage::actionRow()
{
    const auto connected = [this](QPushButton* button, const QString& name, Request request) {
        button->setObjectName(name);
        connect(button, &QPushButton::clicked, this, [this, request] { ask(request); });
        return button;
    };
    auto* row = new QHBoxLayout;
    m_count->setObjectName(u"ConteggioLavori"_s);
    row->addWidget(m_count, 1);
    row->addWidget(connected(m_restore, u"RipristinaLavoro"_s, &StartPage::restoreRequested));
    row->addWidget(connected(m_repair, u"RiparaLavoro"_s, &StartPage::repairRequested));
    row->addWidget(connected(m_open, u"ApriLavoro"_s, &StartPage::openRequested));
    return row;
}

void StartPage::addCommand(QAction& action)
{
    auto* button = new QCommandLinkButton(action.text(), action.statusTip(), this);
    button->setIcon(action.icon());
    button->setAccessibleName(action.text().remove(u'&'));
    button->setAccessibleDescription(action.statusTip());
    constexpr int Letters = 34;
    button->setFixedWidth(Letters * fontMetrics().averageCharWidth());
    connect(button, &QAbstractButton::clicked, &action, &QAction::trigger);
    // Tab goes through the commands before it comes to the jobs.
    m_commands->insertWidget(m_commands->count() - 1, button);
    setTabOrder(button, m_search);
    if (m_commands->count() > 2)
        setTabOrder(m_commands->itemAt(m_commands->count() - 3)->widget(), button);
}

void StartPage::refresh(const QStringList& listed, const QString& folder)
{
    if (!isVisible())
        return;
    m_jobs->begin(folder);
    m_survey.start(listed, folder);
    showCount();
}

void StartPage::pause()
{
    m_survey.stop();
}

void StartPage::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    emit shown();
}

void StartPage::hideEvent(QHideEvent* event)
{
    pause();
    QWidget::hideEvent(event);
}

/// Enter opens, and from the search field one comes down into the list.
bool StartPage::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const auto& key = *static_cast<const QKeyEvent*>(event);
    if (watched == m_search && (key.key() == Qt::Key_Down || widgets::isEnter(key))) {
        takeList();
        return true;
    }
    if (watched == m_list && widgets::isEnter(key)) {
        ask(&StartPage::openRequested);
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void StartPage::takeList()
{
    if (!m_list->currentIndex().isValid())
        m_list->setCurrentIndex(m_found->index(0, 0));
    m_list->setFocus();
}

const JobSummary* StartPage::currentJob() const
{
    const QModelIndex current = m_list->currentIndex();
    return current.isValid() ? &m_jobs->job(m_found->mapToSource(current)) : nullptr;
}

void StartPage::ask(Request request)
{
    const JobSummary* const job = currentJob();
    if (job == nullptr)
        return;
    const QString path = job->path; // the list may be another one before the request is carried out
    emit(this->*request)(path);
}

void StartPage::showCurrent()
{
    const JobSummary* const job = currentJob();
    const bool isDamaged = job != nullptr && job->state == JobState::Damaged;
    const bool isForeign = job != nullptr && job->state == JobState::WindowsEdition;
    m_open->setText(isForeign ? u"Converti ..."_s : u"Apri il lavoro"_s);
    m_open->setEnabled(job != nullptr);
    m_repair->setVisible(isDamaged);
    m_restore->setVisible(isDamaged || (job != nullptr && job->state == JobState::Unreadable));
    m_fault->setText(job != nullptr ? job->fault : QString());
    m_fault->setVisible(!m_fault->text().isEmpty());
}

void StartPage::showCount()
{
    const int all = m_jobs->rowCount();
    const int found = m_found->rowCount();
    QString text =
        all == found ? u"Lavori: %1"_s.arg(all) : u"Lavori: %1 di %2"_s.arg(found).arg(all);
    if (m_survey.isRunning())
        text += u", lettura in corso ..."_s;
    else if (all == 0)
        text = u"Qui compaiono i lavori dell'ultima cartella usata."_s;
    m_count->setText(text);
}

} // namespace zelto::shell
