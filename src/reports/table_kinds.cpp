// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/table_kinds.h"

#include "calc/figures.h"

#include <functional>

namespace zelto::reports {

namespace {

using calc::cifra;
using calc::IndicePiano;
using calc::MascheraConsistenza;
using calc::MascheraMillesimi;
using calc::Millesimi;
using calc::ModelloLavoro;
using calc::UnitaImmobiliare;

/// Stands in a column that does not apply to a unit.
const QString NonApplicabile = u" ------     "_s;

/// What every complete set of shares adds up to, as total rows print it.
const QString TotaleMillesimi = u"1000.000"_s;

TableColumn textColumn(const QString& head, float position, float width)
{
    return {.head = head, .position = position, .width = width};
}

TableColumn sizeColumn(const QString& head, float position)
{
    return {.head = head, .position = position, .decimals = 4, .mask = &MascheraConsistenza};
}

TableColumn shareColumn(const QString& head, float position)
{
    return {.head = head,
            .position = position,
            .decimals = 3,
            .mask = &MascheraMillesimi,
            .isShare = true};
}

TableColumn amountColumn(float position)
{
    return {.head = u"IMPORTO"_s, .position = position, .decimals = 2};
}

std::vector<TableColumn> shareColumns()
{
    return {textColumn(u"RIFERIMENTO"_s, 10, 39), textColumn(u"LIVELLO"_s, 50, 27),
            sizeColumn(u"CONS.TOT."_s, 90), shareColumn(u"MILLESIMI"_s, 110)};
}

std::vector<TableColumn> shareAllocationColumns()
{
    return {textColumn(u"RIFERIMENTO"_s, 10, 29), textColumn(u"LIVELLO"_s, 40, 27),
            sizeColumn(u"CONS.TOT."_s, 80), shareColumn(u"MILLESIMI"_s, 100), amountColumn(120)};
}

std::vector<TableColumn> staircaseColumns()
{
    return {textColumn(u"RIFERIMENTO"_s, 8, 26), textColumn(u"LIVELLO"_s, 35, 18),
            sizeColumn(u"CONS.VIRT."_s, 65),     shareColumn(u"MILL.PROP."_s, 80),
            sizeColumn(u"IND.H.P."_s, 95),       shareColumn(u"MILL.PIANO"_s, 110),
            shareColumn(u"MILL.SCALA"_s, 125)};
}

std::vector<TableColumn> staircaseAllocationColumns()
{
    return {textColumn(u"RIFERIMENTO"_s, 8, 26), textColumn(u"LIVELLO"_s, 35, 18),
            sizeColumn(u"CONS.VIRT."_s, 65),     shareColumn(u"M.PROP."_s, 77),
            sizeColumn(u"IND.H.P."_s, 88),       shareColumn(u"M.PIANO"_s, 100),
            shareColumn(u"M.SCALA"_s, 112),      amountColumn(127)};
}

/// The table with its columns and totals, still without rows.
TableReport tableOf(QString name, QString title, std::vector<TableColumn> columns,
                    std::vector<Millesimi> shares)
{
    TableReport table{.name = std::move(name),
                      .title = std::move(title),
                      .columns = std::move(columns),
                      .shares = std::move(shares)};
    for (const TableColumn& column : table.columns)
        table.totals.push_back(column.isShare ? Cell{TotaleMillesimi, calc::Mille.toDouble()}
                                              : Cell());
    return table;
}

/// Adds the figures of a unit from the given column on.
template <typename... Figures>
void addFigures(const TableReport& table, std::vector<Cell>& cells, const UnitaImmobiliare& unita,
                Figures... figures)
{
    const auto add = [&](auto figure) {
        const TableColumn& column = table.columns[cells.size()];
        cells.push_back(
            {cifra(*column.mask, figure, column.head, {unita}), column.mask->shown(figure)});
    };
    (add(figures), ...);
}

QStringList textsOf(const std::vector<Cell>& cells)
{
    QStringList texts;
    for (const Cell& cell : cells)
        texts << cell.text;
    return texts;
}

/// Nothing applies to a unit that the table is not about.
void addRow(TableReport& table, std::vector<Cell> cells, QStringList plain)
{
    cells.resize(table.columns.size(), {NonApplicabile});
    table.rows.push_back({std::move(cells), std::move(plain)});
}

TableReport shareTable(const SizedJob& job, TableReport table,
                       const std::function<bool(const UnitaImmobiliare&)>& isMember)
{
    for (std::size_t u = 0; u < job.modello.unita.size(); ++u) {
        const UnitaImmobiliare& unita = job.modello.unita[u];
        std::vector<Cell> cells{{unita.Riferimento}, {unita.Livello}};
        if (isMember(unita))
            addFigures(table, cells, unita, job.consistenze.CTUI[u], table.shares[u].toDouble());
        QStringList plain = textsOf(cells);
        addRow(table, std::move(cells), std::move(plain));
    }
    return table;
}

TableReport tabellaGenerale(const SizedJob& job, const TableChoice& /*choice*/,
                            IndicePiano /*indice*/)
{
    return shareTable(job,
                      tableOf(u"Millesimi generali"_s, u"DETERMINAZIONE MILLESIMI GENERALI"_s,
                              shareColumns(), calc::calcolaMillGen(job.consistenze)),
                      [](const UnitaImmobiliare& /*unita*/) { return true; });
}

TableReport tabellaSpeciale(const SizedJob& job, const TableChoice& choice, IndicePiano /*indice*/)
{
    const int t = choice.key.toInt();
    return shareTable(job,
                      tableOf(choice.label, u"  DETERMINAZIONE MILLESIMI "_s + choice.label,
                              shareColumns(),
                              calc::calcolaMillTab(job.modello, job.consistenze, t)),
                      [t](const UnitaImmobiliare& unita) { return unita.isInTable(t); });
}

/// The staircase's title, or "SCALA " and its code without one.
QString titoloScala(const ModelloLavoro& modello, const QString& codice)
{
    const calc::CodiceScala* riga = modello.codiceScala(codice);
    const bool hasTitle = riga != nullptr && !riga->titolo.trimmed().isEmpty();
    return u"  DETERMINAZIONE MILLESIMI "_s + (hasTitle ? riga->titolo : u"SCALA "_s + codice);
}

TableReport tabellaScala(const SizedJob& job, const TableChoice& choice, IndicePiano indice)
{
    constexpr std::size_t IndexColumn = 4;
    const QString& codice = choice.key;
    const auto quote = calc::calcolaScala(job.modello, job.consistenze, codice, indice);
    TableReport table = tableOf(u"Scala "_s + codice, titoloScala(job.modello, codice),
                                staircaseColumns(), quote.MillScala);
    table.plainTitle = codice;
    for (std::size_t u = 0; u < job.modello.unita.size(); ++u) {
        const UnitaImmobiliare& unita = job.modello.unita[u];
        std::vector<Cell> cells{{unita.Riferimento}, {unita.Livello}};
        QStringList plain;
        if (unita.CodScala == codice) {
            addFigures(table, cells, unita, job.consistenze.CTUI[u], quote.MillProp[u].toDouble(),
                       unita.HPiano, quote.MillPiano[u].toDouble(), quote.MillScala[u].toDouble());
            plain = textsOf(cells);
            if (unita.HPiano == 0)
                cells[IndexColumn] = cells[IndexColumn + 1] = {NonApplicabile};
        }
        addRow(table, std::move(cells), std::move(plain));
    }
    return table;
}

std::vector<TableChoice> tabelleSpeciali(const ModelloLavoro& modello)
{
    std::vector<TableChoice> choices;
    for (const QString& name : modello.NomeTabella)
        choices.push_back({QString::number(choices.size() + 1), name});
    return choices;
}

std::vector<TableChoice> scale(const ModelloLavoro& modello)
{
    std::vector<TableChoice> choices;
    for (const QString& codice : calc::elencoScale(modello))
        choices.push_back({codice, codice});
    return choices;
}

QString readTableNumber(const QString& typed)
{
    bool isNumber = false;
    const int t = typed.toInt(&isNumber);
    return isNumber && t >= 1 && t <= store::SpecialTables ? QString::number(t) : QString();
}

} // namespace

const std::vector<TableKind>& tableKinds()
{
    static const std::vector<TableKind> kinds{
        {.word = u"generali"_s,
         .caption = u"Millesimi generali"_s,
         .outputFile = u"calcolo.out"_s,
         .shareWord = u"generali"_s,
         .shareCaption = u"Millesimi generali"_s,
         .allocationColumns = shareAllocationColumns(),
         .choices = [](const ModelloLavoro& /*modello*/) { return std::vector<TableChoice>(1); },
         .table = tabellaGenerale},
        {.word = u"tabelle"_s,
         .caption = u"Tabelle"_s,
         .shareWord = u"tabella"_s,
         .keyName = u"N"_s,
         .shareCaption = u"Tabella specifica"_s,
         .listName = u"Tabella"_s,
         .allocationColumns = shareAllocationColumns(),
         .choices = tabelleSpeciali,
         .readKey = readTableNumber,
         .missing =
             [](const QString& key, std::size_t count) {
                 return u"La tabella %1 non esiste: il lavoro ne ha %2."_s.arg(key).arg(count);
             },
         .table = tabellaSpeciale},
        {.word = u"scale"_s,
         .caption = u"Scale"_s,
         .outputFile = u"scale.out"_s,
         .hasIndex = true,
         .shareWord = u"scala"_s,
         .keyName = u"CODICE"_s,
         .shareCaption = u"Millesimi scala"_s,
         .listName = u"Scala"_s,
         .allocationColumns = staircaseAllocationColumns(),
         .choices = scale,
         .readKey = [](const QString& typed) { return typed.toUpper(); },
         .missing =
             [](const QString& key, std::size_t /*count*/) {
                 return u"Nessuna unità appartiene alla scala «%1»."_s.arg(key);
             },
         .table = tabellaScala},
    };
    return kinds;
}

} // namespace zelto::reports
