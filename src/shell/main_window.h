// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/main_window_services.h"

#include <QMainWindow>

class QMdiArea;
class QMdiSubWindow;

namespace zelto::store {
class RecentJobs;
} // namespace zelto::store

namespace zelto::widgets {
class ContextMenu;
} // namespace zelto::widgets

namespace zelto::shell {

class Dialogs;
class FileMenu;
class StatusBar;

/// The application's frame: menus, toolbar, status bar, document windows, and what the folders
/// below need of the user. What the user asks for leaves it as signals.
class MainWindow : public QMainWindow, public store::MainWindowServices
{
    Q_OBJECT

public:
    /// Both outlive the window.
    MainWindow(const store::RecentJobs& recentJobs, Dialogs& dialogs);

    [[nodiscard]] FileMenu& menuFile() { return *m_menuFile; }
    /// The context menu that the grids share.
    [[nodiscard]] widgets::ContextMenu& mnuDxMouse() { return *m_contextMenu; }

    /// The window's title, whatever document windows make of it.
    void setTitle(const QString& title);

    /// Puts a screen into the window, in a frame of its own that is deleted when it closes.
    QMdiSubWindow& addDocumentWindow(QWidget* screen);

    /// Brings the frame of a screen in front of the others.
    void activateDocumentWindow(const QWidget& screen);

    QString ShowFileDialog(const store::FileDialogRequest& request) override;
    std::optional<store::JobCopy> chooseCopy(const store::JobCopies& copies,
                                             const QString& job) override;
    bool offerConversion(const QString& text) override;
    bool askYesNo(const QString& question) override;
    bool confirmLoss(const QString& question) override;
    std::optional<int> choose(const QString& question, const QStringList& choices) override;
    bool moveToTrash(const QString& path) override;
    void BeginBusy() override;
    void EndBusy() override;
    void showJob(const QString& path) override;
    void showRecentJobs() override;
    [[nodiscard]] bool HasDocumentWindows() const override;
    bool closeDocumentWindows() override;
    void SetStatus(const QString& text, bool busy) override;
    void showMessage(const QString& text) override;
    void showError(const QString& text) override;
    void ReportError(const std::exception& error) override;

signals:
    /// A job's file was dropped on the window.
    void jobDropped(const QString& path);
    void aboutRequested();
    void guideRequested();
    /// The screen of a toolbar key was asked for.
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
    /// Messages stand over a modal screen, if there is one.
    [[nodiscard]] QWidget* frontWindow();
    void shadeDocuments();

    const store::RecentJobs& m_recentJobs;
    Dialogs& m_dialogs;
    QString m_title;
    FileMenu* m_menuFile;
    widgets::ContextMenu* m_contextMenu;
    StatusBar* m_stato;
    QMdiArea* m_documents;
};

} // namespace zelto::shell
