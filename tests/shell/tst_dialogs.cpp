// SPDX-License-Identifier: GPL-3.0-or-later
// What the dialogs say and are answered; the command line.
#include "print/print_error.h"
#include "shell/command_line.h"
#include "shell/copy_dialog.h"
#include "shell/file_dialog.h"
#include "shell/qt_dialogs.h"
#include "store/store_fixture.h"
#include "support/accessible_names.h"
#include "support/columns.h"
#include "support/runner.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <QTreeWidget>

#include <new>

using namespace zelto;
using namespace zelto::shell;
using namespace zelto::test;
using Request = widgets::FileDialogRequest;

class TestDialogs : public QObject
{
    Q_OBJECT

    static Request request(const QString& folder, int flags,
                           Request::Kind kind = Request::Kind::Save)
    {
        return {.title = u"Indicare codice lavoro"_s,
                .filter = u"Tabelle Millessimi (*.ZLT)|*.zlt|Database Access (*.MDB)|*.mdb"_s,
                .flags = flags,
                .initialFolder = folder,
                .kind = kind};
    }

    /// Acts in the dialog that comes of asking; gives what that gives.
    static auto during(const auto& asking, const auto& acting)
    {
        QTimer::singleShot(0, qApp, [&] { acting(*QApplication::activeModalWidget()); });
        return asking();
    }

private slots:
    void errorReports()
    {
        const auto dialogs = makeDialogs();
        const auto report = [&](const std::exception& error) {
            QString text;
            during([&] { dialogs->ReportError(error); },
                   [&](QWidget& box) {
                       text = dynamic_cast<QMessageBox&>(box).text();
                       box.close();
                   });
            return text;
        };
        const QString begin = u"The following Error occurred:\n\n"_s;
        const store::DatabaseError exists(store::ErrorNumber::FileExists, u"C'è già."_s);
        QCOMPARE(report(exists), begin + u"C'è già.\nNumber: 3204"_s);
        const print::PrintError off(print::PrintErrorNumber::PrinterFailed, u"Spenta."_s);
        QCOMPARE(report(off), begin + u"Spenta.\nNumber: 482"_s);
        QCOMPARE(report(std::bad_alloc()), begin + u"Memoria esaurita\nNumber: 7"_s);
        QCOMPARE(report(std::runtime_error("già così")), begin + u"già così\nNumber: 0"_s);
    }

    void commandLine()
    {
        const QString job = u"A.ZLT"_s;
        QCOMPARE(jobNamed({}), QString());
        QCOMPARE(jobNamed({job}), job);
        QCOMPARE(jobNamed({u"--"_s, u"-A.ZLT"_s}), u"-A.ZLT"_s);
        for (const QString& other : {u"B.ZLT"_s, u"--apri"_s})
            QVERIFY_THROWS_EXCEPTION(UsageError, std::ignore = jobNamed({job, other}));
        for (const QString& option : {u"-h"_s, u"--help"_s, u"--version"_s}) {
            QVERIFY(textAskedFor({job, option}));
            QVERIFY(!textAskedFor({u"--"_s, job, option}));
        }
        QVERIFY(!textAskedFor({job, u"--apri"_s}));
    }

