// SPDX-License-Identifier: GPL-3.0-or-later
// The whole program in a folder of its own, driven through its real menus.
#pragma once

#include "shell/application.h"
#include "shell/file_menu.h"
#include "shell/status_bar.h"
#include "store/store_fixture.h"
#include "support/scripted_user.h"
#include "support/window.h"

#include <QApplication>
#include <QMenuBar>
#include <QToolBar>
#include <QToolButton>

namespace zelto::test {

/// A program folder "bin" with the master database, beside a folder "lavori" of jobs.
struct Installation
{
    Installation()
    {
        for (const QString& name : {u"bin"_s, u"lavori"_s})
            QDir(folder.path()).mkdir(name);
        QFile::copy(QStringLiteral(ZELTO_MASTER), program(u"Zelto.mdb"_s));
    }
    [[nodiscard]] QString program(const QString& name) const
    {
        return folder.file(u"bin/"_s + name);
    }
    [[nodiscard]] QString job(const QString& name) const
    {
        return folder.file(u"lavori/"_s + name);
    }
    /// A copy of the example.
    [[nodiscard]] QString newJob(const QString& name) const
    {
        return folder.example(u"lavori/"_s + name);
    }
    [[nodiscard]] QStringList jobs() const
    {
        return QDir(job({})).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
    /// Nothing when the start fails.
    [[nodiscard]] std::unique_ptr<shell::Application> start(widgets::Dialogs& dialogs) const
    {
        return shell::Application::start(program({}), folder.file(u"user"_s), dialogs);
    }

    const JobFolder folder;
};

/// A started program, of an installation of its own if none is given, and a user at its window.
class Session
{
    std::unique_ptr<const Installation> m_own;

public:
    Session() : m_own(std::make_unique<const Installation>()), installation(*m_own) { start(); }
    explicit Session(const Installation& there) : installation(there) { start(); }

    [[nodiscard]] shell::Application& application() { return *m_application; }
    [[nodiscard]] shell::MainWindow& window() { return m_application->window(); }
    [[nodiscard]] QAction& entry(int index) { return window().menuFile().VoceFile(index); }

    /// Opens a copy of the example.
    QString open(const QString& name = u"A.ZLT"_s)
    {
        QString job = installation.newJob(name);
        application().open(job);
        return job;
    }

    QMenu& openFileMenu()
    {
        QMenu& menu = window().menuFile();
        QMenuBar* bar = window().menuBar();
        QTest::mouseClick(bar, Qt::LeftButton, {}, bar->actionGeometry(menu.menuAction()).center());
        return menu;
    }
    /// Clicks the entry of the File menu whose caption begins so with the mouse.
    void choose(const QString& caption)
    {
        QMenu& menu = openFileMenu();
        for (QAction* action : menu.actions())
            if (menu.isVisible() && action->isVisible() &&
                action->text().remove(u'&').startsWith(caption))
                return chooseEntry(menu, *action);
        qFatal("there is no entry %s to be clicked", qPrintable(caption));
    }

    /// The toolbar's button of a screen.
    [[nodiscard]] QToolButton* toolbarButton(const QString& key)
    {
        auto* bar = window().findChild<QToolBar*>();
        return qobject_cast<QToolButton*>(bar->widgetForAction(bar->findChild<QAction*>(key)));
    }

    /// What a panel of the status bar says, 1 to 3.
    [[nodiscard]] QString panel(int number)
    {
        return window().findChild<QLabel*>(u"Stato%1"_s.arg(number))->text();
    }

    /// Nothing is going on and the window shows which job is open.
    void verifyIdle(const QString& job)
    {
        QCOMPARE(panel(1), u"Pronto"_s);
        QVERIFY(QApplication::overrideCursor() == nullptr);
        QCOMPARE(m_application->jobFiles().JobPath(), job);
        QCOMPARE(panel(3), job.isEmpty() ? job : u"Codice lavoro: "_s + job);
        if (!job.isEmpty())
            QCOMPARE(window().windowTitle(), u"Zelto 2009 - "_s + job);
        else
            QVERIFY(!window().windowTitle().contains(u" - /"));
    }

    const Installation& installation;
    ScriptedUser user;

private:
    void start()
    {
        m_application = installation.start(user);
        if (!m_application)
            qFatal("%s", qPrintable(user.said()));
        user.hasTrash = false;
        m_application->show();
        if (!QTest::qWaitForWindowExposed(&window()))
            qFatal("the window does not appear");
    }

    std::unique_ptr<shell::Application> m_application;
};

} // namespace zelto::test
