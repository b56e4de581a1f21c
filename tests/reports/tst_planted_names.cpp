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
#include "support/building.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <functional>
#include <sys/stat.h>

using namespace Qt::StringLiterals;
using namespace zelto;

using Writer = std::function<void(const QString& folder)>;

namespace {

void put(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    QVERIFY(QDir().mkpath(QFileInfo(path).absolutePath()) && file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
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
    put(folder + u"/share/zelto/Zelto.mdb"_s, bytesOf(QStringLiteral(ZELTO_MASTER)));
    QVERIFY(QDir().mkpath(folder + u"/bin"_s));
    store::ApplicationFolder(folder + u"/bin"_s, folder).provideMaster();
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
        const QStringList kinds{u"file"_s, u"link"_s,  u"link to nothing"_s, u"link to a folder"_s,
                                u"FIFO"_s, u"folder"_s};
        const auto rows = [&](const QString& name, const QStringList& refused,
                              const Writer& writer) {
            for (const QString& kind : kinds)
                QTest::addRow("%s, %s", qPrintable(name), qPrintable(kind))
                    << name << writer << kind << refused.contains(kind);
        };
        for (const QString& name :
             {u"~VKM0000.Tmp"_s, u"~VKM0001.Tmp"_s, u"~VKM.lock"_s, u"~VKM1"_s})
            rows(name, {}, recordPages);
        rows(u"~VKM1"_s, {}, [](const QString& folder) {
            print::PrintEngine first(folder, {});
            first.BeginDocument();
            recordPages(folder);
        });
        rows(u"calcolo.out"_s, {u"folder"_s},
             [](const QString& folder) { reports::TextOutput(folder, u"calcolo.out"_s).commit(); });
        rows(u"Millesimi generali.csv"_s, {u"folder"_s},
             [](const QString& folder) { reports::writeCsv(folder, tables()); });
        rows(u"A.xlsx"_s, {u"folder"_s}, [](const QString& folder) {
            reports::writeWorkbook(folder + u"/A.xlsx"_s, tables(), {});
        });
        rows(u"A.pdf"_s, {u"folder"_s},
             [](const QString& folder) { writePdf(folder + u"/A.pdf"_s); });
        rows(u"Zelto.ini"_s, {}, [](const QString& folder) {
            store::Settings settings(folder + u"/Zelto.ini"_s);
            (void)settings.LeggiIni(u"Main"_s, u"File1"_s);
            settings.ScriviIni(u"Main"_s, u"File1"_s, u"x"_s);
        });
        for (const QString& name : {u"bin/Zelto.mdb"_s, u"bin/Zelto.DAN"_s})
            rows(name, {}, [name](const QString& folder) {
                if (name.endsWith(u"DAN"))
                    put(folder + u"/bin/Zelto.mdb"_s, "damaged");
                provideMaster(folder);
            });
        rows(u"A.ZLT"_s, kinds,
             [](const QString& folder) { store::createJobFile(folder + u"/A.ZLT"_s); });
        rows(u"A.BAK"_s, {u"folder"_s}, [](const QString& folder) {
            store::createJobFile(folder + u"/A.ZLT"_s);
            store::compact(folder + u"/A.ZLT"_s, folder + u"/A.BAK"_s);
        });
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
        QCOMPARE(bytesOf(outside), "altrui");
        QCOMPARE(QDir(place.filePath(u"altrui"_s)).entryList(QDir::Files).size(), 1);
        QVERIFY(!QFile::exists(place.filePath(u"nulla"_s)));
        if (kind == u"folder" && name != u"bin/Zelto.mdb")
            QCOMPARE(bytesOf(planted + u"/dentro"_s), "altrui");
        QVERIFY(QDir(folder).entryList({u".zelto-*"_s}, QDir::Dirs | QDir::Hidden).isEmpty());
    }
};

QTEST_MAIN(TestPlantedNames)
#include "tst_planted_names.moc"
