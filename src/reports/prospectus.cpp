// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/figures.h"
#include "reports/sections.h"
#include "reports/text_output.h"
#include "text/format_mask.h"

#include <array>
#include <string>

namespace zelto::reports {

namespace {

using calc::MascheraCoefficiente;
using calc::MascheraNumero;
using calc::MascheraSuperficie;
using calc::MascheraTotaleUnita;
using calc::richiediIntera;
using calc::UnitaImmobiliare;
using calc::Vano;

constexpr float RoomColumn = 8;
constexpr float NameColumn = 13;
constexpr QStringView Totale = u"TOTALE";

/// A figure of a room: its heading, the column it ends at, its mask and its place in the model.
struct RoomFigure
{
    const char16_t* head;
    float column;
    const text::NumberMask& mask;
    float Vano::*value;
};

constexpr std::array RoomFigures{
    RoomFigure{u"C.R.", 40, MascheraSuperficie, &Vano::CR},
    RoomFigure{u"C.D.", 48, MascheraCoefficiente, &Vano::CD},
    RoomFigure{u"C.F.", 56, MascheraSuperficie, &Vano::CF},
    RoomFigure{u"C.O.", 63, MascheraCoefficiente, &Vano::CO},
    RoomFigure{u"C.P.", 70, MascheraCoefficiente, &Vano::CP},
    RoomFigure{u"C.L.", 77, MascheraCoefficiente, &Vano::CL},
    RoomFigure{u"C.FU.", 84, MascheraCoefficiente, &Vano::CFU},
    RoomFigure{u"C.V.T.", 93, MascheraSuperficie, &Vano::CVT},
    RoomFigure{u"P.R.", 101, MascheraCoefficiente, &Vano::PR},
    RoomFigure{u"C.T.", 110, MascheraSuperficie, &Vano::CT},
};

struct LegendLine
{
    const char16_t* left;
    const char16_t* leftMeaning;
    const char16_t* right;
    const char16_t* rightMeaning;
};

constexpr std::array Legend{
    LegendLine{u"C.R.       ", u"= CONSISTENZA REALE             ", u"C.L.       ",
               u"= COEFF. LUMINOSITA'"},
    LegendLine{u"C.D.       ", u"= COEFF.DESTINAZIONE            ", u"C.FU.      ",
               u"= COEFF. FUNZIONALITA'"},
    LegendLine{u"C.F.       ", u"= CONSISTENZA FITTIZIA          ", u"C.V.T.     ",
               u"= CONSISTENZA VIRTUALE TOTALE"},
    LegendLine{u"C.O.       ", u"= COEFF.ORIENTAMENTO            ", u"P.R.       ",
               u"= PIANO RIDUTTORE"},
    LegendLine{u"C.P.       ", u"= COEFF.PROSPETTO               ", u"C.T.       ",
               u"= CONSISTENZA TOTALE"},
};

void printLegend(ReportPage& page)
{
    for (const LegendLine& line : Legend) {
        page.nextRow();
        page.left(8, QString::fromUtf16(line.left));
        page.left(18, QString::fromUtf16(line.leftMeaning));
        page.left(50, QString::fromUtf16(line.right));
        page.left(60, QString::fromUtf16(line.rightMeaning));
    }
    page.rule();
}

void printHeads(ReportPage& page)
{
    page.nextRow();
    page.setBold(true);
    page.left(RoomColumn, u"VANO AMBIENTE"_s);
    for (const RoomFigure& figure : RoomFigures)
        page.right(figure.column, QString::fromUtf16(figure.head));
    page.setBold(false);
    page.rule();
}

void printPageHead(ReportPage& page)
{
    page.header();
    printLegend(page);
    printHeads(page);
}

QString printedName(const QString& ambiente)
{
    return text::FormatMask(u" -  \\                  \\", ambiente);
}

float endOfName(const print::PrintEngine& engine, std::string_view CR)
{
    return endBefore(engine, RoomFigures.front().column, QString::fromLatin1(QByteArrayView(CR)));
}

/// What is printed of a room, in its order, behind the reference of its unit.
enum RoomField : std::size_t { Reference, Number, Name, Figures };
using RoomFields = std::array<std::string, Figures + RoomFigures.size()>;

void printRoom(ReportPage& page, const RoomFields& fields, const QString& name)
{
    constexpr float NumberColumn = 12;
    constexpr float NameWidth = 18; // up to the widest real size
    page.nextRow();
    page.figure(NumberColumn, fields[Number]);
    page.fitted(NameColumn, NameWidth, name,
                [&] { return endOfName(page.engine(), fields[Figures]); });
    for (std::size_t i = 0; i < RoomFigures.size(); ++i)
        page.figure(RoomFigures[i].column, fields[Figures + i]);
}

void printUnit(ReportPage& page, TextOutput& output, const UnitaImmobiliare& unita, double CTUI)
{
    page.nextRow();
    constexpr float LevelColumn = 58;
    page.fitted(RoomColumn, 49, u"Riferimento - "_s + unita.Riferimento,
                [] { return LevelColumn - 0.5F; });
    page.fitted(LevelColumn, u"Livello - "_s + unita.Livello, RightMargin);
    RoomFields fields{unita.Riferimento.toStdString()};
    int r = 0;
    for (const Vano& vano : unita.vani) {
        const QString name = printedName(vano.Ambiente);
        MascheraNumero.format(static_cast<double>(++r), fields[Number]);
        fields[Name] = name.toStdString();
        for (std::size_t i = 0; i < RoomFigures.size(); ++i)
            RoomFigures[i].mask.format(vano.*RoomFigures[i].value, fields[Figures + i]);
        printRoom(page, fields, name);
        output.writeLine(fields);
    }
    page.nextRow();
    page.left(94, Totale.toString());
    page.right(110, MascheraTotaleUnita.format(CTUI));
    page.rule();
}

void controllaUnita(const UnitaImmobiliare& unita, double CTUI)
{
    int r = 0;
    for (const Vano& vano : unita.vani) {
        ++r;
        for (const RoomFigure& figure : RoomFigures)
            richiediIntera(figure.mask, vano.*figure.value, figure.head, {unita, r});
    }
    richiediIntera(MascheraTotaleUnita, CTUI, Totale, {unita});
}

/// Whether the block of a unit, heading, total and rule included, still fits the page.
bool fits(const ReportPage& page, const UnitaImmobiliare& unita)
{
    return page.row() + static_cast<float>(unita.vani.size()) + 4 <= page.lastUsableRow();
}

} // namespace

QString roomNameOnPaper(const print::PrintEngine& engine, const QString& name, float CR)
{
    const float end = endOfName(engine, MascheraSuperficie.format(CR).toStdString());
    constexpr qsizetype Dash = 3; // "-" and two blanks before the name
    return engine.fitted(printedName(name).trimmed(), end - NameColumn).text.mid(Dash);
}

void controllaProspetto(const SizedJob& job)
{
    for (std::size_t u = 0; u < job.modello.unita.size(); ++u)
        controllaUnita(job.modello.unita[u], job.consistenze.CTUI[u]);
}

void StampaProspetto(ReportPage& page, const ReportContext& context, const SizedJob& job,
                     FormatoDettaglio formato)
{
    TextOutput output(context.outputFolder, ConsistenzaOut);
    for (std::size_t u = 0; u < job.modello.unita.size(); ++u) {
        const UnitaImmobiliare& unita = job.modello.unita[u];
        if (u == 0 || !fits(page, unita)) {
            if (u > 0)
                page.finish();
            printPageHead(page);
        }
        printUnit(page, output, unita, job.consistenze.CTUI[u]);
        if (formato == FormatoDettaglio::Esteso)
            page.fill();
    }
    if (!job.modello.unita.empty())
        page.finish();
    output.commit();
}

} // namespace zelto::reports
