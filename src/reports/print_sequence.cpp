// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/print_sequence.h"

#include "reports/cover_page.h"
#include "reports/technical_report.h"
#include "reports/text_output.h"

#include <algorithm>
#include <functional>

namespace zelto::reports {

namespace {

struct KindTables
{
    const TableKind& kind;
    std::vector<TableReport> tables;
};

std::vector<KindTables> calcolaTabelle(const SizedJob& job, const OpzioniCalcolo& opzioni)
{
    std::vector<KindTables> chosen;
    for (const TableKind& kind : tableKinds()) {
        if (!opzioni.tabelle.contains(kind.word))
            continue;
        chosen.push_back({kind, {}});
        for (const TableChoice& choice : kind.choices(job.modello))
            chosen.back().tables.push_back(kind.table(job, choice, opzioni.indice));
    }
    return chosen;
}

void writeOutput(const ReportContext& context, const KindTables& chosen)
{
    TextOutput output(context.outputFolder, chosen.kind.outputFile);
    for (const TableReport& table : chosen.tables) {
        if (!table.plainTitle.isEmpty())
            output.writeLine({table.plainTitle});
        for (const TableRow& row : table.rows)
            if (!row.plain.isEmpty())
                output.writeLine(row.plain);
    }
    output.commit();
}

/// Draws a calculation section that is computed already.
using Drawing = std::function<void(const ReportContext& context)>;

Drawing prepare(const calc::ModelloLavoro& modello, const OpzioniCalcolo& opzioni)
{
    const SizedJob job(modello);
    if (opzioni.dettaglio)
        controllaProspetto(job);
    return [opzioni, job, chosen = calcolaTabelle(job, opzioni)](const ReportContext& context) {
        ReportPage page(context, opzioni.primaPagina);
        if (opzioni.dettaglio)
            StampaProspetto(page, context, job, opzioni.formato);
        for (const KindTables& kind : chosen) {
            for (const TableReport& table : kind.tables)
                printTable(page, table, Paging::FullPage);
            if (!kind.kind.outputFile.isEmpty())
                writeOutput(context, kind);
        }
    };
}

Drawing prepare(const calc::ModelloLavoro& modello, const OpzioniRiparto& opzioni)
{
    return [table = tabellaRiparto(SizedJob(modello), opzioni)](const ReportContext& context) {
        ReportPage page(context, 1);
        printTable(page, table, Paging::FortyFiveUnits);
    };
}

std::vector<TableReport> tables(const SizedJob& job, const OpzioniCalcolo& opzioni)
{
    std::vector<TableReport> all;
    for (KindTables& chosen : calcolaTabelle(job, opzioni))
        std::ranges::move(chosen.tables, std::back_inserter(all));
    return all;
}

std::vector<TableReport> tables(const SizedJob& job, const OpzioniRiparto& opzioni)
{
    return {tabellaRiparto(job, opzioni)};
}

template <typename Items>
QStringList wordsOf(const Items& items)
{
    QStringList words;
    for (const auto& item : items)
        words << item.word;
    return words;
}

} // namespace

const std::vector<SezioneStampa>& sezioniStampa()
{
    static const std::vector<SezioneStampa> sections{
        {u"prima-pagina"_s, u" Prima pagina"_s, StampaPrimaPagina},
        {u"relazione"_s, u" Relazione"_s, StampaRelazione},
        {SezioneCalcolo, u" Calcolo"_s, nullptr},
    };
    return sections;
}

QStringList tutteLeSezioni()
{
    return wordsOf(sezioniStampa());
}

QStringList tutteLeTabelle()
{
    return wordsOf(tableKinds());
}

const Documento& documento(const OpzioniStampa& opzioni)
{
    static const std::array documents{
        Documento{u"Tabelle millesimali"_s, u"Stampa prospetto dei calcoli"_s},
        Documento{u"Riparto importo"_s, u"Stampa riparto importo"_s, u" - riparto"_s}};
    return documents.at(opzioni.index());
}

std::vector<TableReport> tabelleScelte(const calc::ModelloLavoro& modello,
                                       const OpzioniStampa& opzioni)
{
    if (modello.unita.empty())
        return {};
    return std::visit([&](const auto& one) { return tables(SizedJob(modello), one); }, opzioni);
}

void stampaDocumento(const ReportContext& context, const QStringList& sezioni,
                     const OpzioniStampa& opzioni)
{
    // What is refused is so first of all, and leaves nothing on paper and in files.
    Drawing calculation;
    if (sezioni.contains(SezioneCalcolo))
        calculation =
            std::visit([&](const auto& one) { return prepare(context.modello, one); }, opzioni);
    for (const SezioneStampa& section : sezioniStampa()) {
        if (!sezioni.contains(section.word))
            continue;
        if (section.draw != nullptr) {
            section.draw(context);
            continue;
        }
        context.status.SetStatus(documento(opzioni).printTitle, true);
        calculation(context);
    }
}

} // namespace zelto::reports
