// SPDX-License-Identifier: GPL-3.0-or-later
// The life of page files: which ones exist when, and what happens where they cannot be written.
#include "print/print_engine.h"
#include "print/print_error.h"
#include "support/disk_limit.h"
#include "support/plain_user.h"
#include "support/runner.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

using namespace Qt::StringLiterals;
using namespace zelto::print;
using zelto::test::DiskLimit;

class TestPageFile : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_dir;

    /// What is in the folder, without the mark that it is in use.
    [[nodiscard]] QStringList files(const QString& subfolder = {}) const
    {
        QStringList names = QDir(m_dir->filePath(subfolder))
                                .entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
        names.removeOne(u"~VKM.lock"_s);
        return names;
    }
    void put(const QString& name) const
    {
        QFile file(m_dir->filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("resto di una stampa precedente\r\n");
    }
    [[nodiscard]] PrintEngine engine() const { return {m_dir->path(), {}}; }

private slots:
    void init() { m_dir = std::make_unique<QTemporaryDir>(); }

    void folderOfTheSession()
    {
        qputenv("TEMP", "/un/posto");
        QCOMPARE(TempFolder(u"/programma"_s), u"/un/posto"_s);
        qputenv("TEMP", "");
        QCOMPARE(TempFolder(u"/programma"_s), u"/programma"_s);
    }

    void aRecordingDeletesOlderPages()
    {
        for (const QString& name : {u"~VKM0000.Tmp"_s, u"~VKM0007.Tmp"_s, u"altro.Tmp"_s})
            put(name);
        PrintEngine print = engine();
        print.BeginDocument();
        QCOMPARE(files(), (QStringList{u"altro.Tmp"_s, u"~VKM0000.Tmp"_s}));
        QCOMPARE(QFileInfo(m_dir->filePath(u"~VKM0000.Tmp"_s)).size(), 0);
        print.DeletePages();
        QCOMPARE(files(), QStringList{u"altro.Tmp"_s});
        QCOMPARE(print.pageCount(), 0);
    }

    void pagesOfADocument_data()
    {
        QTest::addColumn<int>("texts"); // on the second page
        QTest::addColumn<bool>("breakAtEnd");
        QTest::addColumn<int>("pages");
        QTest::addRow("two pages") << 3 << false << 2;
        QTest::addRow("break at the end") << 3 << true << 2;
        QTest::addRow("empty second page") << 0 << false << 1;
    }

    void pagesOfADocument()
    {
        QFETCH(int, texts);
        QFETCH(bool, breakAtEnd);
        PrintEngine print = engine();
        print.BeginDocument();
        print.PrintText(1, 1, 0, QString(80, u'x'));
        print.NewPage();
        for (int i = 0; i < texts; ++i)
            print.PrintText(1, 1, 0, u"Unità immobiliare"_s);
        if (breakAtEnd)
            print.NewPage();
        print.EndDocument();
        QVERIFY(!print.isRecording());
        QTEST(print.pageCount(), "pages");
        QTEST(static_cast<int>(files().size()), "pages");
        QCOMPARE(print.PageNumber(), print.pageCount() - 1);
    }

    void shortestPageThatCounts()
    {
        constexpr int RecordFrame = 7; // opcode, TAB, line end
        for (const int bytes : {60, 61}) {
            PrintEngine print = engine();
            print.BeginDocument();
            print.SetFontName(QString(bytes - RecordFrame, u'n'));
            print.EndDocument();
            QCOMPARE(print.pageCount(), bytes - 60);
            QCOMPARE(files().size(), bytes - 60);
        }
    }

    /// One more would be written over the first.
    void moreThan9999PagesAreRefused()
    {
        PrintEngine print = engine();
        print.BeginDocument();
        print.setPageNumber(9'998);
        print.NewPage();
        QVERIFY_THROWS_EXCEPTION(PrintError, print.NewPage());
        QVERIFY(!print.isRecording());
    }

    void nobodyElseReadsAPage()
    {
        const QString target = m_dir->filePath(u"documento"_s);
        put(u"documento"_s);
        PrintEngine print = engine();
        print.BeginDocument();
        QFile::link(target, m_dir->filePath(u"~VKM0001.Tmp"_s));
        print.NewPage();
        print.EndDocument();
        QVERIFY(QFileInfo(target).size() > 0);
        const auto others = QFileDevice::ReadGroup | QFileDevice::WriteGroup |
                            QFileDevice::ReadOther | QFileDevice::WriteOther;
        print.BeginDocument();
        QVERIFY(!(QFile::permissions(m_dir->filePath(u"~VKM0000.Tmp"_s)) & others));
    }

    void aFolderThatIsNotThere()
    {
        PrintEngine print(m_dir->filePath(u"manca"_s), {});
        QVERIFY_THROWS_EXCEPTION(PrintError, print.BeginDocument());
        QVERIFY(!print.isRecording());
    }

    void engineKeepsToItsOwnPages()
    {
        PrintEngine first = engine();
        first.BeginDocument();
        first.PrintText(1, 1, 0, QString(80, u'x'));
        first.EndDocument();
        {
            PrintEngine second = engine();
            second.BeginDocument();
            QCOMPARE(files(), QStringList{u"~VKM0000.Tmp"_s});
            QCOMPARE(files(u"~VKM1"_s), QStringList{u"~VKM0000.Tmp"_s});
            const auto others = QFileDevice::ReadGroup | QFileDevice::ExeGroup |
                                QFileDevice::ReadOther | QFileDevice::ExeOther;
            QVERIFY(!(QFile::permissions(m_dir->filePath(u"~VKM1"_s)) & others));
        }
        QVERIFY(!QFile::exists(m_dir->filePath(u"~VKM1"_s)));
        QVERIFY(QFileInfo(m_dir->filePath(u"~VKM0000.Tmp"_s)).size() > 80);
    }

    void pagesThatCannotBeRemovedAreLeftAlone()
    {
        QVERIFY(QDir().mkdir(m_dir->filePath(u"comune"_s)));
        put(u"comune/~VKM0000.Tmp"_s);
        // As in a folder for everybody, where each may remove but his own.
        QCOMPARE(::chmod(QFile::encodeName(m_dir->filePath(u"comune"_s)).constData(), 01777), 0);
        QCOMPARE(::chmod(QFile::encodeName(m_dir->path()).constData(), 0755), 0);
        if (::geteuid() != 0)
            QSKIP("needs the files of two users");
        const zelto::test::PlainUser plainUser;
        PrintEngine print(m_dir->filePath(u"comune"_s), {});
        print.BeginDocument();
        QCOMPARE(files(u"comune/~VKM1"_s), QStringList{u"~VKM0000.Tmp"_s});
    }

    void aFullDiskEndsTheRecording()
    {
        PrintEngine print = engine();
        print.BeginDocument();
        const DiskLimit limit(100'000);
        const auto recordMuch = [&] {
            for (int i = 0; i < 1'000; ++i)
                print.PrintText(1, 1, 0, QString(1'000, u'x'));
        };
        zelto::test::verifyDiskIsFull(recordMuch);
        QVERIFY(!print.isRecording());
        print.BeginDocument();
        for (int i = 0; i < 10; ++i) // still in memory when the page ends
            print.PrintText(1, 1, 0, QString(16'000, u'x'));
        zelto::test::verifyDiskIsFull([&] { print.EndDocument(); });
        QVERIFY(!print.isRecording());
    }

    void nothingToReplay()
    {
        PrintEngine print = engine();
        QVERIFY_THROWS_EXCEPTION(PrintError, print.ReplayPage());
        QVERIFY(QDir(m_dir->path()).mkdir(u"~VKM0000.Tmp"_s));
        QVERIFY_THROWS_EXCEPTION(PrintError, print.ReplayPage());
        put(u"documento"_s);
        QFile::link(m_dir->filePath(u"documento"_s), m_dir->filePath(u"~VKM0001.Tmp"_s));
        print.setPageNumber(1);
        QVERIFY_THROWS_EXCEPTION(PrintError, print.ReplayPage());
    }
};

ZELTO_TEST(TestPageFile)
#include "tst_page_file.moc"
