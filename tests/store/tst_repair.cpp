// SPDX-License-Identifier: GPL-3.0-or-later
// Repairing damaged copies of the example job: the rooms that come back, measured against those
// whose bytes are still somewhere in the file.
#include "store/recovery/repair.h"
#include "store_fixture.h"
#include "support/runner.h"

#include <QDir>
#include <QTest>

#include <functional>
#include <random>
#include <set>

using namespace Qt::StringLiterals;
using namespace zelto::store;
using namespace zelto::test;

namespace {

constexpr int PageSize = 4096;

/// Makes the rooms' table one that numbers its records.
const QByteArray NumberedRooms =
    "CREATE TABLE v AS SELECT * FROM Vani; DROP TABLE Vani;"
    "ALTER TABLE v RENAME TO Vani; CREATE UNIQUE INDEX i ON Vani (Chiave);";

/// The list of tables can no longer be read.
void loseTables(const QString& path)
{
    writeBytes(path, bytesOf(path).replace(100, 8, QByteArray(8, '\xff')));
}

/// The key of a room, and the texts behind its numbers as a record holds them one after the other.
using Room = std::pair<QByteArray, QByteArray>;

std::set<Room> roomsOf(const QString& path)
{
    Database job = Database::open(path, OpenMode::ReadOnly);
    Query records = job.records(TabellaVani);
    std::set<Room> rooms;
    for (; !records.atEnd(); records.next()) {
        QByteArray rest;
        for (int field = 3; field < records.fieldCount(); ++field)
            rest += records.text(field).toUtf8();
        rooms.emplace(records.text(0).toUtf8(), rest);
    }
    return rooms;
}

/// Key, two small numbers of at most one byte each, and the texts.
bool isReadable(const Room& room, const QByteArray& bytes)
{
    const auto& [key, rest] = room;
    for (qsizetype at = bytes.indexOf(key); at >= 0; at = bytes.indexOf(key, at + 1))
        for (int numbers = 0; numbers <= 2; ++numbers)
            if (bytes.mid(at + key.size() + numbers, rest.size()) == rest)
                return true;
    return false;
}

qsizetype readableIn(const QByteArray& bytes, const std::set<Room>& rooms)
{
    return std::ranges::count_if(rooms, [&](const Room& room) { return isReadable(room, bytes); });
}

using Damage = std::function<void(QByteArray&, std::mt19937&)>;

int below(std::mt19937& random, qsizetype limit)
{
    return static_cast<int>(random() % static_cast<unsigned long>(limit));
}

Damage flips(int count)
{
    return [count](QByteArray& bytes, std::mt19937& random) {
        for (int i = 0; i < count; ++i) {
            char& byte = bytes[below(random, bytes.size())];
            byte = static_cast<char>(byte ^ (1 + below(random, 255)));
        }
    };
}

void cutTheEnd(QByteArray& bytes, std::mt19937& random)
{
    bytes.truncate(bytes.size() - 1 - below(random, bytes.size() * 3 / 4));
}

Damage overwritePages(int count, char with)
{
    return [count, with](QByteArray& bytes, std::mt19937& random) {
        for (int i = 0; i < count; ++i) {
            const qsizetype page = below(random, bytes.size() / PageSize);
            std::fill_n(bytes.begin() + page * PageSize, PageSize, with);
        }
    };
}

} // namespace

Q_DECLARE_METATYPE(Damage)

class TestRepair : public QObject
{
    Q_OBJECT

private slots:
    void roomsComeBack_data()
    {
        QTest::addColumn<Damage>("damage");
        QTest::addColumn<int>("least"); // percentage of the readable rooms
        QTest::newRow("1 byte changed") << flips(1) << 99;
        QTest::newRow("200 bytes changed") << flips(200) << 95;
        QTest::newRow("end cut off") << Damage(cutTheEnd) << 100;
        QTest::newRow("5 pages of zeros") << overwritePages(5, '\0') << 100;
        QTest::newRow("page of 0xff") << overwritePages(1, '\xff') << 100;
    }

    /// Bytes of a room may be there while what tells where it begins is not.
    void roomsComeBack()
    {
        QFETCH(Damage, damage);
        const QByteArray whole = bytesOf(QStringLiteral(EXAMPLE_JOB));
        const std::set<Room> rooms = roomsOf(QStringLiteral(EXAMPLE_JOB));
        QCOMPARE(readableIn(whole, rooms), static_cast<qsizetype>(rooms.size()));
        std::mt19937 random(20240518);
        qsizetype readable = 0;
        qsizetype back = 0;
        for (int copy = 0; copy < 25; ++copy) {
            const JobFolder folder;
            const QString path = folder.file(u"LAVORO.ZLT"_s);
            QByteArray bytes = whole;
            damage(bytes, random);
            writeBytes(path, bytes);
            readable += readableIn(bytes, rooms);
            if (errorOf([&] { repair(path); }) == 0) {
                back += std::ranges::count_if(
                    roomsOf(path), [&](const Room& room) { return rooms.contains(room); });
            } else {
                QCOMPARE(readableIn(bytes, rooms), 0);
                QCOMPARE(bytesOf(path), bytes);
            }
        }
        qInfo("%lld rooms back, %lld still readable", static_cast<long long>(back),
              static_cast<long long>(readable));
        QFETCH(int, least);
        QVERIFY(back * 100 >= readable * least);
    }

