// SPDX-License-Identifier: GPL-3.0-or-later
// Reading databases of the Windows edition's engine.
#include "jet_dump.h"
#include "store/jet/conversion.h"
#include "store_fixture.h"
#include "support/runner.h"

#include <QDir>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zelto::store;
using namespace zelto::test;

namespace {

const QString Jet3 = QStringLiteral(JET_FOLDER "/job-jet3.zlt");

/// The records of a job in the notation of the dumps.
QStringList recordsOf(Database& job)
{
    QStringList records;
    for (const TableDef& table : jobTables()) {
        Query rows = job.query(u"SELECT * FROM "_s + quoted(table.name));
        for (; !rows.atEnd(); rows.next()) {
            QString record = u"R"_s;
            for (int i = 0; i < rows.fieldCount(); ++i) {
                const Value value = rows.field(i);
                const FieldType type = table.fields[static_cast<std::size_t>(i)].type;
                record += u'\t';
                record += value.isNull()            ? u"~"_s
                          : value.isInteger()       ? FieldText()(value.integer())
                          : type == FieldType::Date ? u"d:%1T00:00:00.000"_s.arg(value.text())
                                                    : FieldText()(value.text());
            }
            records << record;
        }
    }
    records.sort();
    return records;
}

/// The small job of the tests with some bytes replaced wherever they are.
QString changedJob(const JobFolder& folder, const QByteArray& from, const QByteArray& to)
{
    QByteArray bytes = bytesOf(Jet3);
    if (!bytes.contains(from))
        qFatal("the job has no such bytes");
    writeBytes(folder.file(u"VECCHIO.ZLT"_s), bytes.replace(from, to));
    return folder.file(u"VECCHIO.ZLT"_s);
}

QByteArray bytesOfNumber(double number)
{
    return {reinterpret_cast<const char*>(&number), sizeof number};
}

const auto NoCheck = [](Database& /*job*/) {};

} // namespace

class TestJet : public QObject
{
    Q_OBJECT

private slots:
    void contents_data()
    {
        QTest::addColumn<QString>("path");
        QStringList folders{QStringLiteral(JET_FOLDER)};
        // Databases that the engine itself made, where somebody has some, each with its dump.
        const QString samples = qEnvironmentVariable("ZELTO_JET_SAMPLES");
        if (!samples.isEmpty())
            folders << samples;
        for (const QString& folder : folders)
            for (const QFileInfo& file :
                 QDir(folder).entryInfoList({u"*.zlt"_s, u"*.mdb"_s}, QDir::Files))
                QTest::addRow("%s", qPrintable(file.fileName())) << file.absoluteFilePath();
        if (samples.isEmpty())
            qInfo("ZELTO_JET_SAMPLES names no folder of databases that the engine made");
    }

    void contents()
    {
        QFETCH(QString, path);
        QVERIFY(zelto::store::jet::isJetFile(path));
        int unreadable = 0;
        const QStringList read = jetDump(path, unreadable).split(u'\n');
        const QString dump =
            QFileInfo(path).path() + u'/' + QFileInfo(path).completeBaseName() + u".dump"_s;
        // Of binary data the dumps have a digest, too, that is not known.
        static const QRegularExpression digest(u"(\tx:\\d+):[0-9a-f]{16}"_s);
        const QStringList expected =
            QString::fromUtf8(bytesOf(dump)).replace(digest, u"\\1"_s).split(u'\n');
        QVERIFY(expected.size() > 2);
        QCOMPARE(unreadable, 0);
        QCOMPARE(read, expected);
    }

