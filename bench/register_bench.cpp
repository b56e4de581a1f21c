// SPDX-License-Identifier: GPL-3.0-or-later
// zelto_register_bench: the parameters screen over the large job. Opening it against a bare tree
// and two bare tables of the same texts, storing a cell against a bare update of the engine,
// showing another unit against its queries alone, keeping a copy of the job against copying its
// bytes, bringing the remarks of the check up to date against loading the job.
#include "bench/large_job.h"
#include "calc/job_loader.h"
#include "register/job_remarks.h"
#include "register/ui/controllo.h"
#include "register/ui/parametri.h"
#include "register/ui/shown_columns.h"
#include "reports/on_paper.h"
#include "store/job_copies.h"
#include "store/schema.h"
#include "store/settings.h"
#include "support/scripted_user.h"
#include "widgets/context_menu.h"
#include "widgets/grid.h"

#include <QApplication>
#include <QFile>
#include <QHBoxLayout>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTreeWidget>

#include <array>
#include <benchmark/benchmark.h>
#include <sqlite3.h>
#include <unistd.h>

namespace {

using namespace zelto;

/// The large job, as Zelto has it open.
class Desk
{
public:
    Desk() : job(makeJob(path())) {}

    [[nodiscard]] QString path() const { return m_folder.filePath(u"GRANDE.ZLT"_s); }
    [[nodiscard]] std::unique_ptr<registro::Parametri> screen()
    {
        return std::make_unique<registro::Parametri>(
            registro::ParametriContext{job, settings, user, menu});
    }

private:
    static store::Database makeJob(const QString& path)
    {
        bench::writeLargeJob(QStringLiteral(ZELTO_EXAMPLE_JOB), path);
        return store::Database::open(path);
    }

