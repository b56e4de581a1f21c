// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/written_job.h"

#include "store/job_queries.h"
#include "store/schema.h"
#include "text/table_text.h"

#include <algorithm>

namespace zelto::calc {

namespace {

/// Rows of a table text that are looked at.
constexpr int MaxRighe = 1000;

/// The rooms of a unit, by its key.
std::vector<VanoScritto> leggiVani(store::Query& record, int rifUI)
{
    std::vector<VanoScritto> vani;
    for (record.restart(store::roomKeysOf(rifUI)); !record.atEnd(); record.next()) {
        VanoScritto& vano = vani.emplace_back();
        vano.posizione = static_cast<int>(record.integer(2));
        vano.ambiente = record.text(3);
        std::ranges::copy(leggiTestiVano(record), vano.cifre.begin());
    }
    return vani;
}

UnitaScritta leggiUnitaIntera(const store::Query& record, store::Query& vani)
{
    UnitaScritta unita = leggiUnitaScritta(record);
    unita.vani = leggiVani(vani, unita.RifUI);
    return unita;
}

} // namespace

DatiScritti leggiDatiScritti(store::Database& lavoro)
{
    DatiScritti scritti;
    const store::Query dati = lavoro.records(store::TabellaDatiGenerali, {}, store::CampoChiave);
    if (dati.atEnd())
        return scritti;
    for (int i = 0; const auto& campo : store::jobTable(store::TabellaDatiGenerali).fields)
        if (const store::Value valore = dati.field(i++); !valore.isNull())
            scritti.testi[campo.name] = valore.text();
    for (int t = 1; std::optional<QString> & nome : scritti.NomeTabella)
        if (const auto testo = scritti.testi.constFind(store::campoTabella(t++));
            testo != scritti.testi.constEnd())
            nome = *testo;
    scritti.tabellaCodici = scritti.testi.value(store::CampoCodici);
    return scritti;
}

ElenchiScritti leggiElenchiScritti(store::Database& lavoro)
{
    ElenchiScritti elenchi;
    const store::Query variabili = lavoro.records(store::TabellaVariabili);
    if (variabili.atEnd())
        return elenchi;
    int campo = 0;
    for (QString& elenco : elenchi)
        elenco = variabili.text(++campo);
    return elenchi;
}

UnitaScritta leggiUnitaScritta(const store::Query& record)
{
    return {.RifUI = static_cast<int>(record.integer(1)),
            .Riferimento = record.text(2),
            .Livello = record.text(3),
            .CodScala = record.text(4),
            .HPiano = std::string(record.utf8(5)),
            .FlagTab = record.text(6)};
}

TestiVano leggiTestiVano(const store::Query& record)
{
    TestiVano testi;
    int campo = 4;
    for (std::string_view& testo : testi)
        testo = record.utf8(campo++);
    return testi;
}

LavoroScritto LeggiLavoroScritto(store::Database& lavoro)
{
    LavoroScritto scritto{.dati = leggiDatiScritti(lavoro),
                          .elenchi = leggiElenchiScritti(lavoro),
                          .unita = {},
                          .orfani = {}};
    store::Query vani = store::roomsByKey(lavoro);
    store::Query unita = lavoro.records(store::TabellaUnita, {}, store::CampoChiave);
    for (; !unita.atEnd(); unita.next())
        scritto.unita.push_back(leggiUnitaIntera(unita, vani));
    store::Query orfano = store::roomsWithoutUnit(lavoro);
    for (; !orfano.atEnd(); orfano.next())
        scritto.orfani.push_back({.RifUI = static_cast<int>(orfano.integer(1)),
                                  .posizione = static_cast<int>(orfano.integer(2)),
                                  .ambiente = orfano.text(3)});
    return scritto;
}

void RileggiUnitaScritta(store::Database& lavoro, LavoroScritto& scritto, int rifUI)
{
    std::erase_if(scritto.unita, [&](const UnitaScritta& una) { return una.RifUI == rifUI; });
    std::erase_if(scritto.orfani, [&](const VanoOrfano& uno) { return uno.RifUI == rifUI; });
    store::Query vani = store::roomsByKey(lavoro);
    store::Query unita =
        lavoro.records(store::TabellaUnita, {{store::CampoUnita, rifUI}}, store::CampoChiave);
    if (unita.atEnd())
        for (const VanoScritto& vano : leggiVani(vani, rifUI))
            scritto.orfani.push_back(
                {.RifUI = rifUI, .posizione = vano.posizione, .ambiente = vano.ambiente});
    for (; !unita.atEnd(); unita.next()) {
        const auto posto = std::min(store::unitsBefore(lavoro, unita.field(0)),
                                    static_cast<int>(scritto.unita.size()));
        scritto.unita.insert(scritto.unita.begin() + posto, leggiUnitaIntera(unita, vani));
    }
}

std::vector<Riga> righeScritte(const QString& tableText)
{
    const int righe = std::min(text::rowCount(tableText), MaxRighe);
    const text::CellTable table = text::TextToTable(tableText, righe, 3);
    std::vector<Riga> scritte;
    for (int riga = 1; riga <= righe; ++riga)
        scritte.push_back({riga, {table.at(riga, 1), table.at(riga, 2), table.at(riga, 3)}});
    while (!scritte.empty() && std::ranges::all_of(scritte.back().celle, &QString::isEmpty))
        scritte.pop_back();
    return scritte;
}

} // namespace zelto::calc
