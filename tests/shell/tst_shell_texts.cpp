// SPDX-License-Identifier: GPL-3.0-or-later
// What the window says and what it was told: error report, command line, file dialogs.
#include "print/print_error.h"
#include "shell/command_line.h"
#include "shell/error_report.h"
#include "shell/file_dialog.h"
#include "store/database_error.h"

#include <QTemporaryDir>
#include <QTest>

#include <new>

using namespace Qt::StringLiterals;
using namespace zelto;
using namespace zelto::shell;
using store::FileDialogRequest;

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
        if (job == u"!")
            QVERIFY_THROWS_EXCEPTION(UsageError, std::ignore = jobNamed(arguments));
        else
            QCOMPARE(jobNamed(arguments), job);
    }

    void helpAndVersion()
    {
        QVERIFY(textAskedFor({u"A.ZLT"_s, u"--help"_s})->startsWith(u"Uso: zelto"));
        QCOMPARE(textAskedFor({u"--version"_s}), u"zelto " ZELTO_VERSION "\n"_s);
        QVERIFY(!textAskedFor({u"--"_s, u"--help"_s}));
    }

    void filters()
    {
        QCOMPARE(nameFilters(u"Tabelle Millessimi (*.ZLT)|*.zlt|Database Access (*.MDB)|*.mdb"_s),
                 (QStringList{u"Tabelle Millessimi (*.ZLT *.zlt)"_s,
                              u"Database Access (*.MDB *.mdb)"_s}));
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
            .filter = u"Tabelle Millessimi (*.ZLT)|*.zlt"_s,
            .flags = mustExist ? FileDialogRequest::FileMustExist : FileDialogRequest::AnyFile,
            .initialFolder = folder.path(),
            .kind = saveKind ? FileDialogRequest::Kind::Save : FileDialogRequest::Kind::Open};
        const auto dialog = makeFileDialog(nullptr, request, otherFolder.path());
        QTEST(dialog->acceptMode(), "acceptMode");
        QTEST(dialog->fileMode(), "fileMode");
        QCOMPARE(dialog->windowTitle(), request.title);
        QCOMPARE(dialog->directory().path(), folder.path());
        QVERIFY(dialog->testOption(QFileDialog::DontConfirmOverwrite));

        for (const QString& none : {QString(), folder.filePath(u"gone"_s)}) {
            request.initialFolder = none;
            QCOMPARE(makeFileDialog(nullptr, request, otherFolder.path())->directory().path(),
                     otherFolder.path());
        }
    }
};

QTEST_MAIN(TestShellTexts)
#include "tst_shell_texts.moc"
