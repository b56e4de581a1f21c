// SPDX-License-Identifier: GPL-3.0-or-later
// What the window says and what it was told: error report, command line, dialogs.
#include "print/print_error.h"
#include "shell/command_line.h"
#include "shell/file_dialog.h"
#include "shell/qt_dialogs.h"
#include "shell/texts.h"
#include "store/files/database_error.h"
#include "support/runner.h"

#include <QApplication>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QTreeView>

#include <new>

using namespace zelto;
using namespace zelto::shell;
using widgets::FileDialogRequest;

class TestShellTexts : public QObject
{
    Q_OBJECT

private slots:
    void errorReports()
    {
        const QString begin = u"The following Error occurred:\n\n"_s;
        QCOMPARE(
            errorReportText(store::DatabaseError(store::ErrorNumber::FileExists, u"C'è già."_s)),
            begin + u"C'è già.\nNumber: 3204"_s);
        QCOMPARE(errorReportText(
                     print::PrintError(print::PrintErrorNumber::PrinterFailed, u"Spenta."_s)),
                 begin + u"Spenta.\nNumber: 482"_s);
        QCOMPARE(errorReportText(std::bad_alloc()), begin + u"Memoria esaurita\nNumber: 7"_s);
        QCOMPARE(errorReportText(std::runtime_error("già così")), begin + u"già così\nNumber: 0"_s);
    }

