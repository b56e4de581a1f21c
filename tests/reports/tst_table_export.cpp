// SPDX-License-Identifier: GPL-3.0-or-later
// What of a job's texts could break a spreadsheet. The figures themselves are compared by
// controlla_fogli.py.
#include "print/print_error.h"
#include "reports/print_sequence.h"
#include "reports/table_export.h"
#include "store/store_fixture.h"
#include "support/building.h"
#include "support/disk_limit.h"
#include "support/runner.h"

#include <QDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zelto::reports;
using namespace zelto::test;
using zelto::calc::ModelloLavoro;
using zelto::print::PrintError;

class TestTableExport : public QObject
{
    Q_OBJECT

    JobFolder m_folder;

    /// Two units, the second one outside of the special tables.
    static ModelloLavoro job(const QStringList& tables = {})
    {
        ModelloLavoro modello = building({{.size = 1, .flags = u"X"_s}, {.size = 2}});
        modello.NomeTabella = {tables.begin(), tables.end()};
        return modello;
    }

private slots:
    void namesOfSheets()
    {
        std::vector<TableReport> tables;
        for (const QString& name :
             {u"Acqua"_s, u"ACQUA"_s, u"Bagni/[servizi]: 'nord'?"_s, QString(40, u'x'),
              QString(40, u'x'), u"  "_s, u"../../altrove"_s})
            tables.emplace_back().name = name;
        QCOMPARE(
            sheetNames(tables),
            (QStringList{u"Acqua"_s, u"ACQUA (2)"_s, u"Bagni servizi nord"_s, QString(31, u'x'),
                         QString(27, u'x') + u" (2)"_s, u"Tabella"_s, u"Tabella.. .. altrove"_s}));
    }

    void csvForItalianSpreadsheets()
    {
        ModelloLavoro modello = job({u"Scale"_s});
        modello.unita[0].Riferimento = u"Int. 1; \"nord\""_s;
        modello.unita[1].Riferimento = u"=1+2"_s;
        writeCsv(m_folder.file(u"csv"_s), tabelleScelte(modello, OpzioniCalcolo()), {});
        QCOMPARE(bytesOf(m_folder.file(u"csv/Millesimi generali.csv"_s)),
                 "\xEF\xBB\xBFRIFERIMENTO;LIVELLO;CONS.TOT.;MILLESIMI\r\n"
                 "\"Int. 1; \"\"nord\"\"\";Piano 1;1,0000;333,333\r\n"
                 "'=1+2;Piano 2;2,0000;666,667\r\n");
        QVERIFY(bytesOf(m_folder.file(u"csv/Scale.csv"_s)).endsWith("'=1+2;Piano 2;;\r\n"));
    }

    void theChosenTables()
    {
        const auto names = [](const OpzioniStampa& options) {
            QStringList names;
            for (const TableReport& table : tabelleScelte(job({u"Scale"_s}), options))
                names << table.name;
            return names.join(u',');
        };
        QCOMPARE(names(OpzioniCalcolo()), u"Millesimi generali,Scale"_s);
        QCOMPARE(names(OpzioniCalcolo{.tabelle = {u"tabelle"_s}}), u"Scale"_s);
        QCOMPARE(names(OpzioniCalcolo{.tabelle = {}}), QString());
        QVERIFY(tabelleScelte(ModelloLavoro(), OpzioniCalcolo()).empty());
        QVERIFY(tabelleScelte(ModelloLavoro(), OpzioniRiparto()).empty());
    }

    /// Whatever of the workbook's parts does not fit: it is whole or not there.
    void aFullDisk()
    {
        const auto tables =
            tabelleScelte(building(std::vector(300, UnitData{.size = 1.5F})), OpzioniCalcolo());
        const QString path = m_folder.file(u"pieno.xlsx"_s);
        writeWorkbook(path, tables, {});
        const qint64 whole = QFileInfo(path).size();
        for (rlim_t limit = 1'000; limit < 400'000; limit += 7'000) {
            QFile::remove(path);
            try {
                const DiskLimit full(limit);
                writeWorkbook(path, tables, {});
            } catch (const PrintError& error) {
                QVERIFY2(error.description().contains(path + u"»: "_s), error.what());
                QVERIFY(!QFile::exists(path));
                continue;
            }
            QVERIFY(std::abs(QFileInfo(path).size() - whole) < 10);
        }
    }

    void placesThatCannotBeWritten()
    {
        const auto tables = tabelleScelte(job(), OpzioniCalcolo());
        writeBytes(m_folder.file(u"file"_s), {});
        QVERIFY_THROWS_EXCEPTION(PrintError, writeCsv(m_folder.file(u"file/csv"_s), tables, {}));
        // One file that cannot be replaced keeps the others as they are.
        const QString folder = m_folder.file(u"metà"_s);
        const QString general = folder + u"/Millesimi generali.csv"_s;
        QVERIFY(QDir().mkpath(folder + u"/Scale.csv"_s));
        const auto both = tabelleScelte(job({u"Scale"_s}), OpzioniCalcolo());
        QVERIFY_THROWS_EXCEPTION(PrintError, writeCsv(folder, both, {}));
        QVERIFY(!QFile::exists(general));
        QVERIFY(QFile::link(m_folder.file(u"file"_s), general));
        QVERIFY_THROWS_EXCEPTION(PrintError, writeCsv(folder, both, {}));
        QVERIFY(QFileInfo(general).isSymLink());
    }
};

ZELTO_TEST(TestTableExport)
#include "tst_table_export.moc"
