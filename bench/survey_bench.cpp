// SPDX-License-Identifier: GPL-3.0-or-later
// zelto_survey_bench: the start page's look at a thousand jobs against opening and reading the same
// files through the engine alone; the longest slice in milliseconds stands beside it.
#include "shell/job_survey.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <sqlite3.h>

namespace {

using namespace zelto;

constexpr int Jobs = 1'000;

QString jobAt(const QTemporaryDir& folder, int number)
{
    return folder.filePath(QStringLiteral("%1.ZLT").arg(number));
}

void look(benchmark::State& state, const QTemporaryDir& folder)
{
    shell::JobSurvey survey(shell::summaryOf);
    QEventLoop loop;
    QObject::connect(&survey, &shell::JobSurvey::finished, &loop, &QEventLoop::quit);
    QElapsedTimer slice;
    qint64 longest = 0;
    QObject::connect(&survey, &shell::JobSurvey::found, &loop, [&](const auto& /*jobs*/) {
        longest = std::max(longest, slice.nsecsElapsed());
        slice.start();
    });
    for (auto _ : state) {
        slice.start();
        survey.start({}, folder.path());
        loop.exec();
    }
    state.counters["fetta_ms"] = static_cast<double>(longest) / 1e6;
}

/// The first record's first fields of a statement, by the engine.
void readBare(sqlite3* engine, const char* sql)
{
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(engine, sql, -1, &statement, nullptr) != SQLITE_OK ||
        sqlite3_step(statement) != SQLITE_ROW)
        qFatal("the job cannot be read");
    benchmark::DoNotOptimize(sqlite3_column_text(statement, 0));
    sqlite3_finalize(statement);
}

void readAllBare(benchmark::State& state, const QTemporaryDir& folder)
{
    for (auto _ : state)
        for (int number = 0; number < Jobs; ++number) {
            sqlite3* engine = nullptr;
            const QByteArray path = QFile::encodeName(jobAt(folder, number));
            sqlite3_open_v2(path.constData(), &engine, SQLITE_OPEN_READONLY, nullptr);
            readBare(engine, "PRAGMA quick_check(1)");
            readBare(engine, "SELECT Descrizione, Descrizionee, Data FROM [Dati Generali]");
            readBare(engine, "SELECT count(*) FROM [Unità immobiliari]");
            sqlite3_close(engine);
        }
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    const QTemporaryDir folder;
    for (int number = 0; number < Jobs; ++number)
        if (!QFile::copy(QStringLiteral(ZELTO_EXAMPLE_JOB), jobAt(folder, number)))
            return 1;
    benchmark::Initialize(&argc, argv);
    benchmark::RegisterBenchmark("sguardo/zelto", look, std::cref(folder))
        ->UseRealTime()
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("sguardo/base", readAllBare, std::cref(folder))
        ->UseRealTime()
        ->Unit(benchmark::kMillisecond);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
