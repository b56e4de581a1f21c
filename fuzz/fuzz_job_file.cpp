// SPDX-License-Identifier: GPL-3.0-or-later
// Opening, loading and calculating a job. Input: the bytes of a job file, known by the engine's
// signature, or else changes to the cells of a sound job whose tables take anything: most bytes of
// a file only tell whether it is damaged, and the loader would rarely see one.
#include "calc/allocation.h"
#include "calc/job_loader.h"
#include "calc/staircase_shares.h"
#include "fuzz_input.h"
#include "fuzz_job_tables.h"
#include "store/format_check.h"
#include "store/user_interface.h"

#include <QTemporaryDir>

#include <algorithm>
#include <cmath>

using namespace zelto;
using namespace zelto::fuzz;

namespace {

class Nobody : public store::Messages
{
public:
    void showMessage(const QString& /*text*/) override {}
    void ReportError(const std::exception& /*error*/) override {}
};

/// Together exactly 1000, unless there was nothing to divide.
void requireClosed(const std::vector<calc::Millesimi>& shares, std::size_t units)
{
    require(shares.size() == units);
    calc::Millesimi sum;
    bool anyAboveZero = false;
    for (const calc::Millesimi share : shares) {
        sum += share;
        anyAboveZero = anyAboveZero || share > calc::Millesimi{};
    }
    require(sum == calc::Mille || !anyAboveZero);
}

void calculateStaircases(const calc::ModelloLavoro& modello, const calc::Consistenze& consistenze)
{
    for (const QString& codice : calc::elencoScale(modello))
        for (const auto indice :
             {calc::IndicePiano::PerConsistenza, calc::IndicePiano::Proporzionale}) {
            const calc::QuoteScala quote = calc::calcolaScala(modello, consistenze, codice, indice);
            requireClosed(quote.MillProp, modello.unita.size());
            requireClosed(quote.MillPiano, modello.unita.size());
            requireClosed(quote.MillScala, modello.unita.size());
        }
}

void calculate(const calc::ModelloLavoro& modello)
{
    require(modello.NumUI() <= store::MostUnits && modello.NumTabelle() <= store::SpecialTables);
    for (const calc::UnitaImmobiliare& unita : modello.unita)
        require(unita.vani.size() <= store::MostRooms && std::isfinite(unita.HPiano));
    const calc::Consistenze consistenze = calc::calcolaConsistenze(modello);
    const std::vector<calc::Millesimi> general = calc::calcolaMillGen(consistenze);
    requireClosed(general, modello.unita.size());
    for (int t = 1; t <= modello.NumTabelle(); ++t)
        requireClosed(calc::calcolaMillTab(modello, consistenze, t), modello.unita.size());
    calculateStaircases(modello, consistenze);
    require(calc::calcolaQuote(modello, general, calc::importoCent(u"1250,50"_s)).size() ==
            modello.unita.size());
}

/// Every refusal is fine as long as it is one of ours.
template <typename Operation>
void refusable(Operation operation)
{
    try {
        operation();
    } catch (const store::DatabaseError& error) {
        require(!error.description().isEmpty());
    } catch (const calc::CalcError& error) {
        require(error.what()[0] != '\0');
    }
}

void load(store::Database& job)
{
    refusable([&] { calculate(calc::CaricaLavoro(job)); });
}

void openFile(QString path)
{
    Nobody user;
    store::VerificaFormato(path, user);
    if (path.isEmpty())
        return;
    store::Database copy = store::Database::openCopyInMemory(path);
    store::ControllaVersione(copy);
    refusable([&] { store::ControllaTabelle(copy); });
    load(copy);
    store::Database job = store::Database::open(path);
    require(!job.tableNames().isEmpty());
}

void runFile(std::string_view bytes)
{
    static const QTemporaryDir folder(folderTemplate());
    const QString path = folder.filePath(u"LAVORO.ZLT"_s);
    writeFile(path, bytes);
    refusable([&] { openFile(path); });
}

void runCells(std::string_view bytes)
{
    static store::Database job = looseJob();
    store::Database::Transaction takenBack(job);
    // The check of all contents takes longer than the loading, which must bear what it refuses.
    const bool checked = takeByte(bytes) % 4 == 0;
    refusable([&] { changeCells(job, bytes); });
    if (checked)
        refusable([&] { store::ControllaTabelle(job); });
    load(job);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes = bytesOf(data, size);
    if (bytes.starts_with("SQLite format 3"))
        runFile(bytes);
    else
        runCells(bytes);
    return 0;
}
