// SPDX-License-Identifier: GPL-3.0-or-later
#include "data/job_text.h"
#include "support/runner.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zelto::data;

namespace {

QByteArray contents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void write(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
}

/// "ok" or what the reader says of the folder.
QString verdict(const QString& folder)
{
    try {
        readJobText(folder);
    } catch (const DataFault& fault) {
        return QString::fromUtf8(fault.what()).remove(folder + u'/');
    }
    return u"ok"_s;
}

} // namespace

class TestJobText : public QObject
{
    Q_OBJECT

private slots:
    void faults_data();
    void faults();
    void paragraphs();
};

void TestJobText::faults_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");
    QTest::addColumn<QString>("fault");

    const auto row = [](const char* name, QStringView file, const char* before, const char* after,
                        QStringView fault) {
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
    row("staircase", u"unita", "| A | 0", "| C | 0", u"unita.txt:%1: scala «C» non dichiarata.");
    row("height", u"unita", "| A | 0 ", "| A | - ", u"unita.txt:%1: «-» non è un numero.");
    row("table", u"unita", "| 2\n", "| 4\n", u"unita.txt:%1: tabella «4» non dichiarata.");
    row("room first", u"unita", "Negozio 1", " Negozio 1", u"unita.txt:%1: 5 celle invece di 8.");
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

void TestJobText::faults()
{
    QFETCH(QString, file);
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, after);
    QFETCH(QString, fault);

    const QTemporaryDir folder;
    const QDir example(QStringLiteral(EXAMPLE_FOLDER));
    for (const QString& name : example.entryList(QDir::Files))
        QVERIFY(QFile::copy(example.filePath(name), folder.filePath(name)));
    QByteArray text = contents(example.filePath(file));
    const auto place = text.indexOf(before);
    QVERIFY(place >= 0);
    fault.replace(u"%1"_s, QString::number(text.first(place).count('\n') + 1));
    write(folder.filePath(file), text.replace(place, before.size(), after));

    QCOMPARE(verdict(folder.path()), fault);
}

void TestJobText::paragraphs()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"testo.txt"_s);
    write(path, "Uno\ndue\n- tre\n  quattro\n\ncinque\n\n\nsei\n");
    QCOMPARE(readParagraphs(path), u"Uno due\r\n- tre quattro\r\ncinque\r\n\r\nsei\r\n"_s);
}

ZELTO_TEST(TestJobText)

#include "tst_job_text.moc"
