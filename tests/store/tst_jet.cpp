// SPDX-License-Identifier: GPL-3.0-or-later
// Reading databases of the Windows edition's engine.
#include "store/jet/conversion.h"
#include "store/jet/table.h"
#include "store_fixture.h"
#include "support/columns.h"
#include "support/runner.h"

#include <QDateTime>
#include <QDir>
#include <QRegularExpression>
#include <QTimeZone>

#include <cmath>

using namespace Qt::StringLiterals;
using namespace zelto::store;
using namespace zelto::test;

namespace {

const QString Jet3 = QStringLiteral(JET_FOLDER "/job-jet3.zlt");

/// The notation of the dumps.
struct FieldText
{
    QString operator()(std::monostate /*null*/) const { return u"~"_s; }
    QString operator()(bool value) const { return value ? u"b:1"_s : u"b:0"_s; }
    QString operator()(qint64 value) const { return u"i:%1"_s.arg(value); }
    QString operator()(double value) const { return QString::asprintf("f:%.17g", value); }
    QString operator()(jet::Money value) const { return u"m:%1"_s.arg(value.tenThousandths); }
    QString operator()(jet::Date value) const
    {
        double day = 0;
        const double time = std::abs(std::modf(value.days, &day));
        const QDate date = QDate(1899, 12, 30).addDays(static_cast<qint64>(day));
        return QDateTime(date, QTime::fromMSecsSinceStartOfDay(qRound(time * 86'400'000)),
                         QTimeZone::utc())
            .toString(u"'d:'yyyy-MM-ddTHH:mm:ss.zzz"_s);
    }
    QString operator()(const QString& value) const
    {
        QString text = u"s:"_s;
        for (const QChar c : value)
            text += c == u'\\'                 ? u"\\\\"_s
                    : c < u' ' || c == u'\x7f' ? u"\\x%1"_s.arg(c.unicode(), 2, 16, QChar(u'0'))
                                               : QString(c);
        return text;
    }
    QString operator()(const QByteArray& value) const { return u"x:%1"_s.arg(value.size()); }
};

/// The lines of the dump that lies beside a database.
QStringList dumpBeside(const QString& path)
{
    // Of binary data the dumps have a digest, too, that is not known.
    static const QRegularExpression digest(u"(\tx:\\d+):[0-9a-f]{16}"_s);
    const QString dump = path.chopped(4) + u".dump"_s;
    return QString::fromUtf8(bytesOf(dump)).replace(digest, u"\\1"_s).split(u'\n');
}

/// The same of what is read: every table with its columns and rows, and how many rows were not.
QStringList dumpOf(const QString& path, int& unreadable)
{
    const jet::JetFile file(path);
    QStringList dump;
    for (const jet::TableEntry& entry : jet::userTables(file)) {
        const jet::Table table(file, entry.definitionPage);
        dump += u"T\t"_s + entry.name;
        for (const jet::Column& column : table.columns())
            dump += u"C\t%1\t%2\t%3"_s.arg(column.name)
                        .arg(static_cast<unsigned>(column.type))
                        .arg(column.size);
        const auto counts = table.forEachRow([&](const std::vector<jet::Field>& fields) {
            dump += u"R"_s;
            for (const jet::Field& field : fields)
                dump.back() += u'\t' + std::visit(FieldText(), field);
        });
        unreadable += counts.unreadable;
    }
    return dump << QString();
}

/// The records of a converted job, sorted.
QStringList recordsOf(Database& job)
{
    QStringList records;
    for (const TableDef& table : jobTables())
        for (const Record& record : job.records(table.name).records()) {
            records << u"R"_s;
            for (std::size_t i = 0; i < record.size(); ++i) {
                const Value& value = record[i];
                const bool isDate = table.fields[i].type == FieldType::Date;
                records.back() += u'\t';
                records.back() += value.isNull()      ? u"~"_s
                                  : value.isInteger() ? FieldText()(value.integer())
                                  : isDate            ? u"d:%1T00:00:00.000"_s.arg(value.text())
                                                      : FieldText()(value.text());
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

/// How the first page of the rooms' table begins, with the number of its rows at the end.
const QByteArray RoomsPage("\x01\x01\x02\x00\x06\x00\x00\x00\x22\x00", 10);

const auto NoCheck = [](Database& /*job*/) {};

} // namespace

class TestJet : public QObject
{
    Q_OBJECT

private slots:
    void contents_data()
    {
        const auto row = columns<QString>("path");
        QStringList folders{QStringLiteral(JET_FOLDER)};
        // Databases that the engine itself made, where somebody has some, each with its dump.
        const QString samples = qEnvironmentVariable("ZELTO_JET_SAMPLES");
        if (!samples.isEmpty())
            folders << samples;
        for (const QString& folder : folders)
            for (const QFileInfo& file :
                 QDir(folder).entryInfoList({u"*.zlt"_s, u"*.mdb"_s}, QDir::Files))
                row(qPrintable(file.fileName()), file.absoluteFilePath());
        if (samples.isEmpty())
            qInfo("ZELTO_JET_SAMPLES names no folder of databases that the engine made");
    }

    void contents()
    {
        QFETCH(QString, path);
        QVERIFY(zelto::store::jet::isJetFile(path));
        int unreadable = 0;
        const QStringList read = dumpOf(path, unreadable);
        const QStringList expected = dumpBeside(path);
        QVERIFY(expected.size() > 2);
        QCOMPARE(unreadable, 0);
        QCOMPARE(read, expected);
    }

    void conversion()
    {
        for (const QString& original : {Jet3, QStringLiteral(JET_FOLDER "/job-jet4.zlt")}) {
            const QByteArray before = bytesOf(original);
            const JobFolder folder;
            const QString target = folder.file(u"NUOVO.ZLT"_s);
            bool checked = false;
            const auto report = jet::convertJob(original, target, [&](Database& job) {
                checked = !job.records(TabellaVani).atEnd() && !QFile::exists(target);
            });
            QVERIFY(checked);
            QStringList expected = dumpBeside(original).filter(QRegularExpression(u"^R"_s));
            expected.sort();
            Database job = Database::open(target);
            QCOMPARE(recordsOf(job), expected);
            QCOMPARE(report.remarks, QStringList());
            QCOMPARE(report.units, job.count(TabellaUnita));
            QCOMPARE(report.rooms, job.count(TabellaVani));
            QCOMPARE(bytesOf(original), before);
            QCOMPARE(folder.names(), QStringList(u"NUOVO.ZLT"_s));
        }
    }

    void realFiles_data()
    {
        // The query has one result; the remark is the last one.
        const auto row = columns<QByteArray, QByteArray, QString, QString, QString>(
            "from", "to", "query", "result", "remark");
        row("field missing, another there", "Livello", "Livellx",
            u"SELECT count(Livello) FROM [Unità immobiliari]"_s, u"0"_s,
            u"Il campo «Livellx» della tabella «Unità immobiliari»"_s);
        row("names in other letters", "Prospetto", "prospetto",
            u"SELECT Prospetto FROM Vani WHERE Chiave = '   24    5'"_s, u"0.9"_s, {});
        row("fields in another order", "\tProspetto\nLuminosit\xe0", "\nLuminosit\xe0\tProspetto",
            u"SELECT [Luminosità] FROM Vani WHERE Chiave = '   24    5'"_s, u"0.9"_s, {});
        row("no lists", "Variabili", "Varianti!", u"SELECT Var0 FROM Variabili"_s, u" "_s, {});
        const QString date = u"SELECT Data FROM [Dati Generali]"_s;
        row("date beyond the calendar", bytesOfNumber(41689), bytesOfNumber(1e9), date, {},
            u"Tabella «Dati Generali», record 1: il campo «Data»"_s);
        row("date before the first", bytesOfNumber(41689), bytesOfNumber(-1.25), date,
            u"1899-12-29"_s, {});
        // The mark of the first room's place on its page.
        for (const auto& [name, mark] :
             {std::pair("deleted record", '\x87'), {"record that moved to nowhere", '\x47'}})
            row(name, RoomsPage + "\xcd\x07", RoomsPage + '\xcd' + mark,
                u"SELECT count(*) FROM Vani"_s, u"100"_s, u"Tabella «Vani»: l'archivio dichiara"_s);
        row("bytes without a character", "Bagno", "\x81\x90\x9d-\x80",
            u"SELECT Ambiente FROM Vani WHERE Chiave = '   24    3'"_s, u"\u0081\u0090\u009d-€"_s,
            {});
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
        const auto row =
            columns<QByteArray, QByteArray, int, QString>("from", "to", "error", "text");
        row("other version", "2009", "1997", 3421, u"Formato non compatibile"_s);
        row("no marker", "ZELTO", "ALTRO", 3421, u"Formato non compatibile"_s);
        row("text too long", "Relazione", "Tabella 1", 3163,
            u"tabella «Dati Generali», record 1"_s);
        row("NUL in a text", "Bagno", QByteArray("Ba\0no", 5), 3421,
            u"tabella «Vani», record 4: Il testo per il campo «Ambi"_s);
        row("same key twice", "    2int", "    1int", 3022,
            u"tabella «Unità immobiliari», record 2"_s);
        row("no rooms", "Vani", "Vano", 3078, u"«Vani»"_s);
        row("more rows than a page can have", RoomsPage, RoomsPage.chopped(2) + "\xff\xff", 3058,
            u"tabella «Vani», record 35"_s);
        row("another file", "Standard Jet DB", "Standard JPG DB", 3343, {});
    }

    void refused()
    {
        QFETCH(QByteArray, from);
        QFETCH(QByteArray, to);
        QFETCH(QString, text);
        const JobFolder folder;
        const QString original = changedJob(folder, from, to);
        const QString target = folder.file(u"NUOVO.ZLT"_s);
        QString said;
        QTEST(errorOf([&] { (void)jet::convertJob(original, target, NoCheck); }, &said), "error");
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
