// SPDX-License-Identifier: GPL-3.0-or-later
#include "fuzz_job_tables.h"

#include "fuzz_input.h"
#include "store/schema.h"

#include <QStringList>

#include <array>

namespace zelto::fuzz {

using store::Database;
using store::TableDef;

namespace {

constexpr int Units = 4;
constexpr int RoomsOfUnit = 2;
constexpr int Records = Units * RoomsOfUnit;

QString fieldList(const TableDef& table)
{
    QStringList fields;
    for (const store::FieldDef& field : table.fields)
        fields += store::quoted(field.name) +
                  (field.name == table.primaryKey ? u" PRIMARY KEY"_s : QString());
    return fields.join(u", "_s);
}

void addUnit(Database& job, int unit)
{
    job.Execute(
        u"INSERT INTO [%1] VALUES (:1, :2, 'Int. 1', 'Piano 1', :3, '3.2', "
        u"'XX XXXXXXX')"_s.arg(store::TabellaUnita),
        std::array<store::Value, 3>{store::unitKey(unit), unit, QString(QChar(u'A' + unit / 3))});
    for (int room = 1; room <= RoomsOfUnit; ++room)
        job.Execute(u"INSERT INTO [%1] VALUES (:1, :2, :3, 'Camera', '12.5', "
                    u"'[a]', '[b]', '1', '0.9', '[a]', '1.05')"_s.arg(store::TabellaVani),
                    std::array<store::Value, 3>{store::roomKey(unit, room), unit, room});
}

void fill(Database& job)
{
    job.Execute(u"INSERT INTO [%1] VALUES ('2009', NULL)"_s.arg(store::TabellaZelto));
    job.Execute(u"INSERT INTO [%1] VALUES (1, 'Via', NULL, 'Nota', '2024-05-18', 'R', "
                u"'T1', 'T2', NULL, 'T4', NULL, NULL, NULL, NULL, NULL, 'T10', :1)"_s.arg(
                    store::TabellaDatiGenerali),
                std::array<store::Value, 1>{u"A\tScala A\t50\r\nB\tScala B\t40\r\n"_s});
    const store::Value list = u"0.8\ta\tprima\r\n1.15\tb\tseconda\r\n"_s;
    job.Execute(
        u"INSERT INTO [%1] VALUES (:1, :2, :3, :4, :5, :6, :7)"_s.arg(store::TabellaVariabili),
        std::array<store::Value, 7>{list, list, list, list, list, list, list});
    for (int unit = 1; unit <= Units; ++unit)
        addUnit(job, unit);
}

/// A value of any kind as an SQL literal; the length of bytes is taken before them.
QString literal(std::string_view& bytes)
{
    enum Kind { Null, Byte, Integer, Real, Blob };
    const int kind = takeByte(bytes) % 8; // the others are texts
    if (kind == Null)
        return u"NULL"_s;
    if (kind == Byte)
        return QString::number(takeByte(bytes));
    const std::string_view content = take(bytes, static_cast<std::size_t>(takeByte(bytes)));
    const QByteArray hex =
        QByteArray(content.data(), static_cast<qsizetype>(content.size())).toHex();
    QString blob = u"x'%1'"_s.arg(QString::fromLatin1(hex));
    switch (kind) {
    case Integer:
        return u"CAST(CAST(%1 AS TEXT) AS INTEGER)"_s.arg(blob);
    case Real:
        return u"CAST(CAST(%1 AS TEXT) AS REAL)"_s.arg(blob);
    case Blob:
        return blob;
    default:
        return u"CAST(%1 AS TEXT)"_s.arg(blob);
    }
}

} // namespace

Database looseJob()
{
    Database job(std::make_shared<store::Connection>(u"LAVORO.ZLT"_s, u":memory:"_s,
                                                     SQLite::OPEN_READWRITE));
    for (const TableDef& table : store::jobTables())
        job.Execute(u"CREATE TABLE %1 (%2)"_s.arg(store::quoted(table.name), fieldList(table)));
    fill(job);
    return job;
}

void changeCells(Database& job, std::string_view bytes)
{
    constexpr int MaxChanges = 16;
    const auto tables = store::jobTables();
    for (int change = 0; change < MaxChanges && !bytes.empty(); ++change) {
        const TableDef& table = tables[static_cast<std::size_t>(takeByte(bytes)) % tables.size()];
        const auto field = static_cast<std::size_t>(takeByte(bytes)) % table.fields.size();
        const int record = 1 + takeByte(bytes) % Records;
        job.Execute(u"UPDATE %1 SET %2 = %3 WHERE rowid = %4"_s.arg(
            store::quoted(table.name), store::quoted(table.fields[field].name), literal(bytes),
            QString::number(record)));
    }
}

} // namespace zelto::fuzz
