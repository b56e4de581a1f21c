// SPDX-License-Identifier: GPL-3.0-or-later
// Whatever lies under a name that the program writes: nothing outside of its own files changes.
#include "print/pdf_surface.h"
#include "print/print_engine.h"
#include "reports/print_sequence.h"
#include "reports/table_export.h"
#include "reports/text_output.h"
#include "store/application_folder.h"
#include "store/file_operations.h"
#include "store/settings.h"
#include "store/store_fixture.h"
#include "support/building.h"
#include "support/disk_limit.h"
#include "support/plain_user.h"
#include "support/runner.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <functional>
#include <iterator>
#include <optional>
#include <sys/stat.h>

using namespace zelto;

using Writer = std::function<void(const QString& folder)>;

namespace {

void put(const QString& path, const QByteArray& bytes)
{
    QVERIFY(QDir().mkpath(QFileInfo(path).absolutePath()));
    test::writeBytes(path, bytes);
}

/// Two pages, recorded and read again.
void recordPages(const QString& folder)
{
    print::PrintEngine engine(folder, {});
    engine.BeginDocument();
    engine.PrintText(1, 1, 0, QString(80, u'x'));
    engine.NewPage();
    engine.PrintText(1, 1, 0, QString(80, u'x'));
    engine.EndDocument();
    engine.PrintDocument(1, engine.pageCount());
}

std::vector<reports::TableReport> tables()
{
    return reports::tabelleScelte(test::building({{.size = 1}}), reports::OpzioniCalcolo());
}

void writePdf(const QString& path)
{
    print::PdfSurface surface(path, {});
    print::PrintEngine engine(QDir::tempPath(), {});
    const print::DrawingTarget target(engine, surface);
    engine.PrintText(1, 1, 0, u"x"_s);
    surface.commit();
}

void provideMaster(const QString& folder)
{
    put(folder + u"/share/zelto/Zelto.mdb"_s, test::bytesOf(QStringLiteral(ZELTO_MASTER)));
    QVERIFY(QDir().mkpath(folder + u"/bin"_s));
    store::ApplicationFolder(folder + u"/bin"_s, folder).provideMaster();
}

struct Case
{
    QString name;
    QStringList refused; ///< kinds that are in the way
    Writer writer;
};

const QStringList Kinds{u"file"_s, u"link"_s,  u"link to nothing"_s, u"link to a folder"_s,
                        u"FIFO"_s, u"folder"_s};

/// Files for the user, which an older one of the name outlives if they cannot be written.
std::vector<Case> outputs()
{
    const QStringList folderOnly{u"folder"_s};
    return {
        {u"calcolo.out"_s, folderOnly,
         [](const QString& folder) {
             reports::TextOutput output(folder, u"calcolo.out"_s);
             output.writeLine({QString(80, u'x')});
             output.commit();
         }},
        {u"Millesimi generali.csv"_s, folderOnly,
         [](const QString& folder) { reports::writeCsv(folder, tables(), {}); }},
        {u"A.xlsx"_s, folderOnly,
         [](const QString& folder) {
             reports::writeWorkbook(folder + u"/A.xlsx"_s, tables(), {});
         }},
        {u"A.pdf"_s, folderOnly, [](const QString& folder) { writePdf(folder + u"/A.pdf"_s); }},
        {u"Zelto.ini"_s,
         {},
         [](const QString& folder) {
             store::Settings settings(folder + u"/Zelto.ini"_s);
             (void)settings.LeggiIni(u"Main"_s, u"File1"_s);
             settings.ScriviIni(u"Main"_s, u"File1"_s, QString(80, u'x'));
         }},
        {u"A.ZLT"_s, Kinds,
         [](const QString& folder) { store::createJobFile(folder + u"/A.ZLT"_s); }},
        {u"A.BAK"_s, folderOnly,
         [](const QString& folder) {
             store::createJobFile(folder + u"/A.ZLT"_s);
             store::compact(folder + u"/A.ZLT"_s, folder + u"/A.BAK"_s);
         }},
    };
}

/// What the program keeps for itself.
std::vector<Case> ownFiles()
{
    std::vector<Case> cases;
    for (const QString& name : {u"~VKM0000.Tmp"_s, u"~VKM0001.Tmp"_s, u"~VKM.lock"_s})
        cases.push_back({name, {}, recordPages});
    cases.push_back({u"~VKM1"_s, {}, [](const QString& folder) {
                         print::PrintEngine first(folder, {});
                         first.BeginDocument();
                         recordPages(folder);
                     }});
    cases.push_back({u"bin/Zelto.mdb"_s, {}, provideMaster});
    cases.push_back({u"bin/Zelto.mdb.DAN"_s, {}, [](const QString& folder) {
                         put(folder + u"/bin/Zelto.mdb"_s, "damaged");
                         provideMaster(folder);
                     }});
    return cases;
}

} // namespace

