// SPDX-License-Identifier: GPL-3.0-or-later
// zelto_register_bench: the parameters screen over the large job. Opening it against a bare tree
// and two bare tables of the same texts, storing a cell against a bare update of the engine,
// showing another unit against its queries alone, keeping a copy of the job against copying its
// bytes.
#include "bench/large_job.h"
#include "register/ui/navig.h"
#include "register/ui/parametri.h"
#include "store/files/job_copies.h"
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

void fill(QTableWidget& table, int row, const QStringList& texts)
{
    for (int column = 0; column < texts.size(); ++column)
        table.setItem(row, column, new QTableWidgetItem(texts[column]));
}

void openBareWidgets(benchmark::State& state, Desk& desk)
{
    const registro::RegisterLists lists = registro::LeggiDatiGenerali(desk.job);
    const auto tree = registro::readTree(desk.job, lists.scale);
    const auto units = registro::readUnits(desk.job);
    const auto rooms = registro::readRooms(desk.job, 1);
    for (auto _ : state) {
        QWidget window;
        auto* layout = new QHBoxLayout(&window);
        auto* nodes = new QTreeWidget;
        for (const registro::TreeScala& scala : tree) {
            auto* top = new QTreeWidgetItem({scala.code});
            for (const registro::TreeUnit& unit : scala.units) {
                auto* node = new QTreeWidgetItem(top, {unit.text});
                for (const registro::TreeRoom& room : unit.rooms)
                    new QTreeWidgetItem(node, {room.text});
            }
            nodes->addTopLevelItem(top);
        }
        auto* unitTable = new QTableWidget(static_cast<int>(units.size()), 14);
        for (std::size_t row = 0; row < units.size(); ++row)
            fill(*unitTable, static_cast<int>(row),
                 QStringList(units[row].texts.begin(), units[row].texts.end()) +
                     units[row].flags.split(QString(), Qt::SkipEmptyParts));
        auto* roomTable = new QTableWidget(static_cast<int>(rooms.size()), 8);
        for (std::size_t row = 0; row < rooms.size(); ++row)
            fill(*roomTable, static_cast<int>(row),
                 QStringList(rooms[row].texts.begin(), rooms[row].texts.end()));
        for (QWidget* part : std::initializer_list<QWidget*>{nodes, unitTable, roomTable})
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
    add("copia/zelto", desk, keepCopy);
    add("copia/base", desk, copyBare);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
