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
#include <QTemporaryDir>
#include <QTest>

#include <functional>
#include <optional>
#include <sys/stat.h>

using namespace zelto;

namespace {

const QStringList Kinds{u"file"_s, u"link"_s,  u"link to nothing"_s, u"link to a folder"_s,
                        u"FIFO"_s, u"folder"_s};

/// A file that the program writes.
struct Case
{
    QString name;
    QStringList refused; ///< kinds that are in the way
    std::function<void(const QString& path)> write;

    /// Why it is not written; empty if it is.
    [[nodiscard]] QString refusal(const QString& path) const
    {
        try {
            write(path);
        } catch (const text::Error& error) {
            return error.description();
        }
        return {};
    }
};

void put(const QString& path, const QByteArray& bytes)
{
    QVERIFY(QDir().mkpath(QFileInfo(path).absolutePath()));
    test::writeBytes(path, bytes);
}

bool nothingUnfinishedIsIn(const QString& folder)
{
    return QDir(folder).entryList({u".zelto-*"_s}, QDir::Dirs | QDir::Hidden).isEmpty();
}

/// Two pages, recorded and read again.
void recordPages(const QString& path)
{
    print::PrintEngine engine(QFileInfo(path).path(), {});
    engine.BeginDocument();
    engine.PrintText(1, 1, 0, QString(80, u'x'));
    engine.NewPage();
    engine.PrintText(1, 1, 0, QString(80, u'x'));
    engine.EndDocument();
    engine.PrintDocument(1, engine.pageCount());
}

reports::Tables tables()
{
    return reports::tabelleScelte(test::building({{.size = 1}}), reports::OpzioniCalcolo());
}

void writeSheet(const QString& path)
{
    struct : store::StatusLine
    {
        void SetStatus(const QString& /*text*/, bool /*busy*/) override {}
    } nobody;
    const calc::ModelloLavoro modello = test::building({{.size = 1}});
    const calc::LavoroScritto scritto;
    print::PrintEngine engine(QDir::tempPath(), {});
    reports::writeSheets(QFileInfo(path).path(),
                         reports::schedeUnita(modello, scritto, reports::OpzioniCalcolo()),
                         {.modello = modello,
                          .scritto = scritto,
                          .jobPath = {},
                          .outputFolder = {},
                          .engine = engine,
                          .status = nobody},
                         {});
}

void provideMaster(const QString& path)
{
    const QString bin = QFileInfo(path).path();
    put(bin + u"/../share/zelto/Zelto.mdb"_s, test::bytesOf(QStringLiteral(ZELTO_MASTER)));
    store::ApplicationFolder(bin, bin + u"/.."_s).provideMaster();
}

/// Files for the user, which an older one of the name outlives if they cannot be written.
std::vector<Case> outputs()
{
    const QStringList folder{u"folder"_s};
    return {
        {u"calcolo.out"_s, folder,
         [](const QString& path) {
             reports::TextOutput output(QFileInfo(path).path(), u"calcolo.out"_s);
             output.writeLine({QString(80, u'x')});
             output.commit();
         }},
        {u"Millesimi generali.csv"_s, folder,
         [](const QString& path) { reports::writeCsv(QFileInfo(path).path(), tables(), {}); }},
        {u"001 Int. 1.pdf"_s, folder, writeSheet},
        {u"A.xlsx"_s, folder,
         [](const QString& path) { reports::writeWorkbook(path, tables(), {}); }},
        {u"A.pdf"_s, folder,
         [](const QString& path) {
             print::PdfSurface surface(path, {});
             print::PrintEngine engine(QDir::tempPath(), {});
             const print::DrawingTarget target(engine, surface);
             engine.PrintText(1, 1, 0, u"x"_s);
             surface.commit();
         }},
        {u"Zelto.ini"_s,
         {},
         [](const QString& path) {
             store::Settings settings(path);
             (void)settings.LeggiIni(u"Main"_s, u"File1"_s);
             settings.ScriviIni(u"Main"_s, u"File1"_s, QString(80, u'x'));
         }},
        {u"A.ZLT"_s, Kinds, store::createJobFile},
        {u"A.BAK"_s, folder,
         [](const QString& path) {
             const QString job = QFileInfo(path).path() + u"/A.ZLT"_s;
             store::createJobFile(job);
             store::compact(job, path);
         }},
    };
}

/// Those, and what the program keeps for itself.
std::vector<Case> allFiles()
{
    std::vector<Case> cases = outputs();
    for (const QString& name : {u"~VKM0000.Tmp"_s, u"~VKM0001.Tmp"_s, u"~VKM.lock"_s})
        cases.push_back({name, {}, recordPages});
    cases.push_back({u"~VKM1"_s, {}, [](const QString& path) {
                         print::PrintEngine first(QFileInfo(path).path(), {});
                         first.BeginDocument();
                         recordPages(path);
                     }});
    cases.push_back({u"bin/Zelto.mdb"_s, {}, provideMaster});
    cases.push_back({u"bin/Zelto.mdb.DAN"_s, {}, [](const QString& path) {
                         put(path.chopped(4), "damaged");
                         provideMaster(path);
                     }});
    return cases;
}

/// Every file with everything that may be in its way.
void addRows(const std::vector<Case>& cases, const QStringList& obstacles)
{
    QTest::addColumn<Case>("file");
    QTest::addColumn<QString>("obstacle");
    for (const Case& file : cases)
        for (const QString& obstacle : obstacles)
            QTest::addRow("%s, %s", qPrintable(file.name), qPrintable(obstacle))
                << file << obstacle;
}

} // namespace

