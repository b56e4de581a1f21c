// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/database.h"
#include "store/schema.h"
#include "support/runner.h"
#include "text/table_text.h"

#include <QDir>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

using namespace zelto;

class TestExampleJob : public QObject
{
    Q_OBJECT

private slots:
    void size();
    void references();
    void staircases();
    void generalData();
    void report();
    void faultKeepsOldFile();

private:
    static QSet<QString> column(const QString& tableText, int column);

    store::Database m_job =
        store::Database::open(QStringLiteral(EXAMPLE_JOB), store::OpenMode::ReadOnly);
};

QSet<QString> TestExampleJob::column(const QString& tableText, int column)
{
    const int rows = text::rowCount(tableText);
    const text::CellTable table = text::TextToTable(tableText, rows, 3);
    QSet<QString> cells;
    for (int row = 1; row <= rows; ++row)
        cells.insert(table.at(row, column));
    return cells;
}

void TestExampleJob::size()
{
    QVERIFY(m_job.count(store::TabellaUnita) >= 24);
    QVERIFY(m_job.count(store::TabellaVani) >= 120);
}

void TestExampleJob::references()
{
    const auto groups = m_job.records(store::TabellaVariabili);
    auto rooms = m_job.records(store::TabellaVani);
    for (int group = 1; group <= 6; ++group) {
        const QSet<QString> variables = column(groups.text(group), 2);
        for (rooms.restart({}); !rooms.atEnd(); rooms.next()) {
            const QString cell = rooms.text(group + 4);
            QVERIFY2(cell.startsWith(u'[') && cell.endsWith(u']'), qPrintable(cell));
            QVERIFY2(variables.contains(cell.sliced(1).chopped(1)), qPrintable(cell));
        }
    }
}

void TestExampleJob::staircases()
{
    const QSet<QString> codes = column(m_job.records(store::TabellaDatiGenerali).text(16), 1);
    QSet<QString> used;
    auto units = m_job.records(store::TabellaUnita);
    for (; !units.atEnd(); units.next())
        used.insert(units.text(4));
    QVERIFY(used.remove(QString()));
    QCOMPARE(used, (QSet<QString>{u"A"_s, u"B"_s}));
    QVERIFY(codes.contains(used));
}

void TestExampleJob::generalData()
{
    const auto data = m_job.records(store::TabellaDatiGenerali);
    QCOMPARE(data.text(1), u"CONDOMINIO I GELSI"_s);
    QCOMPARE(data.text(4), u"2024-05-18"_s);
    QCOMPARE(data.text(8), u"Autorimessa interrata"_s);
    QVERIFY(data.isNull(9));
}

void TestExampleJob::report()
{
    const QString report = m_job.records(store::TabellaDatiGenerali).text(5);
    const auto words = report.split(QRegularExpression(u"\\s+"_s), Qt::SkipEmptyParts);
    QVERIFY(words.size() >= 1300 && words.size() <= 1800);
    QVERIFY(report.contains(u"\r\n- Consistenza totale: C.T. = C.V.T. x P.R.\r\n"_s));
}

void TestExampleJob::faultKeepsOldFile()
{
    const QTemporaryDir folder;
    const QDir example(QStringLiteral(EXAMPLE_FOLDER));
    for (const QString& name : example.entryList(QDir::Files))
        QVERIFY(QFile::copy(example.filePath(name), folder.filePath(name)));
    const QString output = folder.filePath(u"LAVORO.ZLT"_s);
    QVERIFY(QFile::copy(QStringLiteral(EXAMPLE_JOB), output));

    // Longer than the field, which only the job file itself notices.
    QFile units(folder.filePath(u"unita.txt"_s));
    QVERIFY(units.open(QIODevice::ReadWrite | QIODevice::Truncate));
    units.write("Un riferimento troppo lungo | Piano terra | A | 0 | 1\n");
    units.close();

    QProcess tool;
    tool.start(QStringLiteral(BUILD_TOOL), {folder.path(), output});
    QVERIFY(tool.waitForFinished());
    QCOMPARE(tool.exitCode(), 2);
    const QString message = QString::fromUtf8(tool.readAllStandardError());
    QVERIFY2(message.contains(u"unita.txt:1: "_s), qPrintable(message));
    QVERIFY2(message.contains(u"Riferimento"_s), qPrintable(message));
    QCOMPARE(store::Database::open(output).count(store::TabellaUnita),
             m_job.count(store::TabellaUnita));
    const auto everything = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
    QCOMPARE(QDir(folder.path()).entryList(everything).size(),
             example.entryList(QDir::Files).size() + 1);
}

ZELTO_TEST(TestExampleJob)
#include "tst_example_job.moc"
