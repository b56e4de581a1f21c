// SPDX-License-Identifier: GPL-3.0-or-later
// The whole program in a folder of its own, driven through its real menus.
#pragma once

#include "shell/application.h"
#include "shell/file_menu.h"
#include "shell/status_bar.h"
#include "support/scripted_user.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QMenuBar>
#include <QTemporaryDir>
#include <QTest>
#include <QToolBar>
#include <QToolButton>

namespace zelto::test {

/// A program folder with the master database, beside a folder "lavori" of jobs.
class Installation
{
public:
    Installation()
    {
        QDir(m_folder.path()).mkpath(u"bin"_s);
        QDir(m_folder.path()).mkpath(u"lavori"_s);
        QFile::copy(QStringLiteral(ZELTO_MASTER), program(u"Zelto.mdb"_s));
    }
    [[nodiscard]] QString program(const QString& name) const
    {
        return m_folder.filePath(u"bin/"_s + name);
    }
    [[nodiscard]] QString job(const QString& name) const
    {
        return m_folder.filePath(u"lavori/"_s + name);
    }
    /// A copy of the example.
    [[nodiscard]] QString newJob(const QString& name) const
    {
        QFile::copy(QStringLiteral(EXAMPLE_JOB), job(name));
        return job(name);
    }
    [[nodiscard]] QStringList jobs() const
    {
        return QDir(job({})).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
    /// Nothing when the start fails.
    [[nodiscard]] std::unique_ptr<shell::Application> start(widgets::Dialogs& dialogs) const
    {
        return shell::Application::start(program({}), m_folder.filePath(u"user"_s), dialogs);
    }

private:
    QTemporaryDir m_folder;
};

/// A started program and a user at its window.
class Session
{
public:
    explicit Session(const Installation& installation) : m_application(installation.start(user))
    {
        if (!m_application)
            qFatal("%s", qPrintable(user.said()));
        user.hasTrash = false;
        m_application->show();
        if (!QTest::qWaitForWindowExposed(&window()))
            qFatal("the window does not appear");
    }

    [[nodiscard]] shell::Application& application() { return *m_application; }
    [[nodiscard]] shell::MainWindow& window() { return m_application->window(); }
    [[nodiscard]] QAction& entry(int index) { return window().menuFile().VoceFile(index); }

    /// Clicks an entry of the File menu with the mouse.
    void choose(int index)
    {
        QMenu& menu = window().menuFile();
        QMenuBar* bar = window().menuBar();
        QTest::mouseClick(bar, Qt::LeftButton, {}, bar->actionGeometry(menu.menuAction()).center());
        if (!menu.isVisible() || !entry(index).isVisible())
            qFatal("entry %d is not there to be clicked", index);
        QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(&entry(index)).center());
    }
    void choose(shell::FileEntry index) { choose(static_cast<int>(index)); }

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
    [[nodiscard]] QString title() { return window().windowTitle(); }

    /// Nothing is going on and the window shows which job is open.
    void verifyIdle(const QString& job)
    {
        QCOMPARE(panel(1), u"Pronto"_s);
        QVERIFY(QApplication::overrideCursor() == nullptr);
        QCOMPARE(m_application->jobFiles().JobPath(), job);
        QCOMPARE(panel(3), job.isEmpty() ? job : u"Codice lavoro: "_s + job);
        if (!job.isEmpty())
            QCOMPARE(title(), u"Zelto 2009 - "_s + job);
        else
            QVERIFY(!title().contains(u" - /"));
    }

    ScriptedUser user;

private:
    std::unique_ptr<shell::Application> m_application;
};

} // namespace zelto::test