    void formsOfFile_data()
    {
        QTest::addColumn<QByteArray>("form");
        QTest::newRow("512") << QByteArray("PRAGMA page_size=512; VACUUM");
        QTest::newRow("65536") << QByteArray("PRAGMA page_size=65536; VACUUM");
        QTest::newRow("auto-vacuum") << QByteArray("PRAGMA auto_vacuum=FULL; VACUUM");
        QTest::newRow("numbered rooms") << NumberedRooms;
    }

    /// The list of tables is lost, and the memos take many pages.
    void formsOfFile()
    {
        QFETCH(QByteArray, form);
        const JobFolder folder;
        const QString path = folder.file(u"LAVORO.ZLT"_s);
        QVERIFY(QFile::copy(QStringLiteral(EXAMPLE_JOB), path));
        RawFile(path).run(form);
        loseTables(path);
        const RepairResult result = repair(path);
        QCOMPARE(result.leftOut, 0);
        QCOMPARE(roomsOf(path).size(), roomsOf(QStringLiteral(EXAMPLE_JOB)).size());
        Database job = Database::open(path);
        Database example = Database::open(QStringLiteral(EXAMPLE_JOB), OpenMode::ReadOnly);
        QCOMPARE(job.records(TabellaDatiGenerali).text(5),
                 example.records(TabellaDatiGenerali).text(5));
        for (int group = 0; group < 7; ++group)
            QCOMPARE(job.records(TabellaVariabili).text(group),
                     example.records(TabellaVariabili).text(group));
    }

    /// How much of a file that was cut is missing stands in its header.
    void cutFile()
    {
        const JobFolder folder;
        const QString path = folder.file(u"LAVORO.ZLT"_s);
        const QByteArray whole = bytesOf(QStringLiteral(EXAMPLE_JOB));
        writeBytes(path, whole.left(whole.size() - 3 * PageSize));
        const RepairResult result = repair(path);
        QVERIFY(result.damaged);
        QCOMPARE(result.pages, whole.size() / PageSize);
        QCOMPARE(result.missingPages, 3);
    }

    void soundFiles_data()
    {
        QTest::addColumn<QByteArray>("change");
        QTest::addColumn<bool>("damaged");
        QTest::addColumn<QString>("room");
        QTest::newRow("job") << QByteArray("UPDATE Vani SET Ambiente='Bagno'") << false
                             << u"Bagno"_s;
        QTest::newRow("other database") << QByteArray("DROP TABLE ZELTO") << false << u""_s;
        QTest::newRow("other format")
            << QByteArray("UPDATE ZELTO SET Versione='1997'") << false << u""_s;
        const QByteArray others = "CREATE TABLE appunti (a); INSERT INTO appunti VALUES (x'00');";
        QTest::newRow("tables beside ours") << others << false << u""_s;
        QTest::newRow("tables that are not ours")
            << QByteArray(NumberedRooms + others + "UPDATE Vani SET Ambiente='Bagno'") << true
            << u"Bagno"_s;
        QTest::newRow("broken text")
            << QByteArray("UPDATE Vani SET Ambiente=CAST(x'4261ff' AS TEXT)") << true
            << u"Ba\ufffd"_s;
        QTest::newRow("text too long")
            << QByteArray(NumberedRooms +
                          "UPDATE Vani SET Ambiente='sedici caratteri', Prospetto='1'")
            << true << u""_s;
        QTest::newRow("no coefficients") << QByteArray("DROP TABLE Variabili") << false << u""_s;
        QTest::newRow("no general data")
            << QByteArray("DROP TABLE [Dati Generali]") << true << u""_s;
        QTest::newRow("view") << QByteArray("CREATE VIEW v AS SELECT 1") << true << u""_s;
        QTest::newRow("no marker") << QByteArray("DELETE FROM ZELTO") << true << u""_s;
    }

