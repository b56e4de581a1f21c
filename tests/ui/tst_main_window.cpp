// SPDX-License-Identifier: GPL-3.0-or-later
// The window itself: start, end, titles, recent entries, panels, dropped files.
#include "support/runner.h"
#include "ui/window_fixture.h"

#include <QCloseEvent>
#include <QDropEvent>
#include <QMdiSubWindow>
#include <QMimeData>
#include <QPrinterInfo>
#include <QProcess>
#include <QSignalSpy>
#include <QTimer>
#include <QUrl>

using namespace Qt::StringLiterals;
using namespace zelto::shell;
using zelto::test::Installation;
using zelto::test::ScriptedUser;
using zelto::test::Session;

namespace {

/// A screen that the user does not want to leave.
class StubbornScreen : public QWidget
{
protected:
    void closeEvent(QCloseEvent* event) override { event->ignore(); }
};

/// Whether the window takes what is dropped.
bool drop(MainWindow& window, const QList<QUrl>& urls)
{
    QMimeData data;
    data.setUrls(urls);
    QDragEnterEvent enter(window.rect().center(), Qt::CopyAction, &data, Qt::LeftButton,
                          Qt::NoModifier);
    QCoreApplication::sendEvent(&window, &enter);
    if (!enter.isAccepted())
        return false;
    QDropEvent event(window.rect().center(), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&window, &event);
    return true;
}

void write(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
}

} // namespace

class TestMainWindow : public QObject
{
    Q_OBJECT

private slots:
    void firstStart()
    {
        Session session;
        QCOMPARE(session.title(), u"Zelto 2011 - v. 5.0.0"_s);
        session.verifyIdle({});
        for (int k = 12; k <= 16; ++k)
            QVERIFY(!session.entry(k).isVisible());
        QVERIFY(session.user.said().isEmpty());
        QStringList captions;
        for (const QAction* entry : session.window().menuFile().actions())
            captions << (entry->isSeparator() ? u"-"_s : entry->text());
        QCOMPARE(captions.join(u'|'),
                 u"&Nuovo ...|&Apri ...|&Duplica ...|&Elimina ...|-|Compattamento archivio|"
                 u"Riparazione archivio|&Ripristina copia ...|-|Imposta stampante ...|-|&1 |&2 |"
                 u"&3 |&4 |-|Uscita"_s);
    }

    /// A screen needs a job: the button asks for one, and shows the screen over it.
    void toolbarScreens_data()
    {
        QTest::addColumn<QString>("caption");
        QTest::addRow("DatiGenerali") << u"Dati generali"_s;
        QTest::addRow("Variabili") << u"Dettaglio variabili"_s;
    }
    void toolbarScreens()
    {
        Session session;
        const QString key = QString::fromLatin1(QTest::currentDataTag());
        QToolButton* button = session.toolbarButton(key);
        QTest::mouseClick(button, Qt::LeftButton);
        QVERIFY(session.user.said().startsWith(u"save: Selezionare codice lavoro"));

        session.user.files << session.installation.newJob(u"A.ZLT"_s);
        QString caption;
        QTimer::singleShot(0, &session.window(), [&caption] {
            QWidget* screen = QApplication::activeModalWidget();
            caption = screen->windowTitle();
            QTest::keyClick(screen, Qt::Key_Escape);
        });
        QTest::mouseClick(button, Qt::LeftButton);
        QTEST(caption, "caption");
        QVERIFY(QApplication::activeModalWidget() == nullptr);
        session.verifyIdle(session.installation.job(u"A.ZLT"_s));
    }

