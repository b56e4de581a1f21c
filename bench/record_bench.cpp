// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/benchmarks.h"

#include <QByteArray>
#include <QFile>

#include <benchmark/benchmark.h>
#include <stdexcept>
#include <vector>

namespace zelto::bench {

namespace {

using Page = std::vector<QByteArray>;

/// The text files that come with the report are written, too: they are part of a recording.
void ours(benchmark::State& state, WholeReport& report)
{
    for ([[maybe_unused]] const auto turn : state)
        report.record();
}

std::vector<Page> readPages(const WholeReport& report, int count)
{
    std::vector<Page> pages(static_cast<std::size_t>(count));
    int index = 0;
    for (Page& page : pages) {
        QFile file(print::pageFilePath(report.folder(), index++));
        if (!file.open(QIODevice::ReadOnly))
            throw std::runtime_error("no page file");
        while (!file.atEnd())
            page.push_back(file.readLine());
    }
    return pages;
}

void writePages(const QString& folder, const std::vector<Page>& pages)
{
    int index = 0;
    for (const Page& page : pages) {
        QFile file(print::pageFilePath(folder, index++));
        if (!file.open(QIODevice::WriteOnly))
            throw std::runtime_error("no page file");
        for (const QByteArray& record : page)
            file.write(record);
    }
}

void baseline(benchmark::State& state, WholeReport& report)
{
    const std::vector<Page> pages = readPages(report, report.engine().pageCount());
    for ([[maybe_unused]] const auto turn : state) {
        print::deletePageFiles(report.folder());
        writePages(report.folder(), pages);
    }
}

} // namespace

void registerRecording(WholeReport& report)
{
    const auto add = [&](const char* name, void (*run)(benchmark::State&, WholeReport&)) {
        benchmark::RegisterBenchmark(name, [run, &report](auto& state) { run(state, report); })
            ->Unit(benchmark::kMillisecond);
    };
    add("registrazione/zelto", ours);
    add("registrazione/base", baseline);
}

} // namespace zelto::bench
