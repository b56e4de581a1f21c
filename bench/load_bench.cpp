// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/benchmarks.h"
#include "calc/job_loader.h"

#include <QFile>

#include <array>
#include <benchmark/benchmark.h>
#include <charconv>
#include <memory>
#include <sqlite3.h>
#include <stdexcept>

namespace zelto::bench {

namespace {

void ours(benchmark::State& state, const QString& jobPath)
{
    store::Database job = store::Database::open(jobPath, store::OpenMode::ReadOnly);
    for ([[maybe_unused]] const auto turn : state)
        benchmark::DoNotOptimize(calc::CaricaLavoro(job));
}

struct Finalizer
{
    void operator()(sqlite3* file) const { sqlite3_close(file); }
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using File = std::unique_ptr<sqlite3, Finalizer>;
using Statement = std::unique_ptr<sqlite3_stmt, Finalizer>;

File openBare(const QString& path)
{
    sqlite3* file = nullptr;
    const int result =
        sqlite3_open_v2(QFile::encodeName(path).constData(), &file, SQLITE_OPEN_READONLY, nullptr);
    File opened(file);
    if (result != SQLITE_OK)
        throw std::runtime_error(sqlite3_errmsg(file));
    return opened;
}

/// Columns from firstNumber to lastNumber become numbers, the others texts.
struct Scan
{
    const char* sql;
    int firstNumber = -1;
    int lastNumber = -2;
};

constexpr std::array Scans{
    Scan{"SELECT * FROM Variabili"},
    Scan{"SELECT * FROM [Dati Generali] ORDER BY Chiave"},
    Scan{"SELECT * FROM [Unità immobiliari] ORDER BY Chiave", 5, 5},
    Scan{"SELECT * FROM Vani ORDER BY Chiave", 4, 10},
};

void convertText(sqlite3_stmt* row, int column)
{
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(row, column));
    benchmark::DoNotOptimize(QString::fromUtf8(text, sqlite3_column_bytes(row, column)));
}

void convertNumber(sqlite3_stmt* row, int column)
{
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(row, column));
    double number = 0;
    if (text != nullptr)
        std::from_chars(text, text + sqlite3_column_bytes(row, column), number);
    benchmark::DoNotOptimize(number);
}

void run(sqlite3* file, const Scan& scan)
{
    sqlite3_stmt* prepared = nullptr;
    sqlite3_prepare_v2(file, scan.sql, -1, &prepared, nullptr);
    const Statement rows(prepared);
    const int columns = sqlite3_column_count(prepared);
    while (sqlite3_step(prepared) == SQLITE_ROW)
        for (int column = 0; column < columns; ++column) {
            if (sqlite3_column_type(prepared, column) == SQLITE_INTEGER)
                benchmark::DoNotOptimize(sqlite3_column_int64(prepared, column));
            else if (column >= scan.firstNumber && column <= scan.lastNumber)
                convertNumber(prepared, column);
            else
                convertText(prepared, column);
        }
}

void baseline(benchmark::State& state, const QString& jobPath)
{
    const File file = openBare(jobPath);
    for ([[maybe_unused]] const auto turn : state)
        for (const Scan& scan : Scans)
            run(file.get(), scan);
}

} // namespace

void registerLoading(const QString& jobPath)
{
    benchmark::RegisterBenchmark("caricamento/zelto", ours, jobPath)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("caricamento/base", baseline, jobPath)
        ->Unit(benchmark::kMillisecond);
}

} // namespace zelto::bench
