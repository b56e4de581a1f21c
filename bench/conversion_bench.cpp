// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/benchmarks.h"
#include "bench/large_jet_job.h"
#include "store/database.h"
#include "store/jet/conversion.h"
#include "store/schema.h"

#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <memory>
#include <sqlite3.h>
#include <stdexcept>

namespace zelto::bench {

namespace {

void convert(benchmark::State& state, const QString& original)
{
    const QTemporaryDir folder;
    const QString target = folder.filePath(u"NUOVO.ZLT"_s);
    for ([[maybe_unused]] const auto turn : state) {
        (void)store::jet::convertJob(original, target, [](store::Database& /*job*/) {});
        QFile::remove(target);
    }
}

/// The rows of the large job, as the engine itself takes them.
struct BareTable
{
    QByteArray create;
    QByteArray insert;
    std::vector<std::vector<QByteArray>> rows;
};

std::vector<BareTable> bareTables(const QString& original)
{
    const QTemporaryDir folder;
    const QString target = folder.filePath(u"NUOVO.ZLT"_s);
    (void)store::jet::convertJob(original, target, [](store::Database& /*job*/) {});
    store::Database job = store::Database::open(target);
    std::vector<BareTable> tables;
    for (const store::TableDef& definition : store::jobTables()) {
        BareTable table;
        store::Query records = job.records(definition.name);
        QByteArrayList names;
        for (const store::FieldDef& field : definition.fields)
            names << store::quoted(field.name).toUtf8() +
                         (field.name == store::CampoChiave ? " PRIMARY KEY" : "");
        table.create =
            "CREATE TABLE " + store::quoted(definition.name).toUtf8() + "(" + names.join(',') + ")";
        table.insert = "INSERT INTO " + store::quoted(definition.name).toUtf8() + " VALUES(" +
                       QByteArrayList(names.size(), "?").join(',') + ")";
        for (; !records.atEnd(); records.next()) {
            std::vector<QByteArray>& row = table.rows.emplace_back();
            for (int field = 0; field < records.fieldCount(); ++field)
                row.push_back(records.text(field).toUtf8());
        }
        tables.push_back(std::move(table));
    }
    return tables;
}

void writeBare(sqlite3* file, const BareTable& table)
{
    sqlite3_exec(file, table.create.constData(), nullptr, nullptr, nullptr);
    sqlite3_stmt* insert = nullptr;
    sqlite3_prepare_v2(file, table.insert.constData(), -1, &insert, nullptr);
    for (const std::vector<QByteArray>& row : table.rows) {
        for (std::size_t field = 0; field < row.size(); ++field)
            sqlite3_bind_text(insert, static_cast<int>(field) + 1, row[field].constData(),
                              static_cast<int>(row[field].size()), SQLITE_TRANSIENT);
        if (sqlite3_step(insert) != SQLITE_DONE)
            throw std::runtime_error(sqlite3_errmsg(file));
        sqlite3_reset(insert);
    }
    sqlite3_finalize(insert);
}

void write(benchmark::State& state, const std::vector<BareTable>& tables)
{
    const QTemporaryDir folder;
    const QString target = folder.filePath(u"NUDO.ZLT"_s);
    for ([[maybe_unused]] const auto turn : state) {
        sqlite3* file = nullptr;
        sqlite3_open(QFile::encodeName(target).constData(), &file);
        sqlite3_exec(file, "BEGIN", nullptr, nullptr, nullptr);
        for (const BareTable& table : tables)
            writeBare(file, table);
        sqlite3_exec(file, "COMMIT", nullptr, nullptr, nullptr);
        sqlite3_close(file);
        QFile::remove(target);
    }
}

} // namespace

void registerConversion(const QString& original)
{
    const auto tables = std::make_shared<const std::vector<BareTable>>(bareTables(original));
    benchmark::RegisterBenchmark("conversione/zelto", [original](benchmark::State& state) {
        convert(state, original);
    })->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("conversione/base", [tables](benchmark::State& state) {
        write(state, *tables);
    })->Unit(benchmark::kMillisecond);
}

} // namespace zelto::bench