    QTemporaryDir m_folder;

public:
    store::Database job;
    store::Settings settings{m_folder.filePath(u"Zelto.ini"_s)};
    test::ScriptedUser user{m_folder.path()};
    widgets::ContextMenu menu;
};

/// Until it is painted; the figures of the screen's status bar come after that.
void showAndClose(QWidget& window)
{
    window.resize(1000, 700);
    window.show();
    QApplication::sendPostedEvents();
    window.repaint();
    window.close();
}

void openScreen(benchmark::State& state, Desk& desk)
{
    for (auto _ : state)
        showAndClose(*desk.screen());
}

std::vector<QStringList> textsOf(registro::Table table,
                                 const std::vector<registro::Record>& records)
{
    std::vector<QStringList> texts;
    for (const registro::Record& record : records)
        texts.push_back(registro::cellsOf(registro::columnsOf(table), record));
    return texts;
}

struct TreeUnit
{
    QString scala;
    QString name;
    QStringList rooms;
};

std::vector<TreeUnit> treeOf(store::Database& job)
{
    std::vector<TreeUnit> tree;
    for (const registro::Record& unit : registro::readUnits(job)) {
        tree.push_back({registro::textOf(unit, registro::UnitScala),
                        registro::textOf(unit, registro::UnitRiferimento),
                        {}});
        const int number = registro::numberOf(unit, registro::UnitNumber);
        for (const registro::Record& room : registro::readRooms(job, number))
            tree.back().rooms << registro::textOf(room, registro::RoomAmbiente);
    }
    return tree;
}

QTableWidget* bareTable(const std::vector<QStringList>& texts)
{
    const int columns = static_cast<int>(texts.front().size());
    auto* table = new QTableWidget(static_cast<int>(texts.size()), columns);
    for (int row = 0; row < table->rowCount(); ++row)
        for (int column = 0; column < columns; ++column)
            table->setItem(row, column,
                           new QTableWidgetItem(texts[static_cast<std::size_t>(row)][column]));
    return table;
}

void openBareWidgets(benchmark::State& state, Desk& desk)
{
    const QStringList scale = registro::LeggiDatiGenerali(desk.job).scale;
    const auto tree = treeOf(desk.job);
    const auto units = textsOf(registro::Table::Units, registro::readUnits(desk.job));
    const auto rooms = textsOf(registro::Table::Rooms, registro::readRooms(desk.job, 1));
    for (auto _ : state) {
        QWidget window;
        auto* layout = new QHBoxLayout(&window);
        auto* nodes = new QTreeWidget;
        for (const QString& code : QStringList(QString()) + scale) {
            auto* top = new QTreeWidgetItem({code});
            for (const TreeUnit& unit : tree) {
                if (unit.scala != code)
                    continue;
                auto* node = new QTreeWidgetItem(top, {unit.name});
                for (const QString& room : unit.rooms)
                    new QTreeWidgetItem(node, {room});
            }
            nodes->addTopLevelItem(top);
        }
        for (QWidget* part :
             std::initializer_list<QWidget*>{nodes, bareTable(units), bareTable(rooms)})
            layout->addWidget(part);
        showAndClose(window);
    }
}

void storeCell(benchmark::State& state, Desk& desk)
{
    registro::Register registro(desk.job);
    int round = 0;
    for (auto _ : state)
        registro.MemorizzaVano(150, {{25, registro::RoomAmbiente, u"Vano %1"_s.arg(++round)}});
}

/// The same update on a connection of the same durability.
void updateBare(benchmark::State& state, Desk& desk)
{
    sqlite3* handle = nullptr;
    sqlite3_open(QFile::encodeName(desk.path()).constData(), &handle);
    sqlite3_exec(handle, "PRAGMA synchronous=EXTRA; PRAGMA journal_mode=DELETE", nullptr, nullptr,
                 nullptr);
    sqlite3_stmt* update = nullptr;
    sqlite3_prepare_v2(handle, "UPDATE Vani SET Ambiente = ?1 WHERE Chiave = '  150   25'", -1,
                       &update, nullptr);
    int round = 0;
    for (auto _ : state) {
        const QByteArray name = "Vano " + QByteArray::number(++round);
        sqlite3_bind_text(update, 1, name.constData(), -1, SQLITE_TRANSIENT);
        if (sqlite3_step(update) != SQLITE_DONE)
            state.SkipWithError(sqlite3_errmsg(handle));
        sqlite3_reset(update);
    }
    sqlite3_finalize(update);
    sqlite3_close(handle);
}

void showUnits(benchmark::State& state, Desk& desk)
{
    const auto screen = desk.screen();
    screen->resize(1000, 700);
    screen->show();
    auto* units = screen->findChild<widgets::Grid*>(u"UI"_s);
    int row = 0;
    for (auto _ : state) {
        units->setCurrentCell(row = (row + 7) % 300, 0);
        QApplication::processEvents();
    }
}

void readUnits(benchmark::State& state, Desk& desk)
{
    int row = 0;
    for (auto _ : state) {
        row = (row + 7) % 300;
        benchmark::DoNotOptimize(registro::readUnit(desk.job, row + 1));
        benchmark::DoNotOptimize(registro::readRooms(desk.job, row + 1));
    }
}

/// From the stored cell to the painted list.
void followCell(benchmark::State& state, Desk& desk)
{
    registro::RegisterModel model(desk.job, desk.user);
    registro::JobRemarks remarks(desk.job, model, reports::sullaCarta());
    remarks.start();
    registro::Controllo panel(remarks);
    panel.resize(1000, 220);
    panel.show();
    QApplication::processEvents();
    for (auto _ : state) {
        emit model.unitsChanged({150});
        QApplication::processEvents();
    }
    state.counters["osservazioni"] = static_cast<double>(remarks.remarks().size());
}

void loadJob(benchmark::State& state, Desk& desk)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(calc::CaricaLavoro(desk.job));
}

/// As when a job is opened that has changed.
void keepCopy(benchmark::State& state, Desk& desk)
{
    const QTemporaryDir folder;
    const store::JobCopies copies(folder.path());
    int round = 0;
    for (auto _ : state) {
        desk.job.Execute(u"UPDATE ZELTO SET Utente = '%1'"_s.arg(++round));
        copies.keep(desk.path());
    }
}

/// The bytes, as durable.
void copyBare(benchmark::State& state, Desk& desk)
{
    const QTemporaryDir folder;
    int round = 0;
    for (auto _ : state) {
        const QString target = folder.filePath(QString::number(++round));
        QFile copy(target);
        if (!QFile::copy(desk.path(), target) || !copy.open(QIODevice::ReadWrite) ||
            fsync(copy.handle()) != 0)
            state.SkipWithError("the job cannot be copied");
        copy.remove();
    }
}

void add(const char* name, Desk& desk, void (*run)(benchmark::State&, Desk&))
{
    benchmark::RegisterBenchmark(name, [run, &desk](benchmark::State& state) { run(state, desk); })
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
}

} // namespace

int main(int argc, char* argv[])
{
    const QApplication application(argc, argv);
    Desk desk;
    add("parametri/zelto", desk, openScreen);
    add("parametri/base", desk, openBareWidgets);
    add("cella/zelto", desk, storeCell);
    add("cella/base", desk, updateBare);
    add("unita/zelto", desk, showUnits);
    add("unita/base", desk, readUnits);
    add("controllo/zelto", desk, followCell);
    add("controllo/base", desk, loadJob);
    add("copia/zelto", desk, keepCopy);
    add("copia/base", desk, copyBare);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
