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
                  (field.name == table.primaryKey ? QStringLiteral(" PRIMARY KEY") : QString());
    return fields.join(QStringLiteral(", "));
}

void addUnit(Database& job, int unit)
{
    job.Execute(
        QStringLiteral("INSERT INTO [%1] VALUES (:1, :2, 'Int. 1', 'Piano 1', :3, '3.2', "
                       "'XX XXXXXXX')")
            .arg(store::TabellaUnita),
        std::array<store::Value, 3>{store::unitKey(unit), unit, QString(QChar(u'A' + unit / 3))});
    for (int room = 1; room <= RoomsOfUnit; ++room)
        job.Execute(QStringLiteral("INSERT INTO [%1] VALUES (:1, :2, :3, 'Camera', '12.5', "
                                   "'[a]', '[b]', '1', '0.9', '[a]', '1.05')")
                        .arg(store::TabellaVani),
                    std::array<store::Value, 3>{store::roomKey(unit, room), unit, room});
}

void fill(Database& job)
{
    job.Execute(QStringLiteral("INSERT INTO [%1] VALUES ('2009', NULL)").arg(store::TabellaZelto));
    job.Execute(
        QStringLiteral("INSERT INTO [%1] VALUES (1, 'Via', NULL, 'Nota', '2024-05-18', 'R', "
                       "'T1', 'T2', NULL, 'T4', NULL, NULL, NULL, NULL, NULL, 'T10', :1)")
            .arg(store::TabellaDatiGenerali),
        std::array<store::Value, 1>{QStringLiteral("A\tScala A\t50\r\nB\tScala B\t40\r\n")});
    const store::Value list = QStringLiteral("0.8\ta\tprima\r\n1.15\tb\tseconda\r\n");
    job.Execute(QStringLiteral("INSERT INTO [%1] VALUES (:1, :2, :3, :4, :5, :6, :7)")
                    .arg(store::TabellaVariabili),
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
        return QStringLiteral("NULL");
    if (kind == Byte)
        return QString::number(takeByte(bytes));
    const std::string_view content = take(bytes, static_cast<std::size_t>(takeByte(bytes)));
    const QByteArray hex =
        QByteArray(content.data(), static_cast<qsizetype>(content.size())).toHex();
    QString blob = QStringLiteral("x'%1'").arg(QString::fromLatin1(hex));
    switch (kind) {
    case Integer:
        return QStringLiteral("CAST(CAST(%1 AS TEXT) AS INTEGER)").arg(blob);
    case Real:
        return QStringLiteral("CAST(CAST(%1 AS TEXT) AS REAL)").arg(blob);
    case Blob:
        return blob;
    default:
        return QStringLiteral("CAST(%1 AS TEXT)").arg(blob);
    }
}

} // namespace

Database looseJob()
{
    Database job(std::make_shared<store::Connection>(
        QStringLiteral("LAVORO.ZLT"), SQLite::Database(":memory:", SQLite::OPEN_READWRITE)));
    for (const TableDef& table : store::jobTables())
        job.Execute(QStringLiteral("CREATE TABLE %1 (%2)")
                        .arg(store::quoted(table.name), fieldList(table)));
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
        job.Execute(QStringLiteral("UPDATE %1 SET %2 = %3 WHERE rowid = %4")
                        .arg(store::quoted(table.name), store::quoted(table.fields[field].name),
                             literal(bytes), QString::number(record)));
    }
}

} // namespace zelto::fuzz
