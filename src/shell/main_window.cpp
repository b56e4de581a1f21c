// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/main_window.h"

#include "shell/file_menu.h"
#include "shell/status_bar.h"
#include "widgets/context_menu.h"
#include "widgets/icons.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDockWidget>
#include <QDropEvent>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QMimeData>
#include <QStackedWidget>
#include <QStatusTipEvent>
#include <QToolBar>
#include <QUrl>

#include <algorithm>

namespace zelto::shell {

namespace {

/// The path of the one job that is dragged; empty when it is anything else.
QString draggedJob(const QMimeData* data)
{
    const QList<QUrl> urls = data->urls();
    const QString path = urls.size() == 1 ? urls.first().toLocalFile() : QString();
    return path.endsWith(u".zlt", Qt::CaseInsensitive) ? path : QString();
}

} // namespace

MainWindow::MainWindow(const RecentJobs& recentJobs)
    : m_recentJobs(recentJobs), m_menuFile(new FileMenu(this)),
      m_contextMenu(new widgets::ContextMenu(this)), m_stato(new StatusBar(this)),
      m_workArea(new QStackedWidget(this)), m_documents(new QMdiArea)
{
    setObjectName(u"Main"_s);
    setWindowIcon(widgets::icon(u"zelto"_s));
    menuBar()->addMenu(m_menuFile);
    buildHelpMenu();
    buildToolbar();
    setStatusBar(m_stato);
    m_documents->setAccessibleName(u"Finestre del lavoro"_s);
    m_workArea->addWidget(m_documents);
    setCentralWidget(m_workArea);
    shadeDocuments();
    setAcceptDrops(true);
}

void MainWindow::buildHelpMenu()
{
    QMenu* help = menuBar()->addMenu(u"&?"_s);
    // The key itself is Application's: it counts in every window.
    QAction* guide = help->addAction(u"&Guida\tF1"_s, this, &MainWindow::guideRequested);
    guide->setStatusTip(u"La guida di Zelto, al capitolo della finestra in uso"_s);
    QAction* about = help->addAction(widgets::icon(u"zelto"_s), u"&Informazioni su Zelto"_s, this,
                                     &MainWindow::aboutRequested);
    about->setStatusTip(u"Versione, licenza e librerie"_s);
    about->setMenuRole(QAction::NoRole);
}

void MainWindow::buildToolbar()
{
    auto* bar = addToolBar(u"Barra degli strumenti"_s);
    bar->setObjectName(u"Toolbar1"_s);
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    // Moved away or hidden, it would be hard to find again.
    bar->setMovable(false);
    bar->toggleViewAction()->setVisible(false);
    const auto add = [&](const QString& key, const QString& caption, const QString& hint,
                         const QString& iconName, const QString& shortcut) {
        QAction* button = bar->addAction(widgets::icon(iconName), caption, this,
                                         [this, key] { emit screenRequested(key); });
        button->setObjectName(key);
        button->setShortcut(QKeySequence(shortcut));
        button->setToolTip(u"%1 (%2)"_s.arg(hint, shortcut));
        button->setStatusTip(button->toolTip());
    };
    add(u"DatiGenerali"_s, u"Dati generali"_s, u"Dati generali e relazione del lavoro"_s,
        u"dati_generali"_s, u"Ctrl+1"_s);
    add(u"Variabili"_s, u"Variabili"_s, u"Coefficienti del lavoro"_s, u"variabili"_s, u"Ctrl+2"_s);
    add(u"Parametri"_s, u"Parametri"_s, u"Unità immobiliari e vani del lavoro"_s, u"parametri"_s,
        u"Ctrl+3"_s);
}

/// A little darker than the window, in light and dark themes; left alone the area keeps the colour
/// of the theme that it was made in.
void MainWindow::shadeDocuments()
{
    constexpr int Darker = 110;
    m_documents->setBackground(palette().window().color().darker(Darker));
}

void MainWindow::setTitle(const QString& title)
{
    m_title = title;
    setWindowTitle(title);
}

void MainWindow::setStartPage(QWidget* page)
{
    m_workArea->insertWidget(0, page);
    showWorkArea();
}

void MainWindow::showWorkArea()
{
    m_workArea->setCurrentIndex(
        m_documents->subWindowList().isEmpty() ? 0 : m_workArea->indexOf(m_documents));
}

QMdiSubWindow& MainWindow::addDocumentWindow(QWidget* screen)
{
    QMdiSubWindow* frame = m_documents->addSubWindow(screen);
    frame->setAttribute(Qt::WA_DeleteOnClose);
    showWorkArea();
    // Later: it is still in the list while it goes.
    connect(frame, &QObject::destroyed, this, &MainWindow::showWorkArea, Qt::QueuedConnection);
    screen->show();
    return *frame;
}

void MainWindow::activateDocumentWindow(const QWidget& screen)
{
    for (QMdiSubWindow* frame : m_documents->subWindowList())
        if (frame->widget() == &screen)
            m_documents->setActiveSubWindow(frame);
}

QDockWidget& MainWindow::addPanel(QWidget* panel)
{
    constexpr int Height = 220;
    auto* dock = new QDockWidget(panel->windowTitle(), this);
    dock->setObjectName(panel->objectName() + u"Pannello"_s);
    dock->setWidget(panel);
    addDockWidget(Qt::BottomDockWidgetArea, dock);
    resizeDocks({dock}, {Height}, Qt::Vertical);
    return *dock;
}

// Other windows get to paint themselves; what the user types or clicks waits for the end of the
// operation, which it could disturb.

void MainWindow::BeginBusy()
{
    QApplication::setOverrideCursor(Qt::WaitCursor);
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void MainWindow::EndBusy()
{
    QApplication::restoreOverrideCursor();
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void MainWindow::showJob(const QString& path)
{
    const QString title = u"Zelto 2009"_s;
    m_stato->showJob(path);
    setTitle(path.isEmpty() ? title : title + u" - "_s + path);
}

void MainWindow::showRecentJobs()
{
    m_menuFile->showRecentJobs(m_recentJobs);
}

bool MainWindow::HasDocumentWindows() const
{
    return !m_documents->subWindowList().isEmpty() || QApplication::activeModalWidget() != nullptr;
}

bool MainWindow::closeDocumentWindows()
{
    return std::ranges::all_of(m_documents->subWindowList(),
                               [](QMdiSubWindow* window) { return window->close(); });
}

void MainWindow::SetStatus(const QString& text, bool busy)
{
    m_stato->SetStatus(text, busy);
}

bool MainWindow::event(QEvent* event)
{
    if (event->type() == QEvent::StatusTip) {
        // The status bar's own way of showing hints would hide its panels.
        m_stato->showHint(static_cast<QStatusTipEvent*>(event)->tip());
        return true;
    }
    // A document window that is maximised writes its own title behind ours.
    if (event->type() == QEvent::WindowTitleChange && windowTitle() != m_title)
        setWindowTitle(m_title);
    if (event->type() == QEvent::PaletteChange)
        shadeDocuments();
    return QMainWindow::event(event);
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (!closeDocumentWindows()) {
        event->ignore();
        return;
    }
    emit closing();
    event->accept();
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event)
{
    if (!draggedJob(event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event)
{
    const QString path = draggedJob(event->mimeData());
    event->acceptProposedAction();
    emit jobDropped(path);
}

} // namespace zelto::shell
