// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/job_loader.h"

#include "calc/shares.h"
#include "store/job_queries.h"
#include "store/schema.h"
#include "text/decimal_text.h"

#include <QDate>

#include <algorithm>
#include <cmath>

namespace zelto::calc {

namespace {

/// The unit as messages name it.
QString nomeUnita(const UnitaImmobiliare& unita)
{
    return u"L'unità %1 (%2)"_s.arg(QString::number(unita.RifUI), unita.Riferimento);
}

UnitaImmobiliare leggiUnita(const store::Query& record)
{
    UnitaImmobiliare unita = formaUnita(leggiUnitaScritta(record));
    if (!std::isfinite(unita.HPiano))
        throw CalcError(nomeUnita(unita) + u" ha un'altezza di piano troppo grande."_s);
    return unita;
}

/// Throws where the job has as many units already as one may have.
void requireSpaceForUnit(const ModelloLavoro& modello)
{
    if (modello.NumUI() == store::MostUnits)
        throw CalcError(
            u"La tabella «%1» contiene più di %2 unità, il massimo "
            u"di un lavoro."_s.arg(store::TabellaUnita, QString::number(store::MostUnits)));
}

/// Reads the rooms of a unit by its key.
void leggiVani(store::Query& record, UnitaImmobiliare& unita, Liste& liste)
{
    for (record.restart(store::roomKeysOf(unita.RifUI)); !record.atEnd(); record.next()) {
        if (unita.vani.size() == store::MostRooms)
            throw CalcError(nomeUnita(unita) +
                            u" ha più di %1 vani, il massimo di un'unità."_s.arg(store::MostRooms));
        unita.vani.push_back(formaVano(record.text(3), leggiTestiVano(record), liste));
        if (!std::isfinite(unita.vani.back().CT))
            throw CalcError(
                nomeUnita(unita) +
                u" ha una consistenza troppo grande nel vano %1."_s.arg(record.integer(2)));
    }
}

} // namespace

ModelloLavoro formaDati(const DatiScritti& dati)
{
    ModelloLavoro modello;
    modello.datiGenerali = dati.testi;
    for (const auto& campo : store::jobTable(store::TabellaDatiGenerali).fields)
        if (const auto testo = modello.datiGenerali.find(campo.name);
            campo.type == store::FieldType::Date && testo != modello.datiGenerali.end())
            *testo = QDate::fromString(*testo, Qt::ISODate).toString(u"dd.MM.yyyy"_s);
    for (const std::optional<QString>& nome : dati.NomeTabella)
        if (nome)
            modello.NomeTabella.push_back(*nome);
    for (const auto& [numero, celle] : righeScritte(dati.tabellaCodici))
        if (!celle[0].isEmpty())
            modello.tabellaCodici.push_back({.codice = celle[0],
                                             .titolo = celle[1],
                                             .percentuale = text::readNumber(celle[2])});
    return modello;
}

UnitaImmobiliare formaUnita(const UnitaScritta& scritta)
{
    UnitaImmobiliare unita;
    unita.RifUI = scritta.RifUI;
    unita.Riferimento = scritta.Riferimento;
    unita.Livello = scritta.Livello;
    unita.CodScala = scritta.CodScala.toUpper();
    unita.HPiano = static_cast<float>(text::leadingNumber(scritta.HPiano));
    const QString flag = scritta.FlagTab.leftJustified(store::SpecialTables, u' ');
    std::copy_n(flag.begin(), store::SpecialTables, unita.FlagTab.begin());
    return unita;
}

Vano formaVano(const QString& ambiente, const TestiVano& testi, Liste& liste)
{
    Vano vano;
    vano.Ambiente = ambiente;
    vano.CR = static_cast<float>(text::leadingNumber(testi[0]));
    for (std::size_t i = 1; i < testi.size(); ++i)
        vano.*CifreVano[i] = static_cast<float>(liste[i - 1].resolve(testi[i]));
    calcolaVano(vano);
    return vano;
}

Liste formaListe(const ElenchiScritti& elenchi)
{
    Liste liste;
    std::ranges::transform(elenchi, liste.begin(),
                           [](const QString& elenco) { return CoefficientList(elenco); });
    return liste;
}

Liste CaricaListe(store::Database& lavoro)
{
    return formaListe(leggiElenchiScritti(lavoro));
}

ModelloLavoro CaricaLavoro(store::Database& lavoro)
{
    Liste liste = CaricaListe(lavoro);
    ModelloLavoro modello = formaDati(leggiDatiScritti(lavoro));
    store::Query vani = store::roomsByKey(lavoro);
    // While the units are read the engine holds the file, and need not look at it for every unit.
    store::Query record = lavoro.records(store::TabellaUnita, {}, store::CampoChiave);
    for (; !record.atEnd(); record.next()) {
        requireSpaceForUnit(modello);
        modello.unita.push_back(leggiUnita(record));
        leggiVani(vani, modello.unita.back(), liste);
    }
    return modello;
}

void RicaricaUnita(store::Database& lavoro, ModelloLavoro& modello, int rifUI)
{
    ModelloLavoro nuovo = modello;
    std::erase_if(nuovo.unita, [&](const UnitaImmobiliare& unita) { return unita.RifUI == rifUI; });
    Liste liste = CaricaListe(lavoro);
    store::Query vani = store::roomsByKey(lavoro);
    store::Query record =
        lavoro.records(store::TabellaUnita, {{store::CampoUnita, rifUI}}, store::CampoChiave);
    for (; !record.atEnd(); record.next()) {
        requireSpaceForUnit(nuovo);
        UnitaImmobiliare unita = leggiUnita(record);
        leggiVani(vani, unita, liste);
        const auto posto = std::min(store::unitsBefore(lavoro, record.field(0)), nuovo.NumUI());
        nuovo.unita.insert(nuovo.unita.begin() + posto, std::move(unita));
    }
    modello = std::move(nuovo);
}

} // namespace zelto::calc