    /// One window, however often it is asked for; while it is open no other job is.
    void parametersWindow()
    {
        Session session;
        session.open();
        QToolButton* button = session.toolbarButton(u"Parametri"_s);
        QTest::mouseClick(button, Qt::LeftButton);
        QTest::mouseClick(button, Qt::LeftButton);
        const QList<QMdiSubWindow*> frames = session.window().findChildren<QMdiSubWindow*>();
        QCOMPARE(frames.size(), 1);
        QCOMPARE(frames.first()->windowTitle(), u"Parametri per millesimi"_s);
        session.verifyIdle(session.installation.job(u"A.ZLT"_s));
        session.choose(u"Apri"_s);
        QVERIFY(session.user.said().startsWith(u"message: Chiudere finestre aperte"));
        QVERIFY(frames.first()->close());
        QTRY_VERIFY(!session.window().HasDocumentWindows());
        QTest::mouseClick(button, Qt::LeftButton);
        QVERIFY(session.window().HasDocumentWindows());
        session.user.files << session.installation.job(u"A.ZLT"_s);
        session.choose(u"Elimina"_s);
        QTRY_VERIFY(!session.window().HasDocumentWindows());
        QCOMPARE(session.installation.jobs(), QStringList());
    }

    /// Answers that need no window come without a display.
    void commandLine_data()
    {
        QTest::addColumn<QString>("platform");
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("says");
        QTest::addRow("help") << u"none"_s << QStringList{u"--help"_s} << 0 << u"Uso: zelto "_s;
        QTest::addRow("version") << u"none"_s << QStringList{u"--version"_s} << 0
                                 << u"zelto 5.0.0\n"_s;
        QTest::addRow("unknown option")
            << u"offscreen"_s << QStringList{u"--tutto"_s} << 1 << u"--tutto: opzione non valida"_s;
    }
    void commandLine()
    {
        QFETCH(QString, platform);
        QFETCH(QStringList, arguments);
        QFETCH(QString, says);
        QProcess program;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"QT_QPA_PLATFORM"_s, platform);
        program.setProcessEnvironment(environment);
        program.setProcessChannelMode(QProcess::MergedChannels);
        program.start(QStringLiteral(PROGRAM), arguments);
        QVERIFY(program.waitForFinished());
        QTEST(program.exitCode(), "status");
        const QString said = QString::fromUtf8(program.readAll());
        QVERIFY2(said.contains(says), qPrintable(said));
    }

    void withoutMasterDatabase()
    {
        const Installation installation;
        const QString master = installation.program(u"Zelto.mdb"_s);
        QVERIFY(QFile::remove(master));
        for (const bool exists : {false, true}) {
            if (exists)
                write(master, "no database");
            ScriptedUser dialogs;
            QVERIFY(!installation.start(dialogs));
            const QString shown = dialogs.said();
            QVERIFY(shown.startsWith(u"error: Zelto non può essere avviato.\n\n"));
            QVERIFY(shown.contains(u"Zelto.mdb"));
        }
    }

    /// What the settings say is shown, what is shown is written back.
    void recentEntries()
    {
        const Installation installation;
        const QString settings = installation.program(u"Zelto.ini"_s);
        write(settings, "[Main]\nFile1 = /a & b/A.ZLT\nFile2 =\nFile3 = /C.ZLT\n");
        Session session(installation);
        QCOMPARE(session.entry(13).text(), u"&1 /a && b/A.ZLT"_s);
        QCOMPARE(session.entry(15).text(), u"&3 /C.ZLT"_s);
        for (int k = 12; k <= 16; ++k)
            QCOMPARE(session.entry(k).isVisible(), k == 12 || k == 13 || k == 15);

        const QString job = installation.newJob(u"D.ZLT"_s);
        session.application().open(job);
        session.choose(u"Uscita"_s);
        QVERIFY(!session.window().isVisible());
        const zelto::store::Settings written(settings);
        const QStringList expected{job, u"/a & b/A.ZLT"_s, {}, u"/C.ZLT"_s};
        for (int n = 1; n <= 4; ++n)
            QCOMPARE(written.LeggiIni(u"Main"_s, u"File%1"_s.arg(n)), expected.at(n - 1));
    }

    void placeIsRemembered()
    {
        const Installation installation;
        {
            Session session(installation);
            session.window().setGeometry(40, 50, 640, 480);
            session.window().close();
        }
        Session session(installation);
        QCOMPARE(session.window().geometry(), QRect(40, 50, 640, 480));
    }

    /// A maximised document window leaves the title alone; one that stays open keeps the program
    /// running.
    void documentWindows()
    {
        Session session;
        const QString job = session.open();
        auto* screen = new StubbornScreen;
        screen->setWindowTitle(u"Parametri"_s);
        QMdiSubWindow& frame = session.window().addDocumentWindow(screen);
        frame.showMaximized();
        QCoreApplication::processEvents();
        QVERIFY(session.window().HasDocumentWindows());
        session.verifyIdle(job);

        session.choose(u"Uscita"_s);
        QVERIFY(session.window().isVisible());
        session.user.files = {job};
        session.choose(u"Elimina"_s);
        QVERIFY(QFile::exists(job));
        session.verifyIdle(job);
        delete screen;
    }

    void busyPointerNests()
    {
        Session session;
        MainWindow& window = session.window();
        window.BeginBusy();
        window.BeginBusy();
        window.EndBusy();
        QCOMPARE(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
        window.EndBusy();
        QVERIFY(QApplication::overrideCursor() == nullptr);
    }

    void hintsKeepThePanels()
    {
        Session session;
        session.open();
        QMenuBar* bar = session.window().menuBar();
        QTest::mouseClick(bar, Qt::LeftButton, {},
                          bar->actionGeometry(bar->actions().constFirst()).center());
        QTest::keyClick(&session.window().menuFile(), Qt::Key_Down);
        QVERIFY(!session.panel(2).isEmpty());
        QVERIFY(session.window().findChild<QLabel*>(u"Stato3"_s)->isVisible());
        QTest::keyClick(&session.window().menuFile(), Qt::Key_Escape);
    }

    void dropsOfFiles()
    {
        Session session;
        const QString job = session.installation.newJob(u"verdi.zlt"_s);
        const QUrl url = QUrl::fromLocalFile(job);
        QVERIFY(!drop(session.window(), {url, url}));
        QVERIFY(!drop(session.window(), {QUrl::fromLocalFile(u"/etc/passwd"_s)}));
        QVERIFY(!drop(session.window(), {QUrl(u"https://example.org/a.zlt"_s)}));
        QVERIFY(drop(session.window(), {url}));
        QTRY_COMPARE(session.application().jobFiles().JobPath(), job);
        session.verifyIdle(job);

        QVERIFY(
            drop(session.window(), {QUrl::fromLocalFile(session.installation.job(u"no.zlt"_s))}));
        QCoreApplication::processEvents();
        QCOMPARE(session.user.said(), u"error: Archivio < %1 > non trovato"_s.arg(
                                          session.installation.job(u"no.zlt"_s)));
        session.verifyIdle(job);
    }

    void otherDialogs()
    {
        Session session;
        session.choose(u"Imposta stampante"_s);
        QCOMPARE(session.user.said(), QPrinterInfo::availablePrinterNames().isEmpty()
                                          ? u"message: Nessuna stampante installata"_s
                                          : u"printer"_s);
        emit session.window().aboutRequested();
        QCOMPARE(session.user.said(), u"about"_s);
    }

    void shortcuts()
    {
        Session session;
        session.window().activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&session.window()));
        QTest::keySequence(&session.window(), QKeySequence(u"Ctrl+N"_s));
        QVERIFY(session.user.said().startsWith(u"save: Indicare codice lavoro"));
        QTest::keySequence(&session.window(), QKeySequence(u"Ctrl+O"_s));
        QVERIFY(session.user.said().startsWith(u"save: Selezionare codice lavoro"));
        QTest::keySequence(&session.window(), QKeySequence(u"Ctrl+Q"_s));
        QVERIFY(!session.window().isVisible());
    }
};

ZELTO_TEST(TestMainWindow)
#include "tst_main_window.moc"
