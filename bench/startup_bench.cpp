// SPDX-License-Identifier: GPL-3.0-or-later
// zelto_startup_bench: start of the whole program against an empty main window, each as a process
// of its own from its start to its window being shown and painted. zelto_startup_bench zelto|base
// is one such process.
#include "shell/application.h"
#include "shell/qt_dialogs.h"

#include <QApplication>
#include <QMdiArea>
#include <QProcess>
#include <QWindow>

#include <benchmark/benchmark.h>
#include <cstdio>

namespace {

/// Until everything that showing the window has set in motion is done.
void waitForPainting(QWidget& window)
{
    while (!window.isVisible() || window.windowHandle() == nullptr ||
           !window.windowHandle()->isExposed())
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    QApplication::processEvents();
}

int showEmptyWindow()
{
    QMainWindow window;
    window.setCentralWidget(new QMdiArea);
    window.resize(1000, 700);
    window.show();
    waitForPainting(window);
    return 0;
}

int showZelto()
{
    const auto dialogs = zelto::shell::makeDialogs();
    const QString programFolder = QCoreApplication::applicationDirPath();
    const auto application =
        zelto::shell::Application::start(programFolder, programFolder, *dialogs);
    if (!application)
        return 1;
    application->show();
    waitForPainting(application->window());
    return 0;
}

void startProcess(benchmark::State& state, const QString& which)
{
    QProcess process;
    process.setStandardErrorFile(QProcess::nullDevice());
    for (auto _ : state) {
        process.start(QCoreApplication::applicationFilePath(), {which});
        if (!process.waitForFinished() || process.exitCode() != 0)
            state.SkipWithError("the window was not shown");
    }
}

int runBenchmarks(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    for (const char* which : {"zelto", "base"}) {
        const QString argument = QString::fromLatin1(which);
        benchmark::RegisterBenchmark(
            (std::string("avvio/") + which).c_str(),
            [argument](benchmark::State& state) { startProcess(state, argument); })
            ->UseRealTime()
            ->Unit(benchmark::kMillisecond);
    }
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

} // namespace

int main(int argc, char* argv[])
{
    const std::string_view which = argc == 2 ? argv[1] : "";
    if (which != "zelto" && which != "base")
        return runBenchmarks(argc, argv);
    const QApplication application(argc, argv);
    return which == "zelto" ? showZelto() : showEmptyWindow();
}
