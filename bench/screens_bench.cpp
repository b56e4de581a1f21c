// SPDX-License-Identifier: GPL-3.0-or-later
// zelto_screens_bench: the editing screens from nothing to painted, each against a bare dialog with
// a bare table of the same cells; and one key typed in a cell against one typed in a bare field.
#include "coefficients/ui/dati_generali.h"
#include "coefficients/ui/variabili.h"
#include "store/database.h"
#include "store/master_database.h"
#include "store/schema.h"
#include "store/settings.h"
#include "support/scripted_user.h"
#include "text/table_text.h"
#include "widgets/grid.h"

#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QVBoxLayout>

#include <benchmark/benchmark.h>
#include <functional>

namespace {

using namespace zelto;

constexpr int Columns = 3;

QString cellText(int row, int column)
{
    return u"%1.%2"_s.arg(row).arg(column);
}

QString tableText(int rows)
{
    text::CellTable table(rows + 1, Columns + 1);
    for (int row = 1; row <= rows; ++row)
        for (int column = 1; column <= Columns; ++column)
            table.at(row, column) = cellText(row, column);
    return text::GridToText(table, {.lastRow = rows, .lastColumn = Columns});
}

/// A job with 200 rows in every group and 99 codes of staircases.
class Desk
{
public:
    Desk() : job(store::Database::create(m_folder.filePath(u"A.ZLT"_s)))
    {
        store::CreaTabelleBase(job);
        const std::array groups{store::Value(tableText(200))};
        job.Execute(u"UPDATE Variabili SET Var0 = :1, Var1 = :1, Var2 = :1, "
                    u"Var3 = :1, Var4 = :1, Var5 = :1, Var6 = :1"_s,
                    groups);
        const std::array codes{store::Value(tableText(99))};
        job.Execute(u"UPDATE [Dati Generali] SET [Tabella Codici] = :1"_s, codes);
    }

private:
    QTemporaryDir m_folder;

public:
    store::Database job;
    QStringList descriptions = store::groupDescriptions(QStringLiteral(MASTER));
    store::Settings settings{m_folder.filePath(u"Zelto.ini"_s)};
    test::ScriptedUser user{m_folder.path()};
};

void showAndClose(QDialog& dialog)
{
    dialog.show();
    QApplication::processEvents();
    dialog.close();
}

void openVariabili(benchmark::State& state, Desk& desk)
{
    for (auto _ : state) {
        coefficients::Variabili screen(desk.job, desk.descriptions, desk.user, desk.settings);
        showAndClose(screen);
    }
}

void openDatiGenerali(benchmark::State& state, Desk& desk)
{
    for (auto _ : state) {
        coefficients::DatiGenerali screen(desk.job, desk.user, desk.settings);
        showAndClose(screen);
    }
}

void openBareTable(benchmark::State& state, int rows)
{
    for (auto _ : state) {
        QDialog dialog;
        dialog.resize(700, 600);
        auto* table = new QTableWidget(rows, Columns);
        for (int row = 0; row < rows; ++row)
            for (int column = 0; column < Columns; ++column)
                table->setItem(row, column, new QTableWidgetItem(cellText(row + 1, column + 1)));
        (new QVBoxLayout(&dialog))->addWidget(table);
        showAndClose(dialog);
    }
}

/// A letter and its deletion; both are painted.
void typeAKey(benchmark::State& state, QWidget& field)
{
    for (auto _ : state)
        for (const auto& [key, text] :
             {std::pair{Qt::Key_A, u"a"_s}, std::pair{Qt::Key_Backspace, u"\b"_s}}) {
            QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
            QApplication::sendEvent(&field, &press);
            QApplication::processEvents();
        }
}

void typeInCell(benchmark::State& state)
{
    widgets::Grid grid({}, {{.header = u"A"_s, .maxLength = 10}}, widgets::Grid::AtEnd::Stays);
    std::vector<widgets::GridRow> rows;
    for (int row = 1; row <= 300; ++row)
        rows.push_back({.number = QString::number(row), .cells = {cellText(row, 1)}});
    grid.cells().followRows(rows);
    grid.resize(700, 600);
    grid.show();
    QApplication::processEvents();
    grid.setCurrentCell(150, 0);
    grid.MsFlexGridEdit();
    typeAKey(state, *QApplication::focusWidget());
}

void typeInField(benchmark::State& state)
{
    QLineEdit field(u"150.1"_s);
    field.show();
    QApplication::processEvents();
    typeAKey(state, field);
}

void add(const char* name, const std::function<void(benchmark::State&)>& run)
{
    benchmark::RegisterBenchmark(name, run)->Unit(benchmark::kMillisecond)->UseRealTime();
}

} // namespace

int main(int argc, char* argv[])
{
    const QApplication application(argc, argv);
    Desk desk;
    add("variabili/zelto", [&desk](benchmark::State& state) { openVariabili(state, desk); });
    add("variabili/base", [](benchmark::State& state) { openBareTable(state, 200); });
    add("dati_generali/zelto", [&desk](benchmark::State& state) { openDatiGenerali(state, desk); });
    add("dati_generali/base", [](benchmark::State& state) { openBareTable(state, 99); });
    add("tasto/zelto", typeInCell);
    add("tasto/base", typeInField);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
