// SPDX-License-Identifier: GPL-3.0-or-later
// The window itself: start, end, titles, recent entries, panels, dropped files.
#include "support/accessible_names.h"
#include "support/columns.h"
#include "support/runner.h"
#include "ui/window_fixture.h"

#include <QCloseEvent>
#include <QDropEvent>
#include <QMdiSubWindow>
#include <QMimeData>
#include <QPrinterInfo>
#include <QProcess>
#include <QTimer>
#include <QUrl>

using namespace zelto::shell;
using namespace zelto::test;

class TestMainWindow : public QObject
{
    Q_OBJECT

    /// Whether the window takes what is dropped.
    static bool drop(MainWindow& window, const QList<QUrl>& urls)
    {
        QMimeData data;
        data.setUrls(urls);
        QDragEnterEvent enter(window.rect().center(), Qt::CopyAction, &data, Qt::LeftButton,
                              Qt::NoModifier);
        QCoreApplication::sendEvent(&window, &enter);
        if (!enter.isAccepted())
            return false;
        QDropEvent event(window.rect().center(), Qt::CopyAction, &data, Qt::LeftButton,
                         Qt::NoModifier);
        QCoreApplication::sendEvent(&window, &event);
        return true;
    }

private slots:
    void firstStart()
    {
        Session session;
        QCOMPARE(session.window().windowTitle(), u"Zelto 2011 - v. 5.0.0"_s);
        session.verifyIdle({});
        for (int k = 12; k <= 16; ++k)
            QVERIFY(!session.entry(k).isVisible());
        QVERIFY(session.user.said().isEmpty());
        QStringList captions;
        for (const QAction* entry : session.window().menuFile().actions())
            captions << (entry->isSeparator() ? u"-"_s : entry->text());
        QCOMPARE(captions.join(u'|'),
                 u"&Nuovo ...|&Apri ...|&Duplica ...|&Elimina ...|Nuovo da &modello ...|-|"
                 u"Compattamento archivio|Riparazione archivio|&Ripristina copia ...|-|"
                 u"Imposta stampante ...|-|&1 |&2 |&3 |&4 |-|Uscita"_s);
    }

