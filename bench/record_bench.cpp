// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/benchmarks.h"
#include "text/literals.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QStringList>

#include <benchmark/benchmark.h>
#include <stdexcept>
#include <vector>

namespace zelto::bench {

namespace {

/// One file as the records or lines that it was written in.
struct WrittenFile
{
    QString path;
    std::vector<QByteArray> records;
};

/// The text files that come with the report are part of its recording.
QStringList filesOf(WholeReport& report)
{
    QStringList paths;
    for (int page = 0; page < report.engine().pageCount(); ++page)
        paths << print::pageFilePath(report.folder(), page);
    for (const QString& name : {u"consistenza.out"_s, u"calcolo.out"_s, u"scale.out"_s})
        paths << QDir(report.folder()).filePath(name);
    return paths;
}

std::vector<WrittenFile> readFiles(const QStringList& paths)
{
    std::vector<WrittenFile> files;
    for (const QString& path : paths) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            throw std::runtime_error("a file of the report is missing");
        WrittenFile& written = files.emplace_back(WrittenFile{.path = path, .records = {}});
        while (!file.atEnd())
            written.records.push_back(file.readLine());
    }
    return files;
}

void writeFiles(const std::vector<WrittenFile>& files)
{
    for (const WrittenFile& written : files) {
        QFile file(written.path);
        if (!file.open(QIODevice::WriteOnly))
            throw std::runtime_error("a file cannot be written");
        for (const QByteArray& record : written.records)
            file.write(record);
    }
}

void ours(benchmark::State& state, WholeReport& report)
{
    for ([[maybe_unused]] const auto turn : state)
        report.record();
}

void baseline(benchmark::State& state, WholeReport& report)
{
    const std::vector<WrittenFile> files = readFiles(filesOf(report));
    for ([[maybe_unused]] const auto turn : state) {
        print::deletePageFiles(report.folder());
        writeFiles(files);
    }
}

} // namespace

void registerRecording(WholeReport& report)
{
    const auto add = [&](const char* name, void (*run)(benchmark::State&, WholeReport&)) {
        benchmark::RegisterBenchmark(name, [run, &report](auto& state) {
            run(state, report);
        })->Unit(benchmark::kMillisecond);
    };
    add("registrazione/zelto", ours);
    add("registrazione/base", baseline);
}

} // namespace zelto::bench
