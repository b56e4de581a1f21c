// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/bare_painter.h"
#include "bench/benchmarks.h"
#include "print/pdf_surface.h"

#include <benchmark/benchmark.h>

namespace zelto::bench {

namespace {

void ours(benchmark::State& state, WholeReport& report)
{
    const QString fileName = report.folder() + u"/zelto.pdf"_s;
    for ([[maybe_unused]] const auto turn : state) {
        print::PdfSurface pdf(fileName, {.title = u"Relazione"_s});
        report.printOn(pdf);
        pdf.commit();
    }
}

void baseline(benchmark::State& state, WholeReport& report)
{
    DrawingList drawings;
    report.printOn(drawings);
    const QString fileName = report.folder() + u"/base.pdf"_s;
    for ([[maybe_unused]] const auto turn : state)
        drawings.printPdf(fileName);
}

} // namespace

void registerPdf(WholeReport& report)
{
    const auto add = [&](const char* name, void (*run)(benchmark::State&, WholeReport&)) {
        benchmark::RegisterBenchmark(name, [run, &report](auto& state) {
            run(state, report);
        })->Unit(benchmark::kMillisecond);
    };
    add("pdf/zelto", ours);
    add("pdf/base", baseline);
}

} // namespace zelto::bench
