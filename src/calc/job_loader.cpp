// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/job_loader.h"

#include "calc/shares.h"
#include "store/job_queries.h"
#include "store/schema.h"
#include "text/decimal_text.h"
#include "text/table_text.h"

#include <QDate>

#include <algorithm>
#include <cmath>

namespace zelto::calc {

namespace {

/// Lines of the table of codes that are looked at.
constexpr int MaxCodici = 1000;

/// The unit as messages name it.
QString nomeUnita(const UnitaImmobiliare& unita)
{
    return u"L'unità %1 (%2)"_s.arg(QString::number(unita.RifUI), unita.Riferimento);
}

std::vector<CodiceScala> leggiCodici(const QString& tableText)
{
    const int righe = std::min(text::rowCount(tableText), MaxCodici);
    const text::CellTable table = text::TextToTable(tableText, righe, 3);
    std::vector<CodiceScala> codici;
    for (int riga = 1; riga <= righe; ++riga)
        if (!table.at(riga, 1).isEmpty())
            codici.push_back({.codice = table.at(riga, 1),
                              .titolo = table.at(riga, 2),
                              .percentuale = text::readNumber(table.at(riga, 3))});
    return codici;
}

/// What reports print of the general data.
void leggiDatiStampati(store::Database& lavoro, ModelloLavoro& modello)
{
    const store::Query dati = lavoro.records(store::TabellaDatiGenerali, {}, store::CampoChiave);
    if (dati.atEnd())
        return;
    for (int i = 0; const auto& campo : store::jobTable(store::TabellaDatiGenerali).fields) {
        const store::Value valore = dati.field(i++);
        if (valore.isNull())
            continue;
        QString& testo = modello.datiGenerali[campo.name] = valore.text();
        if (campo.type == store::FieldType::Date)
            testo = QDate::fromString(testo, Qt::ISODate).toString(u"dd.MM.yyyy"_s);
    }
    for (int t = 1; t <= store::SpecialTables; ++t)
        if (const QString campo = store::campoTabella(t); modello.datiGenerali.contains(campo))
            modello.NomeTabella.push_back(modello.datiGenerali[campo]);
    modello.tabellaCodici = leggiCodici(modello.datiGenerali.value(store::CampoCodici));
}

UnitaImmobiliare leggiUnita(const store::Query& record)
{
    UnitaImmobiliare unita;
    unita.RifUI = static_cast<int>(record.integer(1));
    unita.Riferimento = record.text(2);
    unita.Livello = record.text(3);
    unita.CodScala = record.text(4).toUpper();
    unita.HPiano = static_cast<float>(text::leadingNumber(record.utf8(5)));
    const QString flag = record.text(6).leftJustified(store::SpecialTables, u' ');
    std::copy_n(flag.begin(), store::SpecialTables, unita.FlagTab.begin());
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

void leggiElencoUnita(store::Database& lavoro, ModelloLavoro& modello)
{
    store::Query record = lavoro.records(store::TabellaUnita, {}, store::CampoChiave);
    for (; !record.atEnd(); record.next()) {
        requireSpaceForUnit(modello);
        modello.unita.push_back(leggiUnita(record));
    }
}

Vano leggiVano(const store::Query& record, Liste& liste)
{
    Vano vano;
    vano.Ambiente = record.text(3);
    vano.CR = static_cast<float>(text::leadingNumber(record.utf8(4)));
    std::size_t lista = 0;
    for (float* coefficiente : {&vano.CD, &vano.CO, &vano.CP, &vano.CL, &vano.CFU, &vano.PR}) {
        const int campo = 5 + static_cast<int>(lista);
        *coefficiente = static_cast<float>(liste[lista++].resolve(record.utf8(campo)));
    }
    calcolaVano(vano);
    return vano;
}

/// Reads the rooms of a unit by its key.
void leggiVani(store::Query& record, UnitaImmobiliare& unita, Liste& liste)
{
    for (record.restart(store::roomKeysOf(unita.RifUI)); !record.atEnd(); record.next()) {
        if (unita.vani.size() == store::MostRooms)
            throw CalcError(nomeUnita(unita) +
                            u" ha più di %1 vani, il massimo di un'unità."_s.arg(store::MostRooms));
        unita.vani.push_back(leggiVano(record, liste));
        if (!std::isfinite(unita.vani.back().CT))
            throw CalcError(
                nomeUnita(unita) +
                u" ha una consistenza troppo grande nel vano %1."_s.arg(record.integer(2)));
    }
}

} // namespace

Liste CaricaListe(store::Database& lavoro)
{
    Liste liste;
    const store::Query variabili = lavoro.records(store::TabellaVariabili);
    if (variabili.atEnd())
        return liste;
    for (int k = 1; k <= store::Coefficients; ++k)
        if (!variabili.isNull(k))
            liste[static_cast<std::size_t>(k - 1)] = CoefficientList(variabili.text(k));
    return liste;
}

ModelloLavoro CaricaLavoro(store::Database& lavoro)
{
    ModelloLavoro modello;
    Liste liste = CaricaListe(lavoro);
    leggiDatiStampati(lavoro, modello);
    leggiElencoUnita(lavoro, modello);

    store::Query vani = store::roomsByKey(lavoro);
    for (UnitaImmobiliare& unita : modello.unita)
        leggiVani(vani, unita, liste);
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
