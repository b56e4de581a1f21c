// SPDX-License-Identifier: GPL-3.0-or-later
// zelto_bench [--benchmark_…]: runs the benchmarks. zelto_bench --crea JOB.ZLT: only writes the
// large job that they work on.
#include "bench/benchmarks.h"
#include "bench/large_jet_job.h"
#include "bench/large_job.h"
#include "text/literals.h"

#include <QGuiApplication>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <cstdio>

using namespace Qt::StringLiterals;

using namespace zelto::bench;

namespace {

QString exampleJob()
{
    return QStringLiteral(ZELTO_EXAMPLE_JOB);
}

void runBenchmarks()
{
    const QTemporaryDir folder;
    const QString job = folder.filePath(u"GRANDE.ZLT"_s);
    writeLargeJob(exampleJob(), job);
    WholeReport report(job, folder.path());
    registerLoading(job);
    registerShares();
    const QString old = folder.filePath(u"VECCHIO.ZLT"_s);
    writeLargeJetJob(QStringLiteral(JET_JOB), old);
    registerConversion(old);
    registerRecording(report);
    registerPdf(report);
    benchmark::RunSpecifiedBenchmarks();
}

} // namespace

int main(int argc, char* argv[])
{
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    try {
        if (arguments.size() == 3 && arguments[1] == u"--crea") {
            writeLargeJob(exampleJob(), arguments[2]);
            return 0;
        }
        benchmark::Initialize(&argc, argv);
        if (benchmark::ReportUnrecognizedArguments(argc, argv))
            return 1;
        runBenchmarks();
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "zelto_bench: %s\n", error.what());
        return 2;
    }
}
