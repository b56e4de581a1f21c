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
struct TextFolder : JobFolder
{
    TextFolder()
    {
        const QDir example(QStringLiteral(EXAMPLE_FOLDER));
        for (const QString& name : example.entryList(QDir::Files))
            QFile::copy(example.filePath(name), file(name));
    }
};

/// What the reader says of the example with a text in place of another: "ok", or the fault without
/// its place, which must be the line of that text.
QString verdict(QStringView name, const QByteArray& before, const QByteArray& after)
{
    const TextFolder folder;
    const QString file = u"%1.txt"_s.arg(name);
    QByteArray text = bytesOf(folder.file(file));
    const auto place = text.indexOf(before);
    if (place < 0)
        return u"no such text"_s;
    const QString line = u"%1:%2: "_s.arg(file).arg(text.first(place).count('\n') + 1);
    writeBytes(folder.file(file), text.replace(place, before.size(), after));
    try {
        data::readJobText(folder.file(u"."_s));
    } catch (const data::DataFault& fault) {
        return QString::fromUtf8(fault.what()).remove(folder.file(u"./"_s)).remove(line);
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

    void faults()
    {
        const QStringView units = u"unita";
        QCOMPARE(verdict(units, "", ""), u"ok"_s);
        QCOMPARE(verdict(units, "48.35", "48,35"), u"«48,35» non è un numero."_s);
        QCOMPARE(verdict(units, "[Negozio]", "[Negozi]"),
                 u"[Negozi] non è nel gruppo Destinazione."_s);
        QCOMPARE(verdict(units, "[Negozio]", "[Negozio"),
                 u"[Negozio non è nel gruppo Destinazione."_s);
        QCOMPARE(verdict(units, "[Negozio]", "1.40"), u"ok"_s);
        QCOMPARE(verdict(units, "| [Piena]    | [Strada]\n", "| [Strada]\n"),
                 u"7 celle invece di 8."_s);
        QCOMPARE(verdict(units, "| A | 0", "| C | 0"), u"scala «C» non dichiarata."_s);
        QCOMPARE(verdict(units, "| A | 0 ", "| A | - "), u"«-» non è un numero."_s);
        QCOMPARE(verdict(units, "| 2\n", "| 4\n"), u"tabella «4» non dichiarata."_s);
        QCOMPARE(verdict(units, "Negozio 1", " Negozio 1"), u"5 celle invece di 8."_s);
        QCOMPARE(verdict(units, "Negozio 1", "Negozio\t1"), u"tabulazione al posto degli spazi."_s);

        const QStringView groups = u"coefficienti";
        QCOMPARE(verdict(groups, "[Prospetto]", "[Prospetti]"),
                 u"gruppo «Prospetti» sconosciuto."_s);
        QCOMPARE(verdict(groups, "[Ambiente]\n", ""), u"coefficiente fuori da un gruppo."_s);
        QCOMPARE(verdict(groups, "BalcScop", "BalcCop"), u"variabile «BalcCop» ripetuta."_s);
        QCOMPARE(verdict(groups, "BalcScop", "BalcScope"),
                 u"«BalcScope» è più lungo di 8 caratteri."_s);

        const QStringView general = u"dati_generali";
        QCOMPARE(verdict(general, "05-18", "02-30"),
                 u"«2024-02-30» non è una data (aaaa-mm-gg)."_s);
        QCOMPARE(verdict(general, "| 2 | Acqua", "| 4 | Acqua"), u"la tabella 3 manca."_s);
        QCOMPARE(verdict(general, "Nota |", "Note |"), u"voce «Note» sconosciuta."_s);
        QCOMPARE(verdict(general, "propriet\xc3\xa0", "propriet\xe0"),
                 u"dati_generali.txt: il testo non è in UTF-8."_s);
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
        const TextFolder folder;
        // Longer than the field, which only the job file itself notices.
        writeBytes(folder.file(u"unita.txt"_s),
                   "Un riferimento troppo lungo | Piano terra | A | 0 | 1\n");
        const QString job = folder.file(u"LAVORO.ZLT"_s);
        writeBytes(job, "former");
        const auto before = folder.contents();
        QProcess tool;
        tool.start(QStringLiteral(BUILD_TOOL), {folder.file(u"."_s), job});
        QVERIFY(tool.waitForFinished());
        QCOMPARE(tool.exitCode(), 2);
        const QByteArray message = tool.readAllStandardError();
        QVERIFY2(message.contains("unita.txt:1: ") && message.contains("Riferimento"), message);
        QCOMPARE(folder.contents(), before);
    }
};

ZELTO_TEST(TestExampleJob)
#include "tst_example_job.moc"
