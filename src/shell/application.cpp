// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/application.h"

#include "calc/job_loader.h"
#include "coefficients/ui/dati_generali.h"
#include "coefficients/ui/variabili.h"
#include "register/ui/controllo.h"
#include "register/ui/parametri.h"
#include "reports/on_paper.h"
#include "reports/ui/millesimi.h"
#include "reports/ui/riparto.h"
#include "shell/file_menu.h"
#include "shell/guide_chapters.h"
#include "shell/program_launcher.h"
#include "shell/start_page.h"
#include "store/application_folder.h"
#include "store/master_database.h"
#include "widgets/dialogs.h"

#include <QApplication>
#include <QDockWidget>
#include <QKeyEvent>
#include <QMdiSubWindow>
#include <QScreen>

namespace zelto::shell {

Application::Application(const store::ApplicationFolder& folder, widgets::Dialogs& dialogs)
    : m_settings(folder.settingsPath()),
      m_groupDescriptions(store::groupDescriptions(folder.masterPath())), m_dialogs(dialogs),
      m_window(m_recentJobs), m_copies(folder.copiesFolder()),
      m_jobFiles(m_window, dialogs, m_recentJobs, m_copies,
                 [](store::Database& lavoro) { (void)calc::CaricaLavoro(lavoro); }),
      m_outputFolder(folder.path()), m_engine(print::TempFolder(folder.path()), m_separators)
{
    m_window.setTitle(QStringLiteral("Zelto 2011 - v. " ZELTO_VERSION));
    m_recentJobs.load(m_settings);
    fillFileMenu();
    buildStartPage(folder.examplePath());
    m_window.showRecentJobs();
    connectWindow();
}

std::unique_ptr<Application> Application::start(const QString& programFolder,
                                                const QString& userFolder,
                                                widgets::Dialogs& dialogs)
{
    try {
        store::ApplicationFolder folder(programFolder, userFolder);
        folder.provideMaster();
        auto application = std::make_unique<Application>(folder, dialogs);
        if (!folder.remarks().isEmpty())
            dialogs.showMessage(folder.remarks());
        return application;
    } catch (const std::exception& error) {
        dialogs.showError(
            u"Zelto non può essere avviato.\n\n%1"_s.arg(QString::fromUtf8(error.what())));
        return nullptr;
    }
}

void Application::fillFileMenu()
{
    const auto job = [this](void (JobFiles::*operation)()) {
        return [this, operation] { (m_jobFiles.*operation)(); };
    };
    const auto recent = [this](int index) -> FileEntry {
        const auto place = static_cast<std::size_t>(index - FileMenu::FirstRecent);
        return {index, {}, u"Apre di nuovo questo lavoro"_s, [this, place] {
                    m_jobFiles.LeggiRecent(place);
                }};
    };
    const std::vector<FileEntry> entries{
        {3, u"&Nuovo ..."_s, u"Crea un nuovo lavoro e lo apre"_s, job(&JobFiles::NuovoLavoro),
         u"nuovo"_s, u"Ctrl+N"_s},
        {4, u"&Apri ..."_s, u"Apre un lavoro"_s, job(&JobFiles::ApriLavoro), u"apri"_s,
         u"Ctrl+O"_s},
        {5, u"&Duplica ..."_s, u"Copia un lavoro con un altro nome e apre la copia"_s,
         job(&JobFiles::DuplicaLavoro), u"duplica"_s},
        {6, u"&Elimina ..."_s, u"Mette nel cestino il file di un lavoro"_s,
         job(&JobFiles::EliminaLavoro), u"elimina"_s},
        {20, u"Nuovo da &modello ..."_s,
         u"Crea un nuovo lavoro con gli elenchi e i testi di un altro e lo apre"_s,
         job(&JobFiles::NuovoDaModello), u"nuovo"_s},
        {7},
        {8, u"Compattamento archivio"_s,
         u"Libera lo spazio inutilizzato di un archivio; lo stato di prima resta accanto come "
         u".BAK"_s,
         job(&JobFiles::CompattaArchivio), u"compatta"_s},
        {9, u"Riparazione archivio"_s,
         u"Recupera quanto è ancora leggibile di un archivio danneggiato"_s,
         job(&JobFiles::RiparaArchivio), u"ripara"_s},
        {19, u"&Ripristina copia ..."_s,
         u"Fa un nuovo lavoro di una copia di sicurezza conservata da Zelto"_s,
         job(&JobFiles::RipristinaCopia), u"ripristina"_s},
        {10},
        {11, u"Imposta stampante ..."_s, u"Sceglie stampante, carta e orientamento"_s,
         [this] { setUpPrinter(); }, u"stampante"_s},
        {12},
        recent(13),
        recent(14),
        recent(15),
        recent(16),
        {17},
        {18, u"Uscita"_s, u"Chiude Zelto"_s, [this] { m_window.close(); }, u"uscita"_s,
         u"Ctrl+Q"_s}};
    for (const FileEntry& entry : entries)
        connect(&m_window.menuFile().add(entry), &QAction::triggered, this,
                [this, action = entry.action] { reportingErrors(action); });
}

void Application::connectWindow()
{
    // Later, so that the program dragged from does not wait for our dialogs.
    connect(&m_window, &MainWindow::jobDropped, this, &Application::open, Qt::QueuedConnection);
    connect(&m_window, &MainWindow::screenRequested, this,
            [this](const QString& key) { reportingErrors([this, &key] { showScreen(key); }); });
    connect(&m_window, &MainWindow::aboutRequested, this, [this] { m_dialogs.showAbout(); });
    connect(&m_window, &MainWindow::guideRequested, this,
            [this] { showGuide(QApplication::focusWidget()); });
    QCoreApplication::instance()->installEventFilter(this);
    connect(&m_window, &MainWindow::closing, this, &Application::shutDown);
}

/// F1 in any window, modal ones and menus included.
bool Application::eventFilter(QObject* watched, QEvent* event)
{
    const auto* const asking = qobject_cast<QWidget*>(watched);
    if (asking == nullptr || event->type() != QEvent::KeyPress ||
        static_cast<QKeyEvent*>(event)->key() != Qt::Key_F1)
        return QObject::eventFilter(watched, event);
    while (QWidget* menu = QApplication::activePopupWidget())
        menu->close();
    showGuide(asking);
    return true;
}

/// Belongs to the modal screen, if there is one, which would keep it from being used otherwise.
void Application::showGuide(const QWidget* asking)
{
    if (m_guide && (asking == nullptr || asking->window() == m_guide))
        return;
    showChapter(guideChapter(asking != nullptr ? asking : &m_window));
}

void Application::showChapter(const QString& heading)
{
    QWidget* modal = QApplication::activeModalWidget();
    QWidget* parent = modal != nullptr ? modal : &m_window;
    if (!m_guide || m_guide->parentWidget() != parent) {
        delete m_guide;
        m_guide = new GuideWindow(parent);
    }
    m_guide->show();
    m_guide->showChapter(heading);
    m_guide->raise();
    m_guide->activateWindow();
}

void Application::show()
{
    constexpr QSize FirstSize(1000, 700);
    m_window.resize(FirstSize.boundedTo(m_window.screen()->availableSize()));
    m_window.restoreGeometry(
        QByteArray::fromBase64(m_settings.LeggiIni(u"Main"_s, u"Finestra"_s).toLatin1()));
    m_window.show();
    QCoreApplication::processEvents();
}

void Application::open(const QString& path)
{
    reportingErrors([this, &path] { m_jobFiles.openGiven(path); });
}

void Application::showScreen(const QString& key)
{
    OpenJob& job = m_jobFiles.job();
    if (!job.isOpen())
        m_jobFiles.ApriLavoro();
    if (!job.isOpen())
        return;
    store::Database& lavoro = job.JobDatabase();
    if (key == u"Variabili")
        showPlace(lavoro, {.scheda = calc::Scheda::Elenco, .elenco = 1, .riga = 1});
    else if (key == u"DatiGenerali")
        showPlace(lavoro, {.scheda = calc::Scheda::Generale});
    else
        showParametri(lavoro);
}

/// The screen on which the place is, at that place.
void Application::showPlace(store::Database& lavoro, const calc::Posto& posto)
{
    using calc::Scheda;
    if (posto.scheda == Scheda::Unita || posto.scheda == Scheda::Vani) {
        m_window.activateWindow(); // the panel may float
        m_window.activateDocumentWindow(*m_parametri);
        m_parametri->goTo(posto);
    } else if (posto.scheda == Scheda::Elenco) {
        coefficients::Variabili screen(lavoro, m_groupDescriptions, m_dialogs, m_settings,
                                       &m_window);
        screen.goTo(posto);
        if (m_parametri)
            connect(&screen, &coefficients::Variabili::roomsRenamed, m_parametri,
                    &registro::Parametri::followTexts);
        showModal(screen);
    } else {
        coefficients::DatiGenerali screen(lavoro, m_dialogs, m_settings, &m_window);
        screen.goTo(posto);
        showModal(screen);
    }
}

/// What it stores may change what the parameters screen says of its units.
void Application::showModal(widgets::EditDialog& screen)
{
    if (m_parametri && !m_parametri->finishTyping())
        return;
    if (m_parametri)
        connect(&screen, &widgets::EditDialog::stored, m_parametri,
                &registro::Parametri::refreshLists);
    screen.exec();
}

void Application::showParametri(store::Database& lavoro)
{
    // One that was closed is there until it is deleted.
    if (m_parametri && m_parametri->isVisible()) {
        m_window.activateDocumentWindow(*m_parametri);
        return;
    }
    m_parametri = new registro::Parametri({.lavoro = lavoro,
                                           .settings = m_settings,
                                           .dialogs = m_dialogs,
                                           .menu = m_window.mnuDxMouse(),
                                           .sullaCarta = reports::sullaCarta()});
    connectParametri(lavoro);
    m_window.addDocumentWindow(m_parametri).showMaximized();
}

void Application::connectParametri(store::Database& lavoro)
{
    using registro::Parametri;
    connect(m_parametri, &Parametri::calculatorRequested, this,
            [] { ApriConProgramma(u"calc.exe"_s); });
    connect(m_parametri, &Parametri::millesimiRequested, this, [this, &lavoro] {
        reportingErrors([&] { showPrintScreen<reports::Millesimi>(lavoro); });
    });
    connect(m_parametri, &Parametri::ripartoRequested, this, [this, &lavoro] {
        reportingErrors([&] { showPrintScreen<reports::Riparto>(lavoro); });
    });
    connect(m_parametri, &Parametri::controlloRequested, this,
            [this, &lavoro] { showControllo(lavoro); });
}

void Application::buildControllo(store::Database& lavoro)
{
    using registro::Controllo;
    auto* controllo = new Controllo(m_parametri->remarks());
    m_controllo = &m_window.addPanel(controllo);
    // Those of the screen count in the screen alone.
    m_controllo->addActions(m_parametri->commands());
    connect(controllo, &Controllo::left, this, [this] {
        returnToParametri(); // while it is known where that was
        m_controllo->hide();
    });
    connect(controllo, &Controllo::chosen, this, [this, &lavoro](const calc::Posto& posto) {
        reportingErrors([&] { showPlace(lavoro, posto); });
    });
    connect(m_parametri, &QObject::destroyed, m_controllo,
            [panel = m_controllo.data()] { delete panel; });
}

/// From the panel the same key goes back to the screen.
void Application::showControllo(store::Database& lavoro)
{
    if (!m_controllo)
        buildControllo(lavoro);
    else if (m_controllo->isAncestorOf(QApplication::focusWidget()))
        return returnToParametri();
    m_controllo->show();
    m_controllo->raise();
    m_controllo->activateWindow();
    m_controllo->findChild<registro::Controllo*>()->takeFocus();
}

void Application::returnToParametri()
{
    m_window.activateWindow(); // the panel may float
    if (m_parametri && m_parametri->focusWidget() != nullptr)
        m_parametri->focusWidget()->setFocus();
}

template <typename Screen>
void Application::showPrintScreen(store::Database& lavoro)
{
    Screen screen({.lavoro = lavoro,
                   .jobPath = m_jobFiles.JobPath(),
                   .outputFolder = m_outputFolder,
                   .print = {.engine = m_engine,
                             .printers = m_printers,
                             .window = m_window,
                             .dialogs = m_dialogs,
                             .settings = m_settings}},
                  &m_window);
    // Once the screen is closed.
    connect(
        &screen, &Screen::controlloRequested, this, [this, &lavoro] { showControllo(lavoro); },
        Qt::QueuedConnection);
    screen.exec();
    m_window.activateWindow(); // not every desktop gives the focus back to it
}

void Application::setUpPrinter()
{
    if (print::PrinterDesk::isInstalled())
        m_dialogs.setUpPrinter(m_printers.printer());
    else
        m_dialogs.showMessage(u"Nessuna stampante installata"_s);
}

/// Nothing that goes wrong in an action ends the program.
void Application::reportingErrors(const std::function<void()>& action)
{
    m_startPage->pause(); // its files are to be left alone meanwhile
    try {
        action();
    } catch (const std::exception& error) {
        m_window.SetStatus({}, false);
        m_dialogs.ReportError(error);
    }
    refreshStartPage();
}

void Application::shutDown()
{
    m_recentJobs.save();
    m_settings.ScriviIni(u"Main"_s, u"Finestra"_s,
                         QString::fromLatin1(m_window.saveGeometry().toBase64()));
    m_jobFiles.chiudiLavoro();
}

} // namespace zelto::shell
