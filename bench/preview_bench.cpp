// SPDX-License-Identifier: GPL-3.0-or-later
// The preview window: turning an enlarged page, against a painter that draws the same texts on a
// picture of that size; opening a long document, against one of a single page.
#include "bench/bare_painter.h"
#include "bench/large_job.h"
#include "bench/whole_report.h"
#include "print/ui/frm_preview.h"
#include "print/ui/page_view.h"
#include "store/settings.h"
#include "support/scripted_user.h"

#include <QApplication>
#include <QKeyEvent>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <list>

using namespace zelto;

namespace {

/// Someone at a screen without a printer.
struct Desk
{
    test::ScriptedUser user;
    print::PrinterDesk printers;
    QTemporaryDir folder;
    store::Settings settings{folder.filePath(u"Zelto.ini"_s)};

    [[nodiscard]] print::PrintServices services(print::PrintEngine& engine)
    {
        return {.engine = engine,
                .printers = printers,
                .window = user,
                .dialogs = user,
                .settings = settings};
    }
};

/// The preview on a large screen. Unlike the program it goes without the document.
class Preview
{
public:
    Preview(Desk& desk, print::PrintEngine& engine) : m_window(desk.services(engine), {})
    {
        m_window.resize(1400, 1000);
        m_window.show();
        QApplication::processEvents();
    }
    void press(int key)
    {
        QKeyEvent pressed(QEvent::KeyPress, key, Qt::NoModifier);
        QKeyEvent released(QEvent::KeyRelease, key, Qt::NoModifier);
        QApplication::sendEvent(&m_window, &pressed);
        QApplication::sendEvent(&m_window, &released);
    }
    void goTo(int page)
    {
        press(Qt::Key_Home);
        while (m_window.page() < page)
            press(Qt::Key_PageDown);
    }
    void enlarge()
    {
        emit picture().clicked({100, 100});
        QApplication::processEvents();
    }
    [[nodiscard]] print::PagePicture& picture()
    {
        return *m_window.findChild<print::PagePicture*>();
    }

private:
    print::frmPreview m_window;
};

/// The windows stay open to the end: each takes the pages with it when it goes.
constexpr int Openings = 20;

void open(benchmark::State& state, print::PrintEngine& engine)
{
    Desk desk;
    std::list<Preview> previews;
    for ([[maybe_unused]] const auto turn : state)
        previews.emplace_back(desk, engine);
}

void openWhole(benchmark::State& state, bench::WholeReport& report)
{
    report.record();
    open(state, report.engine());
}

void openOnePage(benchmark::State& state)
{
    const QTemporaryDir folder;
    print::PrintEngine engine(folder.path(), {});
    engine.BeginDocument();
    engine.WriteState();
    engine.PrintCentred(21.5F, 40.5F, 0, u"TABELLE MILLESIMALI"_s);
    engine.EndDocument();
    open(state, engine);
}

/// From the fullest page to the next one and back.
void turn(benchmark::State& state, bench::WholeReport& report)
{
    Desk desk;
    report.record();
    const int page = report.fullestPage();
    Preview preview(desk, report.engine());
    preview.goTo(page);
    preview.enlarge();
    bool back = false;
    for ([[maybe_unused]] const auto key : state) {
        preview.press(back ? Qt::Key_PageUp : Qt::Key_PageDown);
        back = !back;
    }
}

void drawBarely(benchmark::State& state, bench::WholeReport& report)
{
    Desk desk;
    report.record();
    const int page = report.fullestPage();
    bench::DrawingList drawings;
    {
        const print::DrawingTarget target(report.engine(), drawings);
        report.engine().PrintDocument(page, page);
    }
    Preview preview(desk, report.engine());
    preview.enlarge();
    const QSize size = preview.picture().image().size();
    for ([[maybe_unused]] const auto key : state)
        benchmark::DoNotOptimize(drawings.drawPicture(size, report.engine().PageWidth()));
}

void run(int argc, char* argv[])
{
    const QTemporaryDir folder;
    const QString job = folder.filePath(u"GRANDE.ZLT"_s);
    bench::writeLargeJob(QStringLiteral(ZELTO_EXAMPLE_JOB), job);
    bench::WholeReport report(job, folder.path());
    const auto add = [](const char* name, const auto& measured) -> benchmark::internal::Benchmark* {
        return benchmark::RegisterBenchmark(name, measured)
            ->Unit(benchmark::kMillisecond)
            ->UseRealTime();
    };
    add("pagina/zelto", [&](auto& state) { turn(state, report); });
    add("pagina/base", [&](auto& state) { drawBarely(state, report); });
    add("anteprima/zelto", [&](auto& state) { openWhole(state, report); })->Iterations(Openings);
    add("anteprima/base", [](auto& state) { openOnePage(state); })->Iterations(Openings);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}

} // namespace

int main(int argc, char* argv[])
{
    const QApplication application(argc, argv);
    run(argc, argv);
    return 0;
}