class TestPlantedNames : public QObject
{
    Q_OBJECT

private slots:
    void nothingElseChanges_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<Writer>("writer");
        QTest::addColumn<QString>("kind");
        QTest::addColumn<bool>("refused");
        std::vector<Case> cases = outputs();
        std::ranges::move(ownFiles(), std::back_inserter(cases));
        for (const Case& written : cases)
            for (const QString& kind : Kinds)
                QTest::addRow("%s, %s", qPrintable(written.name), qPrintable(kind))
                    << written.name << written.writer << kind << written.refused.contains(kind);
    }

    void nothingElseChanges()
    {
        QFETCH(QString, name);
        QFETCH(Writer, writer);
        QFETCH(QString, kind);
        QTemporaryDir place;
        const QString outside = place.filePath(u"altrui/~VKM0000.Tmp"_s);
        const QString folder = place.filePath(u"programma"_s);
        const QString planted = folder + u'/' + name;
        put(outside, "altrui");
        QVERIFY(QDir().mkpath(QFileInfo(planted).absolutePath()));
        if (kind == u"file")
            put(planted, "prima");
        else if (kind == u"FIFO")
            QCOMPARE(::mkfifo(QFile::encodeName(planted).constData(), 0600), 0);
        else if (kind == u"folder")
            put(planted + u"/dentro"_s, "altrui");
        else
            QVERIFY(QFile::link(kind == u"link"              ? outside
                                : kind == u"link to nothing" ? place.filePath(u"nulla"_s)
                                                             : place.filePath(u"altrui"_s),
                                planted));
        bool refused = false;
        try {
            writer(folder);
        } catch (const text::Error& error) {
            refused = true;
            QVERIFY2(error.description().contains(folder), error.what());
        }
        QTEST(refused, "refused");
        QCOMPARE(test::bytesOf(outside), "altrui");
        QCOMPARE(QDir(place.filePath(u"altrui"_s)).entryList(QDir::Files).size(), 1);
        QVERIFY(!QFile::exists(place.filePath(u"nulla"_s)));
        if (kind == u"folder" && name != u"bin/Zelto.mdb")
            QCOMPARE(test::bytesOf(planted + u"/dentro"_s), "altrui");
        QVERIFY(QDir(folder).entryList({u".zelto-*"_s}, QDir::Dirs | QDir::Hidden).isEmpty());
    }

    void olderFilesStay_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<Writer>("writer");
        QTest::addColumn<QString>("obstacle");
        for (const Case& written : outputs())
            for (const char* obstacle : {"full disk", "read-only folder", "vanished folder"})
                QTest::addRow("%s, %s", qPrintable(written.name), obstacle)
                    << written.name << written.writer << QString::fromLatin1(obstacle);
    }

    void olderFilesStay()
    {
        QFETCH(QString, name);
        QFETCH(Writer, writer);
        QFETCH(QString, obstacle);
        const QTemporaryDir place;
        const QString folder = place.filePath(u"programma"_s);
        put(folder + u'/' + name, "[Main]");
        ::chmod(QFile::encodeName(place.path()).constData(), 0755);
        std::optional<test::DiskLimit> full;
        std::optional<test::PlainUser> plain;
        if (obstacle == u"full disk")
            full.emplace(40);
        else if (obstacle == u"vanished folder")
            QVERIFY(QDir(folder).removeRecursively());
        else if (::chmod(QFile::encodeName(folder).constData(), 0555) == 0)
            plain.emplace();
        QString said;
        try {
            writer(folder);
        } catch (const text::Error& error) {
            said = error.description();
        }
        full.reset();
        plain.reset();
        const bool isMadeAnew = obstacle == u"vanished folder" && name.endsWith(u".csv");
        QCOMPARE(said.isEmpty(), name == u"Zelto.ini" || isMadeAnew);
        QVERIFY2(said.isEmpty() || said.contains(folder), qPrintable(said));
        QVERIFY2(!said.contains(u".zelto-"), qPrintable(said));
        if (obstacle == u"full disk" && !said.isEmpty())
            QVERIFY2(said.contains(u"disco") || said.contains(text::systemReason(EFBIG)),
                     qPrintable(said));
        if (obstacle != u"vanished folder")
            QCOMPARE(test::bytesOf(folder + u'/' + name), "[Main]");
        QVERIFY(QDir(folder).entryList({u".zelto-*"_s}, QDir::Dirs | QDir::Hidden).isEmpty());
    }
};

ZELTO_TEST(TestPlantedNames)
#include "tst_planted_names.moc"