    void soundFiles()
    {
        QFETCH(QByteArray, change);
        QFETCH(bool, damaged);
        QFETCH(QString, room);
        const JobFolder folder;
        const QString path = folder.newJob();
        RawFile(path).run(change);
        const RepairResult result = repair(path);
        QCOMPARE(!result.damagedOriginal.isEmpty(), damaged);
        QCOMPARE(folder.names().size(), damaged ? 2 : 1);
        Database database = Database::open(path);
        QCOMPARE(database.records(TabellaVani).text(3), room);
        if (change.contains("appunti"))
            QCOMPARE(database.query(u"SELECT hex(a) FROM appunti"_s).text(0), u"00"_s);
        if (damaged) {
            QCOMPARE(database.records(TabellaZelto).text(0), u"2009"_s);
            QCOMPARE(database.count(TabellaDatiGenerali), 1);
            QCOMPARE(database.records(TabellaVariabili).text(6), u" "_s);
            QCOMPARE(result.units, 1);
        }
    }

    void lessThanAJob_data()
    {
        QTest::addColumn<QByteArray>("change");
        QTest::addColumn<QString>("units");
        QTest::addColumn<QString>("rooms");
        QTest::newRow("rooms without unit")
            << QByteArray("DELETE FROM [Unità immobiliari]; INSERT INTO Vani (Chiave, [Riferimento "
                          "unità], Posizione) VALUES ('    3    2', 3, 2)")
            << u"    1,    3"_s << u"    1    1,    3    2"_s;
        QTest::newRow("keys lost")
            << QByteArray("UPDATE Vani SET Chiave='x'; UPDATE [Unità immobiliari] SET Chiave='y'")
            << u"    1"_s << u"    1    1"_s;
        QTest::newRow("numbers lost")
            << QByteArray("UPDATE Vani SET [Riferimento unità]=-9, Posizione=NULL") << u"    1"_s
            << u"    1    1"_s;
        QTest::newRow("key and number lost")
            << QByteArray("UPDATE Vani SET Chiave='x', Posizione=0") << u"    1"_s << u""_s;
    }

    void lessThanAJob()
    {
        QFETCH(QByteArray, change);
        const JobFolder folder;
        const QString path = folder.newJob();
        RawFile(path).run(change + "; DROP TABLE [Dati Generali]");
        repair(path);
        Database job = Database::open(path);
        const auto keys = [&](QStringView table) {
            QStringList found;
            for (Query records = job.records(table); !records.atEnd(); records.next())
                found += records.text(0);
            return found.join(u',');
        };
        QTEST(keys(TabellaUnita), "units");
        QTEST(keys(TabellaVani), "rooms");
    }

    /// Their pages are still in the file.
    void deletedRoomsStayAway()
    {
        const JobFolder folder;
        const QString path = folder.file(u"LAVORO.ZLT"_s);
        QVERIFY(QFile::copy(QStringLiteral(EXAMPLE_JOB), path));
        RawFile(path).run("PRAGMA secure_delete=OFF; DELETE FROM Vani WHERE Chiave > '    3'");
        const std::set<Room> all = roomsOf(QStringLiteral(EXAMPLE_JOB));
        const std::set<Room> left = roomsOf(path);
        QVERIFY(readableIn(bytesOf(path), all) > static_cast<qsizetype>(left.size()));
        loseTables(path);
        repair(path);
        QCOMPARE(roomsOf(path).size(), left.size());
    }

    void beyondRepair()
    {
        const QByteArray head = bytesOf(QStringLiteral(EXAMPLE_JOB)).left(PageSize);
        for (const QByteArray& bytes : {QByteArray(), QByteArray(9000, 'x'), head}) {
            const JobFolder folder;
            const QString path = folder.file(u"LAVORO.ZLT"_s);
            writeBytes(path, bytes);
            QCOMPARE(errorOf([&] { repair(path); }), 3049);
            QCOMPARE(bytesOf(path), bytes);
            QCOMPARE(folder.names().size(), 1);
        }
    }

    void damagedOriginalsAreKept()
    {
        const JobFolder folder;
        const QString path = folder.newJob(u"lavoro.zlt"_s);
        // The engine does not even look at the changes that wait beside such a file.
        QByteArray bytes = bytesOf(path).replace(0, 8, QByteArray(8, '\xff'));
        for (const QString& name : {u"LAVORO.DAN"_s, u"LAVORO-1.DAN"_s}) {
            writeBytes(path, bytes);
            writeBytes(path + u"-journal"_s, "waiting");
            QCOMPARE(repair(path).damagedOriginal, folder.file(name));
            QCOMPARE(bytesOf(folder.file(name)), bytes);
            QCOMPARE(bytesOf(folder.file(name) + u"-journal"_s), "waiting");
            QVERIFY(!QFile::exists(path + u"-journal"_s));
            bytes[1] = '\1';
        }
        QCOMPARE(Database::open(path).count(TabellaVani), 1);
    }
};

ZELTO_TEST(TestRepair)
#include "tst_repair.moc"