    void conversion_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("Jet 3") << u"job-jet3"_s;
        QTest::newRow("Jet 4") << u"job-jet4"_s;
    }

    void conversion()
    {
        QFETCH(QString, name);
        const QString original = QStringLiteral(JET_FOLDER "/") + name + u".zlt"_s;
        const QByteArray before = bytesOf(original);
        const JobFolder folder;
        const QString target = folder.file(u"NUOVO.ZLT"_s);
        bool checked = false;
        const auto report = jet::convertJob(original, target, [&](Database& job) {
            checked = !job.records(TabellaVani).atEnd() && !QFile::exists(target);
        });
        QVERIFY(checked);
        QStringList expected =
            QString::fromUtf8(bytesOf(QStringLiteral(JET_FOLDER "/") + name + u".dump"_s))
                .split(u'\n');
        expected = expected.filter(QRegularExpression(u"^R"_s));
        expected.sort();
        Database job = Database::open(target);
        QCOMPARE(recordsOf(job), expected);
        QCOMPARE(report.remarks, QStringList());
        QCOMPARE(report.units, job.count(TabellaUnita));
        QCOMPARE(report.rooms, job.count(TabellaVani));
        QCOMPARE(bytesOf(original), before);
        QCOMPARE(folder.names(), QStringList(u"NUOVO.ZLT"_s));
    }

    void realFiles_data()
    {
        QTest::addColumn<QByteArray>("from");
        QTest::addColumn<QByteArray>("to");
        QTest::addColumn<QString>("query"); // its only result
        QTest::addColumn<QString>("result");
        QTest::addColumn<QString>("remark"); // of the last one
        QTest::newRow("field missing, another there")
            << QByteArray("Livello") << QByteArray("Livellx")
            << u"SELECT count(Livello) FROM [Unità immobiliari]"_s << u"0"_s
            << u"Il campo «Livellx» della tabella «Unità immobiliari»"_s;
        QTest::newRow("names in other letters")
            << QByteArray("Prospetto") << QByteArray("prospetto")
            << u"SELECT Prospetto FROM Vani WHERE Chiave = '   24    5'"_s << u"0.9"_s << QString();
        QTest::newRow("fields in another order")
            << QByteArray("\tProspetto\nLuminosit\xe0") << QByteArray("\nLuminosit\xe0\tProspetto")
            << u"SELECT [Luminosità] FROM Vani WHERE Chiave = '   24    5'"_s << u"0.9"_s
            << QString();
        QTest::newRow("no lists") << QByteArray("Variabili") << QByteArray("Varianti!")
                                  << u"SELECT Var0 FROM Variabili"_s << u" "_s << QString();
        QTest::newRow("date beyond the calendar")
            << bytesOfNumber(41689) << bytesOfNumber(1e9) << u"SELECT Data FROM [Dati Generali]"_s
            << QString() << u"Tabella «Dati Generali», record 1: il campo «Data»"_s;
        QTest::newRow("date before the first")
            << bytesOfNumber(41689) << bytesOfNumber(-1.25) << u"SELECT Data FROM [Dati Generali]"_s
            << u"1899-12-29"_s << QString();
        // The mark of the first room's place on its page.
        const QByteArray rooms("\x01\x01\x02\x00\x06\x00\x00\x00\x22\x00\xcd", 11);
        QTest::newRow("deleted record")
            << rooms + '\x07' << rooms + '\x87' << u"SELECT count(*) FROM Vani"_s << u"100"_s
            << u"Tabella «Vani»: l'archivio dichiara"_s;
        QTest::newRow("record that moved to nowhere")
            << rooms + '\x07' << rooms + '\x47' << u"SELECT count(*) FROM Vani"_s << u"100"_s
            << u"Tabella «Vani»: l'archivio dichiara"_s;
        QTest::newRow("bytes without a character")
            << QByteArray("Bagno") << QByteArray("\x81\x90\x9d-\x80")
            << u"SELECT Ambiente FROM Vani WHERE Chiave = '   24    3'"_s
            << QString(u"\u0081\u0090\u009d-€"_s) << QString();
    }

    void realFiles()
    {
        QFETCH(QByteArray, from);
        QFETCH(QByteArray, to);
        QFETCH(QString, query);
        QFETCH(QString, remark);
        const JobFolder folder;
        const QString target = folder.file(u"NUOVO.ZLT"_s);
        const auto report = jet::convertJob(changedJob(folder, from, to), target, NoCheck);
        Database job = Database::open(target);
        QTEST(job.query(query).text(0), "result");
        QCOMPARE(report.remarks.isEmpty(), remark.isEmpty());
        QVERIFY2(report.text().section(u'\n', -1).contains(remark), qPrintable(report.text()));
    }

    void refused_data()
    {
        QTest::addColumn<QByteArray>("from");
        QTest::addColumn<QByteArray>("to");
        QTest::addColumn<int>("error");
        QTest::addColumn<QString>("text");
        QTest::newRow("other version")
            << QByteArray("2009") << QByteArray("1997") << 3421 << u"Formato non compatibile"_s;
        QTest::newRow("no marker")
            << QByteArray("ZELTO") << QByteArray("ALTRO") << 3421 << u"Formato non compatibile"_s;
        QTest::newRow("text too long") << QByteArray("Relazione") << QByteArray("Tabella 1") << 3163
                                       << u"tabella «Dati Generali», record 1"_s;
        QTest::newRow("NUL in a text")
            << QByteArray("Bagno") << QByteArray("Ba\0no", 5) << 3421
            << u"tabella «Vani», record 4: Il testo per il campo «Ambi"_s;
        QTest::newRow("same key twice") << QByteArray("    2int") << QByteArray("    1int") << 3022
                                        << u"tabella «Unità immobiliari», record 2"_s;
        QTest::newRow("no rooms") << QByteArray("Vani") << QByteArray("Vano") << 3078
                                  << u"«Vani»"_s;
        QTest::newRow("more rows than a page can have")
            << QByteArray("\x01\x01\x02\x00\x06\x00\x00\x00\x22\x00", 10)
            << QByteArray("\x01\x01\x02\x00\x06\x00\x00\x00\xff\xff", 10) << 3058
            << u"tabella «Vani», record 35"_s;
        QTest::newRow("another file")
            << QByteArray("Standard Jet DB") << QByteArray("Standard JPG DB") << 3343 << QString();
    }

    void refused()
    {
        QFETCH(QByteArray, from);
        QFETCH(QByteArray, to);
        QFETCH(int, error);
        QFETCH(QString, text);
        const JobFolder folder;
        const QString original = changedJob(folder, from, to);
        QString said;
        const int number = errorOf([&] {
            try {
                (void)jet::convertJob(original, folder.file(u"NUOVO.ZLT"_s), NoCheck);
            } catch (const DatabaseError& failure) {
                said = failure.description();
                throw;
            }
        });
        QCOMPARE(number, error);
        QVERIFY2(said.contains(text), qPrintable(said));
        QCOMPARE(folder.names(), QStringList(u"VECCHIO.ZLT"_s));
    }

    void names()
    {
        const JobFolder folder;
        const QString job = folder.file(u"Casa.zlt"_s);
        QCOMPARE(jet::convertedPath(job), folder.file(u"Casa convertito.ZLT"_s));
        QVERIFY(!jet::mayBeInUse(job));
        writeBytes(folder.file(u"CASA.LDB"_s), "lock");
        QVERIFY(jet::mayBeInUse(job));
        QVERIFY(!jet::isJetFile(folder.file(u"none"_s)) && !jet::isJetFile(folder.newJob()));
        const QString large = folder.file(u"GRANDE.ZLT"_s);
        QVERIFY(QFile::copy(Jet3, large) && QFile::resize(large, 257 << 20));
        QCOMPARE(errorOf([&] { (void)jet::convertJob(large, job, NoCheck); }), 3049);
        // A check that fails leaves nothing, and a name that is taken is not touched.
        const auto refuses = [](Database& made) { (void)made.records(u"Altro"); };
        QCOMPARE(errorOf([&] { (void)jet::convertJob(Jet3, job, refuses); }), 3078);
        QCOMPARE(folder.names().filter(u"Casa"_s), QStringList());
        QCOMPARE(
            errorOf([&] { (void)jet::convertJob(Jet3, folder.file(u"lavoro.ZLT"_s), NoCheck); }),
            3204);
    }
};

ZELTO_TEST(TestJet)
#include "tst_jet.moc"