    void fileDialogs()
    {
        using Dialog = QFileDialog;
        using enum Request::Kind;
        const JobFolder folder;
        const JobFolder otherFolder;
        const auto modes = [&](int flags, Request::Kind kind) {
            const FileDialog dialog(nullptr, request(folder.path(), flags, kind), {});
            return std::pair(dialog.acceptMode(), dialog.fileMode());
        };
        const int old = Request::FileMustExist;
        QCOMPARE(modes(Request::AnyFile, Save), std::pair(Dialog::AcceptSave, Dialog::AnyFile));
        QCOMPARE(modes(Request::AnyFile, Open), std::pair(Dialog::AcceptOpen, Dialog::AnyFile));
        QCOMPARE(modes(old, Save), std::pair(Dialog::AcceptOpen, Dialog::ExistingFile));
        QCOMPARE(modes(old, Open), std::pair(Dialog::AcceptOpen, Dialog::ExistingFile));

        const FileDialog dialog(nullptr, request(folder.path(), Request::AnyFile),
                                otherFolder.path());
        QCOMPARE(dialog.windowTitle(), u"Indicare codice lavoro"_s);
        QCOMPARE(dialog.nameFilters(), (QStringList{u"Tabelle Millessimi (*.ZLT *.zlt)"_s,
                                                    u"Database Access (*.MDB *.mdb)"_s}));
        QCOMPARE(dialog.directory().path(), folder.path());
        QVERIFY(dialog.testOption(QFileDialog::DontConfirmOverwrite));
        for (const QString& none : {QString(), folder.file(u"gone"_s)}) {
            const FileDialog elsewhere(nullptr, request(none, old), otherFolder.path());
            QCOMPARE(elsewhere.directory().path(), otherFolder.path());
        }
    }

    /// "~" for the folder; nothing is chosen when the dialog stays.
    void typedFiles_data()
    {
        const auto row = columns<int, QString, QString>("flags", "typed", "chosen");
        const int old = Request::FileMustExist;
        row("whole path", old, u"~/a/b/A.ZLT"_s, u"~/a/b/A.ZLT"_s);
        row("relative path", old, u"a/b/A.ZLT"_s, u"~/a/b/A.ZLT"_s);
        row("letter case", old, u"~/a/b/a.zlt"_s, u"~/a/b/A.ZLT"_s);
        row("quotes in the name", old, u"La \"Torre\".ZLT"_s, u"~/La \"Torre\".ZLT"_s);
        row("in quotes", old, u"\"~/a/b/A.ZLT\""_s, u"~/a/b/A.ZLT"_s);
        row("folder", old, u"~/a"_s, {});
        row("new", Request::AnyFile, u"~/a/Il \"Faro\""_s, u"~/a/Il \"Faro\""_s);
        row("new, in quotes", Request::AnyFile, u"\"nuovo\""_s, u"~/nuovo"_s);
        row("new, of a file's name", Request::AnyFile, u"~/a/b/a.zlt"_s, u"~/a/b/a.zlt"_s);
    }
    /// Of files that came after the folder was listed, while a folder in it is selected.
    void typedFiles()
    {
        QFETCH(int, flags);
        QFETCH(QString, typed);
        QFETCH(QString, chosen);
        const JobFolder folder;
        QVERIFY(QDir(folder.path()).mkpath(u"a"_s));
        FileDialog dialog(nullptr, request(folder.path(), flags), folder.path());
        dialog.show();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        auto* list = dialog.findChild<QTreeView*>(u"treeView"_s);
        QTRY_COMPARE(list->model()->rowCount(list->rootIndex()), 1);
        list->setCurrentIndex(list->model()->index(0, 0, list->rootIndex()));
        QVERIFY(QDir(folder.path()).mkpath(u"a/b"_s));
        writeBytes(folder.file(u"a/b/A.ZLT"_s), {});
        writeBytes(folder.file(u"La \"Torre\".ZLT"_s), {});
        auto* name = dialog.findChild<QLineEdit*>(u"fileNameEdit"_s);
        name->setFocus();
        name->selectAll();
        QTest::keyClicks(name, typed.replace(u'~', folder.path()));
        QTest::keyClick(name, Qt::Key_Return);
        QCOMPARE(dialog.result(), int(chosen.isEmpty() ? QDialog::Rejected : QDialog::Accepted));
        QCOMPARE(dialog.chosen(), chosen.replace(u'~', folder.path()));
    }