class TestPlantedNames : public QObject
{
    Q_OBJECT

private slots:
    void nothingElseChanges_data() { addRows(allFiles(), Kinds); }

    void nothingElseChanges()
    {
        QFETCH(Case, file);
        QFETCH(QString, obstacle);
        const QTemporaryDir place;
        const QString outside = place.filePath(u"altrui/~VKM0000.Tmp"_s);
        const QString folder = place.filePath(u"programma"_s);
        const QString planted = folder + u'/' + file.name;
        put(outside, "altrui");
        QVERIFY(QDir().mkpath(QFileInfo(planted).absolutePath()));
        if (obstacle == u"file")
            put(planted, "prima");
        else if (obstacle == u"FIFO")
            QCOMPARE(::mkfifo(QFile::encodeName(planted).constData(), 0600), 0);
        else if (obstacle == u"folder")
            put(planted + u"/dentro"_s, "altrui");
        else
            QVERIFY(QFile::link(obstacle == u"link"              ? outside
                                : obstacle == u"link to nothing" ? place.filePath(u"nulla"_s)
                                                                 : place.filePath(u"altrui"_s),
                                planted));
        const QString said = file.refusal(planted);
        QVERIFY2(said.isEmpty() || said.contains(folder), qPrintable(said));
        QCOMPARE(!said.isEmpty(), file.refused.contains(obstacle));
        QCOMPARE(test::bytesOf(outside), "altrui");
        QCOMPARE(QDir(place.filePath(u"altrui"_s)).entryList(QDir::Files).size(), 1);
        QVERIFY(!QFile::exists(place.filePath(u"nulla"_s)));
        if (obstacle == u"folder" && file.name != u"bin/Zelto.mdb")
            QCOMPARE(test::bytesOf(planted + u"/dentro"_s), "altrui");
        QVERIFY(nothingUnfinishedIsIn(folder));
    }

    void olderFilesStay_data()
    {
        addRows(outputs(), {u"full disk"_s, u"read-only folder"_s, u"vanished folder"_s});
    }

    void olderFilesStay()
    {
        QFETCH(Case, file);
        QFETCH(QString, obstacle);
        const QTemporaryDir place;
        const QString folder = place.filePath(u"programma"_s);
        const QString older = folder + u'/' + file.name;
        put(older, "[Main]");
        ::chmod(QFile::encodeName(place.path()).constData(), 0755);
        std::optional<test::DiskLimit> full;
        std::optional<test::PlainUser> plain;
        if (obstacle == u"full disk")
            full.emplace(40);
        else if (obstacle == u"vanished folder")
            QVERIFY(QDir(folder).removeRecursively());
        else if (::chmod(QFile::encodeName(folder).constData(), 0555) == 0)
            plain.emplace();
        const QString said = file.refusal(older);
        full.reset();
        plain.reset();
        const bool isMadeAnew = obstacle == u"vanished folder" &&
                                (file.name.endsWith(u".csv") || file.name.startsWith(u"001"));
        QCOMPARE(said.isEmpty(), file.name == u"Zelto.ini" || isMadeAnew);
        QVERIFY2(said.isEmpty() || said.contains(folder), qPrintable(said));
        QVERIFY2(!said.contains(u".zelto-"), qPrintable(said));
        if (obstacle == u"full disk" && !said.isEmpty())
            QVERIFY2(said.contains(u"disco") || said.contains(text::systemReason(EFBIG)),
                     qPrintable(said));
        if (obstacle != u"vanished folder")
            QCOMPARE(test::bytesOf(older), "[Main]");
        QVERIFY(nothingUnfinishedIsIn(folder));
    }
};

ZELTO_TEST(TestPlantedNames)
#include "tst_planted_names.moc"
