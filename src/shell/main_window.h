// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/main_window_services.h"

#include <QMainWindow>

class QDockWidget;
class QMdiArea;
class QMdiSubWindow;
class QStackedWidget;

namespace zelto::widgets {
class ContextMenu;
} // namespace zelto::widgets

namespace zelto::shell {

class FileMenu;
class RecentJobs;
class StatusBar;

/// The application's frame: menus, toolbar, status bar, document windows, and what the folders
/// below need of the user. What the user asks for leaves it as signals.
class MainWindow : public QMainWindow, public widgets::MainWindowServices
{
    Q_OBJECT

public:
    /// The recent jobs outlive the window.
    explicit MainWindow(const RecentJobs& recentJobs);

    [[nodiscard]] FileMenu& menuFile() { return *m_menuFile; }
    /// The context menu that the grids share.
    [[nodiscard]] widgets::ContextMenu& mnuDxMouse() { return *m_contextMenu; }

    /// The window's title, whatever document windows make of it.
    void setTitle(const QString& title);

    /// Shows the page whenever there is no document window; it is none. The window owns it.
    void setStartPage(QWidget* page);

    /// Puts a screen into the window, in a frame of its own that is deleted when it closes.
    QMdiSubWindow& addDocumentWindow(QWidget* screen);

    /// Brings the frame of a screen in front of the others.
    void activateDocumentWindow(const QWidget& screen);

    /// Puts a panel below the screens, beside which it can be used; closing hides it.
    QDockWidget& addPanel(QWidget* panel);

    void BeginBusy() override;
    void EndBusy() override;
    void showJob(const QString& path) override;
    void showRecentJobs() override;
    [[nodiscard]] bool HasDocumentWindows() const override;
    bool closeDocumentWindows() override;
    void SetStatus(const QString& text, bool busy) override;

signals:
    /// A job's file was dropped on the window.
    void jobDropped(const QString& path);
    void aboutRequested();
    void guideRequested();
    /// The screen of a toolbar button was asked for: "DatiGenerali", "Variabili" or "Parametri".
    void screenRequested(const QString& key);
    /// The window is about to close for good.
    void closing();

protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void buildHelpMenu();
    void buildToolbar();
    void shadeDocuments();
    void showWorkArea();

    const RecentJobs& m_recentJobs;
    QString m_title;
    FileMenu* m_menuFile;
    widgets::ContextMenu* m_contextMenu;
    StatusBar* m_stato;
    QStackedWidget* m_workArea; ///< the start page or the documents
    QMdiArea* m_documents;
};

} // namespace zelto::shell