    void busy()
    {
        Session session;
        MainWindow& window = session.window();
        window.SetStatus(u"Calcolo"_s, false);
        QCOMPARE(session.panel(1), u"Calcolo"_s);
        window.SetStatus(u"Calcolo"_s, true);
        QCOMPARE(session.panel(1), u"Calcolo, Prego attendere..."_s);
        window.SetStatus({}, true);
        window.BeginBusy();
        window.BeginBusy();
        window.EndBusy();
        QCOMPARE(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
        window.EndBusy();
        session.verifyIdle({});
    }

    /// A screen needs a job: the button asks for one, and shows the screen over it.
    void toolbarScreens()
    {
        for (const auto& [key, caption] : {std::pair{u"DatiGenerali"_s, u"Dati generali"_s},
                                           std::pair{u"Variabili"_s, u"Dettaglio variabili"_s}}) {
            Session session;
            const auto click = [&, button = session.toolbarButton(key)] {
                QTest::mouseClick(button, Qt::LeftButton);
            };
            QVERIFY(session.user.hears(click).startsWith(u"save: Selezionare codice lavoro"));

            QString shown;
            QTimer::singleShot(0, &session.window(), [&shown] {
                QWidget* screen = QApplication::activeModalWidget();
                shown = screen->windowTitle();
                QTest::keyClick(screen, Qt::Key_Escape);
            });
            session.user.hears(click, {session.installation.newJob(u"A.ZLT"_s)});
            QCOMPARE(shown, caption);
            QVERIFY(QApplication::activeModalWidget() == nullptr);
            session.verifyIdle(session.installation.job(u"A.ZLT"_s));
        }
    }

    /// Every entry of the File menu; tst_job_files has the rest. The answer to the file dialog has
    /// "~" for the folder of jobs.
    void fileMenu_data()
    {
        const auto row = columns<QString, QString, QString>("answer", "said", "open");
        row("Nuovo", u"~/nuovo"_s, u"save: Indicare codice lavoro"_s, u"~/nuovo.ZLT"_s);
        row("Apri", u"~/rotto.zlt"_s, u"\nreport: 3343"_s, {});
        row("Duplica", u"~/C"_s, u"save: Selezionare Nuovo Nome del Lavoro"_s, u"~/C.ZLT"_s);
        row("Elimina", u"~/A.ZLT"_s, u"save: Selezionare Lavoro da Eliminare"_s, {});
        row("Nuovo da modello", u"~/B.ZLT"_s, u"save: Indicare codice lavoro"_s, u"~/A.ZLT"_s);
        row("Compattamento", u"~/rotto.zlt"_s, u"report: 3343"_s, u"~/A.ZLT"_s);
        row("Riparazione", u"~/A.ZLT"_s, u"message: Il file «~/A.ZLT» era integro"_s, u"~/A.ZLT"_s);
        row("Ripristina copia", u"~/c"_s, u"copies: ~/A.ZLT ~/B.ZLT"_s, u"~/c.ZLT"_s);
        row("2", {}, {}, u"~/B.ZLT"_s);
    }
    void fileMenu()
    {
        QFETCH(QString, answer);
        QFETCH(QString, said);
        QFETCH(QString, open);
        const Installation installation;
        const QString folder = installation.job({}).chopped(1);
        writeBytes(installation.job(u"rotto.zlt"_s), "no database");
        Session session(installation);
        session.application().open(installation.newJob(u"B.ZLT"_s));
        session.application().open(installation.newJob(u"A.ZLT"_s));

        session.user.files = {answer.replace(u"~"_s, folder)};
        session.choose(QString::fromLatin1(QTest::currentDataTag()));
        const QString conversation = session.user.said().replace(folder, u"~"_s);
        QVERIFY2(conversation.contains(said), qPrintable(conversation));
        session.verifyIdle(open.replace(u"~"_s, folder));
        if (!open.isEmpty())
            QCOMPARE(session.entry(13).text(), u"&1 "_s + open);
    }

    /// One window, however often it is asked for; while it is open no other job is.
    void parametersWindow()
    {
        Session session;
        session.open();
        QToolButton* button = session.toolbarButton(u"Parametri"_s);
        button->click();
        button->click();
        const QList<QMdiSubWindow*> frames = session.window().findChildren<QMdiSubWindow*>();
        QCOMPARE(frames.size(), 1);
        QCOMPARE(frames.first()->windowTitle(), u"Parametri per millesimi"_s);
        session.verifyIdle(session.installation.job(u"A.ZLT"_s));
        session.choose(u"Apri"_s);
        QVERIFY(session.user.said().startsWith(u"message: Chiudere finestre aperte"));
        QVERIFY(frames.first()->close());
        QTRY_VERIFY(!session.window().HasDocumentWindows());
        button->click();
        QVERIFY(session.window().HasDocumentWindows());
        session.user.files << session.installation.job(u"A.ZLT"_s);
        session.choose(u"Elimina"_s);
        QTRY_VERIFY(!session.window().HasDocumentWindows());
        QCOMPARE(session.installation.jobs(), QStringList());
    }

    /// Answers that need no window come without a display.
    void commandLine()
    {
        const auto ends = [](const QString& platform, const QString& argument) {
            QProcess program;
            program.setProcessChannelMode(QProcess::MergedChannels);
            program.start(u"env"_s,
                          {u"QT_QPA_PLATFORM="_s + platform, QStringLiteral(PROGRAM), argument});
            program.waitForFinished();
            return QString::number(program.exitCode()) + u' ' +
                   QString::fromUtf8(program.readAll());
        };
        QVERIFY(ends(u"none"_s, u"--help"_s).startsWith(u"0 Uso: zelto "));
        QCOMPARE(ends(u"none"_s, u"--version"_s), u"0 zelto 5.0.0\n"_s);
        const QString refusal = ends(u"offscreen"_s, u"--tutto"_s);
        QVERIFY2(refusal.startsWith(u"1 ") && refusal.contains(u"--tutto: opzione non valida"),
                 qPrintable(refusal));
    }

    void withoutMasterDatabase()
    {
        const Installation installation;
        const QString master = installation.program(u"Zelto.mdb"_s);
        QVERIFY(QFile::remove(master));
        for (const bool exists : {false, true}) {
            if (exists)
                writeBytes(master, "no database");
            ScriptedUser user;
            QVERIFY(!installation.start(user));
            const QString said = user.said();
            QVERIFY(said.startsWith(u"error: Zelto non può essere avviato.\n\n"));
            QVERIFY(said.contains(u"Zelto.mdb"));
        }
    }

    /// What the settings say is shown, what is shown is written back.
    void recentEntries()
    {
        const Installation installation;
        const QString settings = installation.program(u"Zelto.ini"_s);
        writeBytes(settings, "[Main]\nFile1 = /a & b/A.ZLT\nFile2 =\nFile3 = /C.ZLT\n");
        Session session(installation);
        QCOMPARE(session.entry(13).text(), u"&1 /a && b/A.ZLT"_s);
        QCOMPARE(session.entry(15).text(), u"&3 /C.ZLT"_s);
        for (int k = 12; k <= 16; ++k)
            QCOMPARE(session.entry(k).isVisible(), k == 12 || k == 13 || k == 15);

        const QString job = installation.newJob(u"D.ZLT"_s);
        session.application().open(job);
        const zelto::store::Settings written(settings);
        const QStringList expected{job, u"/a & b/A.ZLT"_s, {}, u"/C.ZLT"_s};
        for (int n = 1; n <= 4; ++n)
            QCOMPARE(written.LeggiIni(u"Main"_s, u"File%1"_s.arg(n)), expected.at(n - 1));
        session.choose(u"Uscita"_s);
        QVERIFY(!session.window().isVisible());
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
        struct StubbornScreen : QWidget
        {
            void closeEvent(QCloseEvent* event) override { event->ignore(); }
        };
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

    void hintsKeepThePanels()
    {
        Session session;
        session.open();
        QMenu& menu = session.openFileMenu();
        QTest::keyClick(&menu, Qt::Key_Down);
        QVERIFY(!session.panel(2).isEmpty());
        QVERIFY(session.window().findChild<QLabel*>(u"Stato3"_s)->isVisible());
        QTest::keyClick(&menu, Qt::Key_Escape);
    }

    /// With a screen inside and without.
    void controlsAreNamed()
    {
        Session session;
        QCOMPARE(namelessControls(session.window()), QStringList());
        session.open();
        QTest::mouseClick(session.toolbarButton(u"Parametri"_s), Qt::LeftButton);
        QCOMPARE(namelessControls(session.window()), QStringList());
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
        const auto pressing = [&](const QString& keys) {
            QTest::keySequence(&session.window(), QKeySequence(keys));
            return session.user.said();
        };
        QVERIFY(pressing(u"Ctrl+N"_s).startsWith(u"save: Indicare codice lavoro"));
        QVERIFY(pressing(u"Ctrl+O"_s).startsWith(u"save: Selezionare codice lavoro"));
        QCOMPARE(pressing(u"Ctrl+Q"_s), QString());
        QVERIFY(!session.window().isVisible());
    }
};

ZELTO_TEST(TestMainWindow)
#include "tst_main_window.moc"