    void commandLine_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("job");
        const QString refused = u"!"_s;
        QTest::addRow("nothing") << QStringList() << QString();
        QTest::addRow("a job") << QStringList{u"A.ZLT"_s} << u"A.ZLT"_s;
        QTest::addRow("a job like an option") << QStringList{u"--"_s, u"-A.ZLT"_s} << u"-A.ZLT"_s;
        QTest::addRow("two jobs") << QStringList{u"A.ZLT"_s, u"B.ZLT"_s} << refused;
        QTest::addRow("unknown option") << QStringList{u"--apri"_s, u"A.ZLT"_s} << refused;
    }
    void commandLine()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, job);
        QVERIFY(!textAskedFor(arguments));
        QVERIFY(!textAskedFor(QStringList(u"--"_s) + arguments + QStringList(u"--help"_s)));
        QVERIFY(textAskedFor(arguments + QStringList(u"-h"_s)).has_value() !=
                arguments.contains(u"--"));
        if (job == u"!")
            QVERIFY_THROWS_EXCEPTION(UsageError, std::ignore = jobNamed(arguments));
        else
            QCOMPARE(jobNamed(arguments), job);
    }

    /// Open or save, existing files or any, by kind and flags.
    void fileDialogs_data()
    {
        QTest::addColumn<bool>("saveKind");
        QTest::addColumn<bool>("mustExist");
        QTest::addColumn<QFileDialog::AcceptMode>("acceptMode");
        QTest::addColumn<QFileDialog::FileMode>("fileMode");
        QTest::addRow("new job") << true << false << QFileDialog::AcceptSave
                                 << QFileDialog::AnyFile;
        QTest::addRow("job to open")
            << true << true << QFileDialog::AcceptOpen << QFileDialog::ExistingFile;
        QTest::addRow("job to duplicate")
            << false << true << QFileDialog::AcceptOpen << QFileDialog::ExistingFile;
        QTest::addRow("file to repair")
            << false << false << QFileDialog::AcceptOpen << QFileDialog::AnyFile;
    }
    void fileDialogs()
    {
        QFETCH(bool, saveKind);
        QFETCH(bool, mustExist);
        const QTemporaryDir folder;
        const QTemporaryDir otherFolder;
        FileDialogRequest request{
            .title = u"Indicare codice lavoro"_s,
            .filter = u"Tabelle Millessimi (*.ZLT)|*.zlt|Database Access (*.MDB)|*.mdb"_s,
            .flags = mustExist ? FileDialogRequest::FileMustExist : FileDialogRequest::AnyFile,
            .initialFolder = folder.path(),
            .kind = saveKind ? FileDialogRequest::Kind::Save : FileDialogRequest::Kind::Open};
        const FileDialog dialog(nullptr, request, otherFolder.path());
        QTEST(dialog.acceptMode(), "acceptMode");
        QTEST(dialog.fileMode(), "fileMode");
        QCOMPARE(dialog.windowTitle(), request.title);
        QCOMPARE(dialog.nameFilters(), (QStringList{u"Tabelle Millessimi (*.ZLT *.zlt)"_s,
                                                    u"Database Access (*.MDB *.mdb)"_s}));
        QCOMPARE(dialog.directory().path(), folder.path());
        QVERIFY(dialog.testOption(QFileDialog::DontConfirmOverwrite));

        for (const QString& none : {QString(), folder.filePath(u"gone"_s)}) {
            request.initialFolder = none;
            QCOMPARE(FileDialog(nullptr, request, otherFolder.path()).directory().path(),
                     otherFolder.path());
        }
    }

    void typedFiles_data()
    {
        QTest::addColumn<bool>("mustExist");
        QTest::addColumn<QString>("typed");  // "~" for the folder
        QTest::addColumn<QString>("chosen"); // empty when the dialog stays
        const QString quoted = u"~/La \"Torre\".ZLT"_s;
        QTest::addRow("whole path") << true << u"~/a/b/A.ZLT"_s << u"~/a/b/A.ZLT"_s;
        QTest::addRow("relative path") << true << u"a/b/A.ZLT"_s << u"~/a/b/A.ZLT"_s;
        QTest::addRow("letter case") << true << u"~/a/b/a.zlt"_s << u"~/a/b/A.ZLT"_s;
        QTest::addRow("quotes in the name") << true << u"La \"Torre\".ZLT"_s << quoted;
        QTest::addRow("in quotes") << true << u"\"~/a/b/A.ZLT\""_s << u"~/a/b/A.ZLT"_s;
        QTest::addRow("folder") << true << u"~/a"_s << QString();
        QTest::addRow("new") << false << u"~/a/Il \"Faro\""_s << u"~/a/Il \"Faro\""_s;
        QTest::addRow("new, in quotes") << false << u"\"nuovo\""_s << u"~/nuovo"_s;
        QTest::addRow("new, of a file's name") << false << u"~/a/b/a.zlt"_s << u"~/a/b/a.zlt"_s;
    }
    /// Of files that came after the folder was listed, while a folder in it is selected.
    void typedFiles()
    {
        QFETCH(bool, mustExist);
        QFETCH(QString, typed);
        QFETCH(QString, chosen);
        const QTemporaryDir folder;
        QVERIFY(QDir(folder.path()).mkpath(u"a"_s));
        FileDialog dialog(
            nullptr,
            {.title = u"Lavoro"_s,
             .filter = u"Tabelle Millessimi (*.ZLT)|*.zlt"_s,
             .flags = mustExist ? FileDialogRequest::FileMustExist : FileDialogRequest::AnyFile,
             .initialFolder = folder.path(),
             .kind = FileDialogRequest::Kind::Save},
            folder.path());
        dialog.show();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        auto* list = dialog.findChild<QTreeView*>(u"treeView"_s);
        QTRY_COMPARE(list->model()->rowCount(list->rootIndex()), 1);
        list->setCurrentIndex(list->model()->index(0, 0, list->rootIndex()));
        QVERIFY(QDir(folder.path()).mkpath(u"a/b"_s));
        for (const char16_t* file : {u"a/b/A.ZLT", u"La \"Torre\".ZLT"})
            QVERIFY(QFile(folder.filePath(QString::fromUtf16(file))).open(QIODevice::WriteOnly));
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
        const QTemporaryDir folder;
        const QByteArray home = qgetenv("XDG_DATA_HOME");
        const QString data = folder.filePath(u"home/dati"_s);
        const QString job = folder.filePath(u"A.ZLT"_s);
        const auto trashed = [&] {
            QFile file(job);
            const bool written = file.open(QIODevice::WriteOnly);
            file.close();
            return written && makeDialogs()->moveToTrash(job);
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
        const auto answered = [](int key, auto&& asking) {
            QTimer::singleShot(0, qApp, [key] {
                QTest::keyClick(QApplication::activeModalWidget(), static_cast<Qt::Key>(key));
            });
            return asking();
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
};

ZELTO_TEST(TestShellTexts)
#include "tst_shell_texts.moc"
