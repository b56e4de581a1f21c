// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/tables.h"

#include "reports/figures.h"
#include "reports/text_output.h"

namespace zelto::reports {

namespace {

using calc::Millesimi;
using calc::ModelloLavoro;
using calc::QuoteScala;
using calc::UnitaImmobiliare;

constexpr float TitleWidth = 120;
constexpr qsizetype StaircaseFigures = 5;
constexpr QStringView Millesimale = u"MILLESIMI";

std::vector<TableColumn> shareColumns()
{
    return {{.head = u"RIFERIMENTO"_s, .position = 10, .side = Side::Left, .width = 39},
            {.head = u"LIVELLO"_s, .position = 50, .side = Side::Left, .width = 27},
            {.head = u"CONS.TOT."_s, .position = 90, .decimals = 4},
            {.head = u"MILLESIMI"_s, .position = 110, .decimals = 3}};
}

std::vector<TableColumn> staircaseColumns()
{
    return {{.head = u"RIFERIMENTO"_s, .position = 8, .side = Side::Left, .width = 26},
            {.head = u"LIVELLO"_s, .position = 35, .side = Side::Left, .width = 18},
            {.head = u"CONS.VIRT."_s, .position = 65, .decimals = 4},
            {.head = u"MILL.PROP."_s, .position = 80, .decimals = 3},
            {.head = u"IND.H.P."_s, .position = 95, .decimals = 4},
            {.head = u"MILL.PIANO"_s, .position = 110, .decimals = 3},
            {.head = u"MILL.SCALA"_s, .position = 125, .decimals = 3}};
}

QString consistenza(double CTUI, const UnitaImmobiliare& unita)
{
    return cifra(MascheraConsistenza, CTUI, u"CONS.TOT.", {unita});
}

TableReport shareTable(const QString& name, const QString& title)
{
    return {.name = name,
            .title = title,
            .titleWidth = TitleWidth,
            .columns = shareColumns(),
            .rows = {},
            .totals = {QString(), QString(), QString(), TotaleMillesimi}};
}

/// The figures of a unit of the staircase, in the order of the columns. Throws CalcError when one
/// does not fit its own.
QStringList staircaseFigures(const UnitaImmobiliare& unita, double CTUI, const QuoteScala& quote,
                             std::size_t u)
{
    return {consistenza(CTUI, unita), cifra(quote.MillProp[u], u"MILL.PROP.", {unita}),
            cifra(MascheraConsistenza, unita.HPiano, u"IND.H.P.", {unita}),
            cifra(quote.MillPiano[u], u"MILL.PIANO", {unita}),
            cifra(quote.MillScala[u], u"MILL.SCALA", {unita})};
}

QStringList staircaseCells(const UnitaImmobiliare& unita, double CTUI, const QuoteScala& quote,
                           std::size_t u)
{
    const QStringList names{unita.Riferimento, unita.Livello};
    if (unita.CodScala != quote.codice)
        return names + QStringList(StaircaseFigures, NonApplicabile);
    QStringList figures = staircaseFigures(unita, CTUI, quote, u);
    if (unita.HPiano == 0)
        figures[2] = figures[3] = NonApplicabile;
    return names + figures;
}

void writeStaircase(TextOutput& output, const ModelloLavoro& modello,
                    const calc::Consistenze& consistenze, const QuoteScala& quote)
{
    output.writeLine({quote.codice});
    for (std::size_t u = 0; u < modello.unita.size(); ++u) {
        const UnitaImmobiliare& unita = modello.unita[u];
        if (unita.CodScala == quote.codice)
            output.writeLine(QStringList{unita.Riferimento, unita.Livello} +
                             staircaseFigures(unita, consistenze.CTUI[u], quote, u));
    }
}

} // namespace

TableReport tabellaGenerale(const ModelloLavoro& modello)
{
    const calc::Consistenze consistenze = calc::calcolaConsistenze(modello);
    const std::vector<Millesimi> MillGen = calc::calcolaMillGen(consistenze);
    TableReport table = shareTable(u"Millesimi generali"_s, u"DETERMINAZIONE MILLESIMI GENERALI"_s);
    for (std::size_t u = 0; u < modello.unita.size(); ++u) {
        const UnitaImmobiliare& unita = modello.unita[u];
        table.rows.push_back({unita.Riferimento, unita.Livello,
                              consistenza(consistenze.CTUI[u], unita),
                              cifra(MillGen[u], Millesimale, {unita})});
    }
    return table;
}

TableReport tabellaSpeciale(const ModelloLavoro& modello, int t)
{
    const calc::Consistenze consistenze = calc::calcolaConsistenze(modello);
    const std::vector<Millesimi> MillTab = calc::calcolaMillTab(modello, consistenze, t);
    const QString& name = modello.NomeTabella[static_cast<std::size_t>(t - 1)];
    TableReport table = shareTable(name, u"  DETERMINAZIONE MILLESIMI "_s + name);
    for (std::size_t u = 0; u < modello.unita.size(); ++u) {
        const UnitaImmobiliare& unita = modello.unita[u];
        const bool member = unita.isInTable(t);
        table.rows.push_back({unita.Riferimento, unita.Livello,
                              member ? consistenza(consistenze.CTUI[u], unita) : NonApplicabile,
                              member ? cifra(MillTab[u], Millesimale, {unita}) : NonApplicabile});
    }
    return table;
}

QString titoloScala(const ModelloLavoro& modello, const QString& codice)
{
    const QString heading = u"  DETERMINAZIONE MILLESIMI "_s;
    const calc::CodiceScala* riga = modello.codiceScala(codice);
    if (riga != nullptr && !riga->titolo.trimmed().isEmpty())
        return heading + riga->titolo;
    return heading + u"SCALA "_s + codice;
}

TableReport tabellaScala(const ModelloLavoro& modello, const QuoteScala& quote)
{
    const calc::Consistenze consistenze = calc::calcolaConsistenze(modello);
    TableReport table{.name = u"Scala "_s + quote.codice,
                      .title = titoloScala(modello, quote.codice),
                      .titleWidth = TitleWidth,
                      .columns = staircaseColumns(),
                      .rows = {},
                      .totals = {QString(), QString(), QString(), TotaleMillesimi, QString(),
                                 TotaleMillesimi, TotaleMillesimi}};
    for (std::size_t u = 0; u < modello.unita.size(); ++u)
        table.rows.push_back(staircaseCells(modello.unita[u], consistenze.CTUI[u], quote, u));
    return table;
}

void StampaMillesimiGenerali(ReportPage& page, const ReportContext& context)
{
    const TableReport table = tabellaGenerale(context.modello);
    printTable(page, table, Paging::FullPage);
    TextOutput output(context.outputFolder, CalcoloOut);
    for (const QStringList& row : table.rows)
        output.writeLine(row);
    output.commit();
}

void StampaTabelle(ReportPage& page, const ReportContext& context)
{
    for (int t = 1; t <= context.modello.NumTabelle(); ++t)
        printTable(page, tabellaSpeciale(context.modello, t), Paging::FullPage);
}

void StampaScale(ReportPage& page, const ReportContext& context, calc::IndicePiano indice)
{
    const calc::Consistenze consistenze = calc::calcolaConsistenze(context.modello);
    TextOutput output(context.outputFolder, ScaleOut);
    for (const QString& codice : calc::elencoScale(context.modello)) {
        const QuoteScala quote = calc::calcolaScala(context.modello, consistenze, codice, indice);
        printTable(page, tabellaScala(context.modello, quote), Paging::FullPage);
        writeStaircase(output, context.modello, consistenze, quote);
    }
    output.commit();
}

} // namespace zelto::reports