    /// In a home that has none yet, and where none can be made.
    void trash()
    {
        const JobFolder folder;
        const QByteArray home = qgetenv("XDG_DATA_HOME");
        const QString data = folder.file(u"home/dati"_s);
        const QString job = folder.file(u"A.ZLT"_s);
        const auto trashed = [&] {
            writeBytes(job, "x");
            return makeDialogs()->moveToTrash(job);
        };
        qputenv("XDG_DATA_HOME", data.toUtf8());
        QVERIFY(trashed());
        QVERIFY(!QFile::exists(job) && QFile::exists(data + u"/Trash/files/A.ZLT"_s));
        QVERIFY(trashed()); // a second one of the name
        QCOMPARE(QDir(data + u"/Trash/files"_s).count(), 4U);
        qputenv("XDG_DATA_HOME", "/dev/null/dati");
        QVERIFY(!trashed());
        QVERIFY(QFile::exists(job));
        qputenv("XDG_DATA_HOME", home);
    }

    /// What Return and Escape answer.
    void defaultAnswers()
    {
        const auto dialogs = makeDialogs();
        const auto answered = [](Qt::Key key, const auto& asking) {
            return during(asking, [key](QWidget& box) { QTest::keyClick(&box, key); });
        };
        const QStringList choices{u"Crea «…/R&S.1.ZLT»"_s, u"Crea «…/R&S.ZLT»"_s};
        const auto yesNo = [&] { return dialogs->askYesNo(u"Salvare?"_s); };
        const auto loss = [&] { return dialogs->confirmLoss(u"Eliminare?"_s); };
        const auto choice = [&] { return dialogs->choose(u"Quale?"_s, choices); };
        QVERIFY(answered(Qt::Key_Return, yesNo));
        QVERIFY(!answered(Qt::Key_Return, loss));
        QCOMPARE(answered(Qt::Key_Return, choice), std::optional(0));
        QCOMPARE(answered(Qt::Key_Escape, choice), std::nullopt);
    }

    /// Two jobs, A with two copies whose older one is damaged, B with one.
    void copyDialogByKeyboard()
    {
        const JobFolder folder;
        const QString a = folder.newJob(u"A.ZLT"_s);
        const QString b = folder.newJob(u"B.ZLT"_s);
        const store::JobCopies copies(folder.file(u"copie"_s));
        copies.keep(a);
        copies.keep(b);
        writeBytes(copies.copiesOf(a).front().path, {});
        copies.keep(a, QDateTime(QDate(2031, 1, 2), QTime(3, 4, 5)));

        CopyDialog dialog(copies, b, nullptr);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        QCOMPARE(namelessControls(dialog), QStringList());
        auto& jobs = *dialog.findChild<QComboBox*>();
        auto& table = *dialog.findChild<QTreeWidget*>();
        const auto& restore = *dialog.findChild<QPushButton*>(u"BtRipristina"_s);
        QCOMPARE(dialog.chosen().value().job, b);
        QVERIFY(table.hasFocus());

        QTest::keyClick(&dialog, Qt::Key_L, Qt::AltModifier);
        QVERIFY(jobs.hasFocus());
        QTest::keyClick(&jobs, Qt::Key_Up);
        QCOMPARE(table.topLevelItem(0)->text(0), u"02/01/2031 03:04:05"_s);
        QCOMPARE(table.topLevelItem(0)->text(2), u"1"_s);
        QTest::keyClick(&jobs, Qt::Key_Tab);
        QTest::keyClick(&table, Qt::Key_Down);
        QCOMPARE(table.currentItem()->text(2), u"illeggibile"_s);
        QVERIFY(!restore.isEnabled() && !dialog.chosen());
        QTest::keyClick(&table, Qt::Key_Return);
        QCOMPARE(dialog.result(), int(QDialog::Rejected));
        QTest::keyClick(&table, Qt::Key_Up);
        QTest::keyClick(&table, Qt::Key_Return);
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        QCOMPARE(dialog.chosen().value().job, a);

        const CopyDialog ofNoJob(copies, u"/nessun/lavoro.ZLT"_s, nullptr);
        QCOMPARE(ofNoJob.chosen().value().job, a);
    }
};

ZELTO_TEST(TestDialogs)
#include "tst_dialogs.moc"
