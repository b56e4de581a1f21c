// SPDX-License-Identifier: GPL-3.0-or-later
// Repairing damaged copies of the example job: the rooms that come back, measured against those
// whose bytes are still somewhere in the file.
#include "store/recovery/repair.h"
#include "store_fixture.h"
#include "support/columns.h"
#include "support/dump.h"
#include "support/runner.h"

#include <functional>
#include <random>
#include <set>

using namespace Qt::StringLiterals;
using namespace zelto::store;
using namespace zelto::test;

namespace {

constexpr int PageSize = 4096;
const QString Example = QStringLiteral(EXAMPLE_JOB);

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
    std::set<Room> rooms;
    for (const Record& record : job.records(TabellaVani).records()) {
        QByteArray texts;
        for (const Value& value : std::span(record).subspan(3))
            texts += value.text().toUtf8();
        rooms.emplace(record.front().text().toUtf8(), texts);
    }
    return rooms;
}

/// How many rooms are in the bytes: key, two small numbers of at most one byte each, and the texts.
qsizetype readableIn(const QByteArray& bytes, const std::set<Room>& rooms)
{
    return std::ranges::count_if(rooms, [&](const Room& room) {
        const auto& [key, rest] = room;
        for (qsizetype at = bytes.indexOf(key); at >= 0; at = bytes.indexOf(key, at + 1))
            for (int numbers = 0; numbers <= 2; ++numbers)
                if (bytes.mid(at + key.size() + numbers, rest.size()) == rest)
                    return true;
        return false;
    });
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

/// How many rooms come back of a hundred that can still be read in damaged copies, -1 when a
/// refusal is not right. Bytes of a room may be there while what tells where it begins is not.
double percentageBack(const Damage& damage)
{
    const QByteArray whole = bytesOf(Example);
    const std::set<Room> rooms = roomsOf(Example);
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
        if (errorOf([&] { repair(path); }) == 0)
            back += std::ranges::count_if(roomsOf(path),
                                          [&](const Room& room) { return rooms.contains(room); });
        else if (readableIn(bytes, rooms) != 0 || bytesOf(path) != bytes)
            return -1;
    }
    qInfo() << back << "rooms back," << readable << "still readable";
    return 100.0 * static_cast<double>(back) / static_cast<double>(readable);
}

} // namespace

class TestRepair : public QObject
{
    Q_OBJECT

private slots:
    void roomsComeBack()
    {
        const std::set<Room> rooms = roomsOf(Example);
        QCOMPARE(readableIn(bytesOf(Example), rooms), static_cast<qsizetype>(rooms.size()));
        QVERIFY(percentageBack(flips(1)) >= 99);
        QVERIFY(percentageBack(flips(200)) >= 95);
        QVERIFY(percentageBack(cutTheEnd) >= 100);
        QVERIFY(percentageBack(overwritePages(5, '\0')) >= 100);
        QVERIFY(percentageBack(overwritePages(1, '\xff')) >= 100);
    }

    /// The list of tables is lost, and the memos take many pages.
    void formsOfFile()
    {
        const auto memosOf = [](const QString& file) {
            Database job = Database::open(file, OpenMode::ReadOnly);
            Query groups = job.records(TabellaVariabili);
            return dumpOf(groups) + QStringList(job.records(TabellaDatiGenerali).text(5));
        };
        for (const QByteArray& form :
             {QByteArray("PRAGMA page_size=512; VACUUM"),
              QByteArray("PRAGMA page_size=65536; VACUUM"),
              QByteArray("PRAGMA auto_vacuum=FULL; VACUUM"), NumberedRooms}) {
            const JobFolder folder;
            const QString path = folder.example();
            RawFile(path).run(form);
            loseTables(path);
            QVERIFY2(repair(path).leftOut == 0, form);
            QVERIFY2(roomsOf(path).size() == roomsOf(Example).size(), form);
            QVERIFY2(memosOf(path) == memosOf(Example), form);
        }
    }

    /// How much of a file that was cut is missing stands in its header.
    void cutFile()
    {
        const JobFolder folder;
        const QString path = folder.file(u"LAVORO.ZLT"_s);
        const QByteArray whole = bytesOf(Example);
        writeBytes(path, whole.left(whole.size() - 3 * PageSize));
        const RepairResult result = repair(path);
        QVERIFY(result.damaged);
        QCOMPARE(result.pages, whole.size() / PageSize);
        QCOMPARE(result.missingPages, 3);
    }

    void soundFiles_data()
    {
        const auto row = columns<QByteArray, bool, QString>("change", "damaged", "room");
        const QByteArray bath = "UPDATE Vani SET Ambiente='Bagno'";
        const QByteArray others = "CREATE TABLE appunti (a); INSERT INTO appunti VALUES (x'00');";
        row("job", bath, false, u"Bagno"_s);
        row("other database", "DROP TABLE ZELTO", false, {});
        row("other format", "UPDATE ZELTO SET Versione='1997'", false, {});
        row("tables beside ours", others, false, {});
        row("tables that are not ours", NumberedRooms + others + bath, true, u"Bagno"_s);
        row("broken text", "UPDATE Vani SET Ambiente=CAST(x'4261ff' AS TEXT)", true, u"Ba\ufffd"_s);
        row("text too long",
            NumberedRooms + "UPDATE Vani SET Ambiente='sedici caratteri', Prospetto='1'", true, {});
        row("no coefficients", "DROP TABLE Variabili", false, {});
        row("no general data", "DROP TABLE [Dati Generali]", true, {});
        row("view", "CREATE VIEW v AS SELECT 1", true, {});
        row("no marker", "DELETE FROM ZELTO", true, {});
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

    /// The keys of the units and of the rooms that are there afterwards.
    void lessThanAJob()
    {
        const auto repaired = [](const QByteArray& change) {
            const JobFolder folder;
            const QString path = folder.newJob();
            RawFile(path).run(change + "; DROP TABLE [Dati Generali]");
            repair(path);
            Database job = Database::open(path);
            return keysOf(job.records(TabellaUnita)) + u" / "_s + keysOf(job.records(TabellaVani));
        };
        QCOMPARE(repaired("DELETE FROM [Unità immobiliari]; INSERT INTO Vani (Chiave, [Riferimento "
                          "unità], Posizione) VALUES ('    3    2', 3, 2)"),
                 u"1 3 / 1    1 3    2"_s);
        QCOMPARE(repaired("UPDATE Vani SET Chiave='x'; UPDATE [Unità immobiliari] SET Chiave='y'"),
                 u"1 / 1    1"_s);
        QCOMPARE(repaired("UPDATE Vani SET [Riferimento unità]=-9, Posizione=NULL"),
                 u"1 / 1    1"_s);
        QCOMPARE(repaired("UPDATE Vani SET Chiave='x', Posizione=0"), u"1 / "_s);
    }

    /// Their pages are still in the file.
    void deletedRoomsStayAway()
    {
        const JobFolder folder;
        const QString path = folder.example();
        RawFile(path).run("PRAGMA secure_delete=OFF; DELETE FROM Vani WHERE Chiave > '    3'");
        const std::set<Room> all = roomsOf(Example);
        const std::set<Room> left = roomsOf(path);
        QVERIFY(readableIn(bytesOf(path), all) > static_cast<qsizetype>(left.size()));
        loseTables(path);
        repair(path);
        QCOMPARE(roomsOf(path).size(), left.size());
    }

    void beyondRepair()
    {
        const QByteArray head = bytesOf(Example).left(PageSize);
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
