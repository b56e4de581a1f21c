// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "print/print_engine.h"
#include "print/ui/print_output.h"
#include "shell/guide_window.h"
#include "shell/job_files.h"
#include "shell/main_window.h"
#include "shell/recent_jobs.h"
#include "store/job_copies.h"
#include "store/settings.h"
#include "text/decimal_text.h"

#include <QObject>
#include <QPointer>

#include <functional>
#include <memory>

class QDockWidget;

namespace zelto::calc {
struct Posto;
} // namespace zelto::calc

namespace zelto::store {
class ApplicationFolder;
} // namespace zelto::store

namespace zelto::registro {
class Parametri;
} // namespace zelto::registro

namespace zelto::widgets {
class Dialogs;
class EditDialog;
} // namespace zelto::widgets

namespace zelto::shell {

class StartPage;

/// The running program: owns settings, master database, main window and open job, and carries out
/// what the user asks the window for.
class Application : public QObject
{
    Q_OBJECT

public:
    /// Throws DatabaseError when the master database cannot be read. The dialogs outlive it.
    Application(const store::ApplicationFolder& folder, widgets::Dialogs& dialogs);

    /// Starts the program with the window not yet shown; shows why and gives nothing when the
    /// master database is missing or cannot be read.
    [[nodiscard]] static std::unique_ptr<Application>
    start(const QString& programFolder, const QString& userFolder, widgets::Dialogs& dialogs);

    /// Shows the window where the user left it.
    void show();

    /// Opens a job that came from outside: the command line, a file manager, the mouse.
    void open(const QString& path);

    [[nodiscard]] MainWindow& window() { return m_window; }
    [[nodiscard]] JobFiles& jobFiles() { return m_jobFiles; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void connectWindow();
    void showGuide(const QWidget* asking);
    void showChapter(const QString& heading);
    void fillFileMenu();
    void buildStartPage(const QString& example);
    void connectStartPage();
    void fromStartPage(const std::function<void()>& opening);
    void openExample(const QString& example);
    void refreshStartPage();
    void showScreen(const QString& key);
    void showModal(widgets::EditDialog& screen);
    void showParametri(store::Database& lavoro);
    void connectParametri(store::Database& lavoro);
    void buildControllo(store::Database& lavoro);
    void showControllo(store::Database& lavoro);
    void returnToParametri();
    void showPlace(store::Database& lavoro, const calc::Posto& posto);
    template <typename Screen>
    void showPrintScreen(store::Database& lavoro);
    void setUpPrinter();
    void reportingErrors(const std::function<void()>& action);
    void shutDown();

    store::Settings m_settings;
    RecentJobs m_recentJobs;
    QStringList m_groupDescriptions;
    widgets::Dialogs& m_dialogs;
    MainWindow m_window;
    StartPage* m_startPage = nullptr; ///< of the window
    store::JobCopies m_copies;
    JobFiles m_jobFiles;
    text::DecimalSeparators m_separators = text::DecimalSeparators::detect();
    QString m_outputFolder;
    print::PrintEngine m_engine;
    print::PrinterDesk m_printers;
    QPointer<GuideWindow> m_guide;
    QPointer<registro::Parametri> m_parametri; ///< while it is open; its window owns it
    QPointer<QDockWidget> m_controllo;         ///< the panel with the remarks on what it shows
};

} // namespace zelto::shell
