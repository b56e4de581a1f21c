// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/unit_sheets.h"

#include "calc/figures.h"
#include "reports/sections.h"
#include "store/schema.h"

#include <utility>

namespace zelto::reports {

namespace {

using calc::MascheraCoefficiente;
using calc::MascheraConsistenza;
using calc::MascheraNumero;
using calc::MascheraSuperficie;
using calc::MascheraTotaleUnita;
using calc::ModelloLavoro;
using calc::UnitaImmobiliare;
using calc::Vano;

constexpr float LeftColumn = 8;
constexpr float MiddleColumn = 58;
constexpr float TitleWidth = 120;

/// A size of a room with its heading and the column it ends at.
struct RoomSize
{
    const char16_t* head;
    float column;
    float Vano::*value;
};

constexpr std::array RoomSizes{RoomSize{u"C.R.", 85, &Vano::CR}, RoomSize{u"C.F.", 100, &Vano::CF},
                               RoomSize{u"C.V.T.", 115, &Vano::CVT},
                               RoomSize{u"C.T.", RightMargin, &Vano::CT}};

/// Where one of the two coefficients of a row stands.
struct CoefficientPlace
{
    float name;
    float words;
    float figure; ///< its end
};

constexpr std::array CoefficientPlaces{CoefficientPlace{15, 28, 71},
                                       CoefficientPlace{75, 90, RightMargin}};
constexpr float RoomGap = 0.3F;
constexpr int CoefficientRows = store::Coefficients / int(CoefficientPlaces.size());
constexpr float RoomRows = RoomGap + 1 + CoefficientRows;

/// The sheet of a unit that is being drawn.
class Sheet
{
public:
    Sheet(ReportPage& page, const ModelloLavoro& modello, const UnitaImmobiliare& unita)
        : m_page(page), m_modello(modello), m_unita(unita)
    {
        head();
    }

    void printFacts();
    void printRooms(const std::vector<calc::ParoleVano>& parole, double CTUI);
    void printShares(const TableReport& table, const TableRow& row);
    void printAllocation(const TableReport& table, const TableRow& row);

private:
    void head();
    bool turned(float rows);
    void printList(const QString& label, const QStringList& names);
    void printRoomHeads();
    void printRoom(int number, const Vano& vano, const calc::ParoleVano& parole);
    void printCoefficient(const Vano& vano, const calc::ParoleVano& parole, std::size_t number);
    void printShareHeads(const TableReport& table, float rows);
    void printShareRow(const QString& name, const TableReport& table, std::vector<Cell> cells);

