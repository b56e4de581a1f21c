// SPDX-License-Identifier: GPL-3.0-or-later
// The delivered job as it is built, and what its text is refused for.
#include "data/job_text.h"
#include "store/store_fixture.h"
#include "support/runner.h"

#include <QDir>
#include <QProcess>
#include <QTest>

using namespace zelto;
using namespace zelto::test;

namespace {

/// A folder with the text of the example.
std::unique_ptr<JobFolder> textFolder()
{
    auto folder = std::make_unique<JobFolder>();
    const QDir example(QStringLiteral(EXAMPLE_FOLDER));
    for (const QString& name : example.entryList(QDir::Files))
        QFile::copy(example.filePath(name), folder->file(name));
    return folder;
}

/// "ok" or what the reader says of the folder.
QString verdict(const JobFolder& folder)
{
    try {
        data::readJobText(folder.file(u"."_s));
    } catch (const data::DataFault& fault) {
        return QString::fromUtf8(fault.what()).remove(folder.file(u"./"_s));
    }
    return u"ok"_s;
}

} // namespace

class TestExampleJob : public QObject
{
    Q_OBJECT

private slots:
    void generalData()
    {
        auto job = store::Database::open(QStringLiteral(EXAMPLE_JOB), store::OpenMode::ReadOnly);
        const auto general = job.records(store::TabellaDatiGenerali);
        QCOMPARE(general.text(1), u"CONDOMINIO I GELSI"_s);
        QCOMPARE(general.text(4), u"2024-05-18"_s);
        QVERIFY(general.text(5).contains(u"\r\n- Consistenza totale: C.T. = C.V.T. x P.R.\r\n"_s));
        QCOMPARE(general.text(8), u"Autorimessa interrata"_s);
        QVERIFY(general.isNull(9));
    }

    void faults_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("after");
        QTest::addColumn<QString>("fault");

        const auto row = [](const char* name, QStringView file, const char* before,
                            const char* after, QStringView fault) {
            QTest::newRow(name) << u"%1.txt"_s.arg(file) << QByteArray(before) << QByteArray(after)
                                << fault.toString();
        };
        row("unchanged", u"unita", "", "", u"ok");
        row("number", u"unita", "48.35", "48,35", u"unita.txt:%1: «48,35» non è un numero.");
        row("entry", u"unita", "[Negozio]", "[Negozi]",
            u"unita.txt:%1: [Negozi] non è nel gruppo Destinazione.");
        row("bracket", u"unita", "[Negozio]", "[Negozio",
            u"unita.txt:%1: [Negozio non è nel gruppo Destinazione.");
        row("direct number", u"unita", "[Negozio]", "1.40", u"ok");
        row("cells", u"unita", "| [Piena]    | [Strada]\n", "| [Strada]\n",
            u"unita.txt:%1: 7 celle invece di 8.");
        row("staircase", u"unita", "| A | 0", "| C | 0",
            u"unita.txt:%1: scala «C» non dichiarata.");
        row("height", u"unita", "| A | 0 ", "| A | - ", u"unita.txt:%1: «-» non è un numero.");
        row("table", u"unita", "| 2\n", "| 4\n", u"unita.txt:%1: tabella «4» non dichiarata.");
        row("room first", u"unita", "Negozio 1", " Negozio 1",
            u"unita.txt:%1: 5 celle invece di 8.");
        row("tabulator", u"unita", "Negozio 1", "Negozio\t1",
            u"unita.txt:%1: tabulazione al posto degli spazi.");
        row("group", u"coefficienti", "[Prospetto]", "[Prospetti]",
            u"coefficienti.txt:%1: gruppo «Prospetti» sconosciuto.");
        row("no group", u"coefficienti", "[Ambiente]\n", "",
            u"coefficienti.txt:%1: coefficiente fuori da un gruppo.");
        row("repeated", u"coefficienti", "BalcScop", "BalcCop",
            u"coefficienti.txt:%1: variabile «BalcCop» ripetuta.");
        row("too long", u"coefficienti", "BalcScop", "BalcScope",
            u"coefficienti.txt:%1: «BalcScope» è più lungo di 8 caratteri.");
        row("date", u"dati_generali", "05-18", "02-30",
            u"dati_generali.txt:%1: «2024-02-30» non è una data (aaaa-mm-gg).");
        row("gap", u"dati_generali", "| 2 | Acqua", "| 4 | Acqua",
            u"dati_generali.txt:%1: la tabella 3 manca.");
        row("key", u"dati_generali", "Nota |", "Note |",
            u"dati_generali.txt:%1: voce «Note» sconosciuta.");
        row("encoding", u"dati_generali", "propriet\xc3\xa0", "propriet\xe0",
            u"dati_generali.txt: il testo non è in UTF-8.");
    }

    void faults()
    {
        QFETCH(QString, file);
        QFETCH(QByteArray, before);
        QFETCH(QByteArray, after);
        QFETCH(QString, fault);
        const auto folder = textFolder();
        QByteArray text = bytesOf(folder->file(file));
        const auto place = text.indexOf(before);
        QVERIFY(place >= 0);
        fault.replace(u"%1"_s, QString::number(text.first(place).count('\n') + 1));
        writeBytes(folder->file(file), text.replace(place, before.size(), after));
        QCOMPARE(verdict(*folder), fault);
    }

    void paragraphs()
    {
        const JobFolder folder;
        const QString path = folder.file(u"testo.txt"_s);
        writeBytes(path, "Uno\ndue\n- tre\n  quattro\n\ncinque\n\n\nsei\n");
        QCOMPARE(data::readParagraphs(path),
                 u"Uno due\r\n- tre quattro\r\ncinque\r\n\r\nsei\r\n"_s);
    }

    void faultKeepsOldFile()
    {
        const auto folder = textFolder();
        // Longer than the field, which only the job file itself notices.
        writeBytes(folder->file(u"unita.txt"_s),
                   "Un riferimento troppo lungo | Piano terra | A | 0 | 1\n");
        writeBytes(folder->file(u"LAVORO.ZLT"_s), "former");
        const auto before = folder->contents();
        QProcess tool;
        tool.start(QStringLiteral(BUILD_TOOL),
                   {folder->file(u"."_s), folder->file(u"LAVORO.ZLT"_s)});
        QVERIFY(tool.waitForFinished());
        QCOMPARE(tool.exitCode(), 2);
        const QString message = QString::fromUtf8(tool.readAllStandardError());
        QVERIFY2(message.contains(u"unita.txt:1: "_s), qPrintable(message));
        QVERIFY2(message.contains(u"Riferimento"_s), qPrintable(message));
        QCOMPARE(folder->contents(), before);
    }
};

ZELTO_TEST(TestExampleJob)
#include "tst_example_job.moc"
