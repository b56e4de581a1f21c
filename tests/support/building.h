// SPDX-License-Identifier: GPL-3.0-or-later
// Small buildings for tests of the calculation and the reports.
#pragma once

#include "calc/modello_lavoro.h"
#include "calc/shares.h"
#include "text/literals.h"

#include <QString>
#include <QStringList>

#include <algorithm>

namespace zelto::test {

/// A room whose total size is its real size.
inline calc::Vano room(float size, const QString& name = u"Camera"_s)
{
    calc::Vano vano{
        .Ambiente = name, .CR = size, .CD = 1, .CO = 1, .CP = 1, .CL = 1, .CFU = 1, .PR = 1};
    calc::calcolaVano(vano);
    return vano;
}

struct UnitData
{
    float size = 0;
    QString scala = {};
    float HPiano = 0;
    QString flags = {};
};

/// A job of one-room units numbered from 1, labelled "Int. 1" and so on.
inline calc::ModelloLavoro building(const std::vector<UnitData>& units)
{
    calc::ModelloLavoro modello;
    for (const UnitData& data : units) {
        calc::UnitaImmobiliare unita;
        unita.RifUI = modello.NumUI() + 1;
        unita.Riferimento = u"Int. %1"_s.arg(unita.RifUI);
        unita.Livello = u"Piano %1"_s.arg(unita.RifUI);
        unita.CodScala = data.scala;
        unita.HPiano = data.HPiano;
        const QString flags = data.flags.leftJustified(store::SpecialTables, u' ');
        std::copy_n(flags.begin(), store::SpecialTables, unita.FlagTab.begin());
        unita.vani = {room(data.size)};
        modello.unita.push_back(unita);
    }
    return modello;
}

/// Shares as text, "500 499.9 0.1".
inline QString sharesText(const std::vector<calc::Millesimi>& shares)
{
    QStringList texts;
    for (const calc::Millesimi share : shares)
        texts << QString::number(share.toDouble());
    return texts.join(u' ');
}

} // namespace zelto::test