    ReportPage& m_page;
    const ModelloLavoro& m_modello;
    const UnitaImmobiliare& m_unita;
    QStringList m_heads; ///< of the shares above
};

void Sheet::head()
{
    m_page.header();
    m_page.nextRow(2);
    m_page.title(u"SCHEDA DELL'UNITÀ %1"_s.arg(m_unita.RifUI), TitleWidth);
    m_page.nextRow();
    m_page.rule();
    m_page.nextRow();
    m_page.fitted(LeftColumn, u"Riferimento - "_s + m_unita.Riferimento, MiddleColumn - 1);
    m_page.fitted(MiddleColumn, u"Livello - "_s + m_unita.Livello, RightMargin);
}

/// Goes on on a new page where there is no place for so many rows.
bool Sheet::turned(float rows)
{
    if (m_page.row() + rows <= m_page.lastUsableRow())
        return false;
    m_page.rule();
    m_page.finish();
    head();
    m_page.rule();
    return true;
}

void Sheet::printFacts()
{
    const QString& codice = m_unita.CodScala;
    const calc::CodiceScala* riga = m_modello.codiceScala(codice);
    QString scala = codice.trimmed().isEmpty() ? u"nessuna"_s : codice;
    if (riga != nullptr && !riga->titolo.trimmed().isEmpty())
        scala += u", "_s + riga->titolo.trimmed();
    m_page.nextRow();
    m_page.fitted(LeftColumn, u"Scala - "_s + scala, RightMargin);
    m_page.nextRow();
    m_page.left(LeftColumn,
                u"Altezza - "_s + MascheraConsistenza.format(m_unita.HPiano).trimmed());
    QStringList tabelle;
    for (int t = 1; t <= m_modello.NumTabelle(); ++t)
        if (m_unita.isInTable(t))
            tabelle << m_modello.NomeTabella[static_cast<std::size_t>(t - 1)].trimmed();
    printList(u"Tabelle - "_s, tabelle.isEmpty() ? QStringList(u"nessuna"_s) : tabelle);
    m_page.rule();
}

/// As many rows as the names need.
void Sheet::printList(const QString& label, const QStringList& names)
{
    QString line = label + names.front();
    for (const QString& name : names.mid(1)) {
        const QString longer = line + u", "_s + name;
        if (LeftColumn + inkWidth(m_page.engine(), longer + u',') <= RightMargin) {
            line = longer;
            continue;
        }
        m_page.nextRow();
        m_page.fitted(LeftColumn, line + u',', RightMargin);
        line = name;
    }
    m_page.nextRow();
    m_page.fitted(LeftColumn, line, RightMargin);
}

void Sheet::printRoomHeads()
{
    m_page.nextRow();
    m_page.setBold(true);
    m_page.left(LeftColumn, u"VANO AMBIENTE"_s);
    for (const RoomSize& size : RoomSizes)
        m_page.right(size.column, QString::fromUtf16(size.head));
    m_page.setBold(false);
    m_page.rule();
}

void Sheet::printRooms(const std::vector<calc::ParoleVano>& parole, double CTUI)
{
    constexpr float Closing = 2; // the rule and the total
    printRoomHeads();
    int number = 0;
    for (const Vano& vano : m_unita.vani) {
        if (turned(RoomRows + Closing))
            printRoomHeads();
        printRoom(number + 1, vano, parole[static_cast<std::size_t>(number)]);
        ++number;
    }
    m_page.nextRow();
    m_page.right(RoomSizes[RoomSizes.size() - 2].column, u"TOTALE"_s);
    m_page.right(RightMargin, MascheraTotaleUnita.format(CTUI));
    m_page.rule();
}

void Sheet::printRoom(int number, const Vano& vano, const calc::ParoleVano& parole)
{
    constexpr float NumberColumn = 12;
    constexpr float NameColumn = 13;
    m_page.nextRow(1 + RoomGap);
    m_page.right(NumberColumn, MascheraNumero.format(static_cast<double>(number)));
    m_page.setBold(true);
    m_page.fitted(NameColumn, vano.Ambiente, MiddleColumn);
    m_page.setBold(false);
    for (const RoomSize& size : RoomSizes)
        m_page.right(size.column, MascheraSuperficie.format(vano.*size.value));
    for (std::size_t i = 0; i < parole.size(); ++i) {
        if (i % CoefficientPlaces.size() == 0)
            m_page.nextRow();
        printCoefficient(vano, parole, i);
    }
}

void Sheet::printCoefficient(const Vano& vano, const calc::ParoleVano& parole, std::size_t number)
{
    const CoefficientPlace& place = CoefficientPlaces[number % CoefficientPlaces.size()];
    const QString figure = MascheraCoefficiente.format(vano.*calc::CifreVano[number + 1]);
    m_page.left(place.name, store::GroupNames[number + 1].toString());
    if (!parole[number].isEmpty())
        m_page.fitted(place.words, parole[number],
                      endBefore(m_page.engine(), place.figure, figure));
    m_page.right(place.figure, figure);
}

/// Headings where they are not those above, with room for so many rows below.
void Sheet::printShareHeads(const TableReport& table, float rows)
{
    constexpr float HeadRows = 2;
    QStringList texts;
    for (const TableColumn& column : table.columns)
        texts << column.head;
    if (!turned(HeadRows + rows) && texts == m_heads)
        return;
    m_heads = texts;
    m_page.nextRow();
    m_page.setBold(true);
    printShareRow(u"TABELLA"_s, table, heads(table));
    m_page.setBold(false);
}

/// Figures of a table under a name in place of the unit's.
void Sheet::printShareRow(const QString& name, const TableReport& table, std::vector<Cell> cells)
{
    for (std::size_t i = 0; table.columns[i].isText(); ++i)
        cells[i] = {};
    m_page.nextRow();
    m_page.fitted(LeftColumn, name, endOfText(m_page.engine(), table.columns, cells, 0));
    printCells(m_page, table, cells);
}

void Sheet::printShares(const TableReport& table, const TableRow& row)
{
    constexpr float Closing = 1;
    printShareHeads(table, 1 + Closing);
    printShareRow(table.name, table, row.cells);
}

void Sheet::printAllocation(const TableReport& table, const TableRow& row)
{
    constexpr float Closing = 4; // of the sheet, with the row of the totals and the note
    printShareHeads(table, 1 + Closing);
    printShareRow(table.name, table, row.cells);
    printShareRow(u"TOTALE"_s, table, table.totals);
    if (table.note.isEmpty())
        return;
    m_page.nextRow();
    m_page.left(LeftColumn, table.note);
}

} // namespace

Schede::Schede(const ModelloLavoro& modello, const calc::LavoroScritto& scritto, Tables quote,
               Tables riparti)
    : m_job(modello), m_parole(calc::paroleVani(modello, scritto)), m_quote(std::move(quote)),
      m_riparti(std::move(riparti))
{
    controllaProspetto(m_job);
    for (const UnitaImmobiliare& una : unita())
        calc::richiediIntera(MascheraConsistenza, una.HPiano, u"Altezza", {una});
}

void Schede::draw(ReportPage& page, std::size_t unit) const
{
    Sheet sheet(page, m_job.modello, unita()[unit]);
    sheet.printFacts();
    sheet.printRooms(m_parole[unit], m_job.consistenze.CTUI[unit]);
    for (const TableReport& table : m_quote)
        if (table.rows[unit].applies())
            sheet.printShares(table, table.rows[unit]);
    for (const TableReport& table : m_riparti)
        sheet.printAllocation(table, table.rows[unit]);
    page.rule();
    page.finish();
}

} // namespace zelto::reports
