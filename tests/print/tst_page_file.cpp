// SPDX-License-Identifier: GPL-3.0-or-later
// The life of page files: which ones exist when, and what happens where they cannot be written.
#include "print/print_engine.h"
#include "print/print_error.h"
#include "store/store_fixture.h"
#include "support/disk_limit.h"
#include "support/plain_user.h"
#include "support/runner.h"

#include <QDir>
#include <QTest>

#include <sys/stat.h>

using namespace Qt::StringLiterals;
using namespace zelto::print;
using namespace zelto::test;

class TestPageFile : public QObject
{
    Q_OBJECT

    std::unique_ptr<JobFolder> m_folder;

    /// What is in the folder, without the mark that it is in use.
    [[nodiscard]] QStringList files(const QString& subfolder = {}) const
    {
        QStringList names = QDir(m_folder->file(subfolder))
                                .entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
        names.removeOne(u"~VKM.lock"_s);
        return names;
    }
    void put(const QString& name) const
    {
        writeBytes(m_folder->file(name), "resto di una stampa precedente\r\n");
    }
    [[nodiscard]] PrintEngine engine(const QString& subfolder = {}) const
    {
        return {m_folder->file(subfolder), {}};
    }
    /// Nobody but the user may open it.
    [[nodiscard]] bool isPrivate(const QString& name) const
    {
        return (QFile::permissions(m_folder->file(name)).toInt() & 0x0077) == 0;
    }

private slots:
    void init() { m_folder = std::make_unique<JobFolder>(); }

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
        QCOMPARE(QFileInfo(m_folder->file(u"~VKM0000.Tmp"_s)).size(), 0);
        print.DeletePages();
        QCOMPARE(files(), QStringList{u"altro.Tmp"_s});
        QCOMPARE(print.pageCount(), 0);
    }

    void pagesOfADocument()
    {
        const auto pagesWith = [this](int textsOnSecondPage, bool breakAtEnd) {
            PrintEngine print = engine();
            print.BeginDocument();
            print.PrintText(1, 1, 0, QString(80, u'x'));
            print.NewPage();
            for (int i = 0; i < textsOnSecondPage; ++i)
                print.PrintText(1, 1, 0, u"Unità immobiliare"_s);
            if (breakAtEnd)
                print.NewPage();
            print.EndDocument();
            return u"%1 %2 %3 %4"_s.arg(print.isRecording())
                .arg(print.pageCount())
                .arg(files().size())
                .arg(print.PageNumber());
        };
        QCOMPARE(pagesWith(3, false), u"0 2 2 1"_s);
        QCOMPARE(pagesWith(3, true), u"0 2 2 1"_s);
        QCOMPARE(pagesWith(0, false), u"0 1 1 0"_s);
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

    void whatCannotBeRecorded()
    {
        PrintEngine nowhere = engine(u"manca"_s);
        QVERIFY_THROWS_EXCEPTION(PrintError, nowhere.BeginDocument());
        QVERIFY(!nowhere.isRecording());
        // One page more than 9999 would be written over the first.
        PrintEngine print = engine();
        print.BeginDocument();
        print.setPageNumber(9'998);
        print.NewPage();
        QVERIFY_THROWS_EXCEPTION(PrintError, print.NewPage());
        QVERIFY(!print.isRecording());
    }

    void nobodyElseReadsAPage()
    {
        const QString target = m_folder->file(u"documento"_s);
        put(u"documento"_s);
        PrintEngine print = engine();
        print.BeginDocument();
        QFile::link(target, m_folder->file(u"~VKM0001.Tmp"_s));
        print.NewPage();
        print.EndDocument();
        QVERIFY(QFileInfo(target).size() > 0);
        print.BeginDocument();
        QVERIFY(isPrivate(u"~VKM0000.Tmp"_s));
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
            QVERIFY(isPrivate(u"~VKM1"_s));
        }
        QVERIFY(!QFile::exists(m_folder->file(u"~VKM1"_s)));
        QVERIFY(QFileInfo(m_folder->file(u"~VKM0000.Tmp"_s)).size() > 80);
    }

    void pagesThatCannotBeRemovedAreLeftAlone()
    {
        QVERIFY(QDir().mkdir(m_folder->file(u"comune"_s)));
        put(u"comune/~VKM0000.Tmp"_s);
        // As in a folder for everybody, where each may remove but his own.
        QCOMPARE(::chmod(QFile::encodeName(m_folder->file(u"comune"_s)).constData(), 01777), 0);
        QCOMPARE(::chmod(QFile::encodeName(m_folder->file({})).constData(), 0755), 0);
        if (::geteuid() != 0)
            QSKIP("needs the files of two users");
        const PlainUser plainUser;
        PrintEngine print = engine(u"comune"_s);
        print.BeginDocument();
        QCOMPARE(files(u"comune/~VKM1"_s), QStringList{u"~VKM0000.Tmp"_s});
    }

    void aFullDiskEndsTheRecording()
    {
        PrintEngine print = engine();
        print.BeginDocument();
        const DiskLimit limit(100'000);
        verifyDiskIsFull([&] {
            for (int i = 0; i < 1'000; ++i)
                print.PrintText(1, 1, 0, QString(1'000, u'x'));
        });
        QVERIFY(!print.isRecording());
        print.BeginDocument();
        for (int i = 0; i < 10; ++i) // still in memory when the page ends
            print.PrintText(1, 1, 0, QString(16'000, u'x'));
        verifyDiskIsFull([&] { print.EndDocument(); });
        QVERIFY(!print.isRecording());
    }

    void nothingToReplay()
    {
        PrintEngine print = engine();
        QVERIFY_THROWS_EXCEPTION(PrintError, print.ReplayPage());
        QVERIFY(QDir().mkdir(m_folder->file(u"~VKM0000.Tmp"_s)));
        QVERIFY_THROWS_EXCEPTION(PrintError, print.ReplayPage());
        put(u"documento"_s);
        QFile::link(m_folder->file(u"documento"_s), m_folder->file(u"~VKM0001.Tmp"_s));
        print.setPageNumber(1);
        QVERIFY_THROWS_EXCEPTION(PrintError, print.ReplayPage());
    }
};

ZELTO_TEST(TestPageFile)
#include "tst_page_file.moc"
