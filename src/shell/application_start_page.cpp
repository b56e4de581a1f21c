// SPDX-License-Identifier: GPL-3.0-or-later
// The start page: what it offers and what comes of it.
#include "shell/application.h"
#include "shell/file_menu.h"
#include "shell/start_page.h"
#include "store/files/file_names.h"
#include "widgets/icons.h"

#include <QStandardPaths>

namespace zelto::shell {

void Application::buildStartPage(const QString& example)
{
    m_startPage = new StartPage([this](const QString& path) {
        OpenJob& job = m_jobFiles.job();
        return job.isOpen() && job.isAt(path) ? summaryOfOpen(path, job.JobDatabase())
                                              : summaryOf(path);
    });
    constexpr int Nuovo = 3;
    constexpr int NuovoDaModello = 20;
    constexpr int Apri = 4;
    for (const int index : {Nuovo, NuovoDaModello, Apri})
        m_startPage->addCommand(m_window.menuFile().VoceFile(index));
    const auto add = [this](const QString& icon, const QString& caption, const QString& hint) {
        auto* action = new QAction(widgets::icon(icon), caption, m_startPage);
        action->setStatusTip(hint);
        m_startPage->addCommand(*action);
        return action;
    };
    if (!example.isEmpty())
        connect(add(u"millesimi"_s, u"&Prova con l'esempio"_s,
                    u"Apre una copia del condominio di esempio, tra i documenti"_s),
                &QAction::triggered, this,
                [this, example] { fromStartPage([this, &example] { openExample(example); }); });
    const QString chapter = u"Il primo fabbricato in dieci minuti"_s;
    connect(add(u"zelto"_s, u"La &guida"_s, chapter), &QAction::triggered, this,
            [this, chapter] { showChapter(chapter); });
    connectStartPage();
    m_window.setStartPage(m_startPage);
}

void Application::connectStartPage()
{
    connect(m_startPage, &StartPage::shown, this, &Application::refreshStartPage);
    connect(m_startPage, &StartPage::openRequested, this, [this](const QString& path) {
        fromStartPage([&] {
            if (!m_jobFiles.job().isOpen() || !m_jobFiles.job().isAt(path))
                m_jobFiles.openGiven(path);
        });
    });
    connect(m_startPage, &StartPage::repairRequested, this, [this](const QString& path) {
        reportingErrors([&] { m_jobFiles.repairGiven(path); });
    });
    connect(m_startPage, &StartPage::restoreRequested, this, [this](const QString& path) {
        reportingErrors([&] { m_jobFiles.restoreCopyOf(path); });
    });
}

/// Who opens a job here wants to see it.
void Application::fromStartPage(const std::function<void()>& opening)
{
    reportingErrors([&] {
        opening();
        if (m_jobFiles.job().isOpen())
            showParametri(m_jobFiles.job().JobDatabase());
    });
}

void Application::openExample(const QString& example)
{
    m_jobFiles.openExample(example,
                           QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
}

void Application::refreshStartPage()
{
    QStringList listed;
    for (const QString& path : m_recentJobs.paths())
        if (!path.isEmpty())
            listed << path;
    const QString& used = m_jobFiles.job().JobFolder();
    m_startPage->refresh(
        listed, used.isEmpty() && !listed.isEmpty() ? store::folderOf(listed.first()) : used);
}

} // namespace zelto::shell
