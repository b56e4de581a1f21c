// SPDX-License-Identifier: GPL-3.0-or-later
#include "data/job_text.h"

#include "store/schema.h"

#include <QDate>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>

namespace zelto::data {
namespace {

// As many characters as the editors take.
constexpr int MaxNumber = 10;
constexpr int MaxExplanation = 30;
constexpr int MaxNotes = 400;
// With its brackets a reference fills the ten characters of a room's cell.
constexpr int MaxVariable = 8;

constexpr int UnitCells = 5;
constexpr int RoomCells = 8;
// Cells 2 to 7 of a room refer to the groups 1 to 6.
constexpr int FirstReference = 2;

using store::GroupNames;

int longest(QStringView field)
{
    return store::longestText(store::TabellaDatiGenerali, field);
}

QString tableRow(const QStringList& cells)
{
    return cells.join(u'\t') + u"\r\n"_s;
}

QString numberCell(const DataText& text, const Row& row, qsizetype index)
{
    static const QRegularExpression number(u"^[0-9]+([.][0-9]+)?$"_s);
    QString cell = text.cell(row, index, MaxNumber);
    if (!number.match(cell).hasMatch())
        text.fail(row, u"«%1» non è un numero."_s.arg(cell));
    return cell;
}

/// Gathers a job from its files, read in the order in which they refer to each other.
class JobReader
{
public:
    JobText read(const QString& folder);

private:
    void takeGeneral(const DataText& text, const Row& row);
    void takeDescription(const DataText& text, const Row& row);
    void takeDate(const DataText& text, const Row& row);
    void takeNote(const DataText& text, const Row& row);
    void takeTable(const DataText& text, const Row& row);
    void takeStaircase(const DataText& text, const Row& row);
    void readCoefficients(const DataText& text);
    void takeEntry(const DataText& text, const Row& row, std::size_t group);
    void takeUnit(const DataText& text, const Row& row);
    void takeRoom(const DataText& text, const Row& row);
    [[nodiscard]] QString tableFlags(const DataText& text, const Row& row) const;

    JobText m_job;
    QSet<QString> m_staircases;
    std::array<QSet<QString>, GroupNames.size()> m_variables;
    std::array<int, GroupNames.size()> m_entries{};
};

JobText JobReader::read(const QString& folder)
{
    const auto open = [&folder](QStringView name) {
        return DataText::read(u"%1/%2"_s.arg(folder, name));
    };
    const DataText general = open(u"dati_generali.txt");
    for (const Row& row : general.rows())
        takeGeneral(general, row);
    readCoefficients(open(u"coefficienti.txt"));
    const DataText units = open(u"unita.txt");
    m_job.unitsPath = units.path();
    for (const Row& row : units.rows())
        row.kind == RowKind::Indented ? takeRoom(units, row) : takeUnit(units, row);
    m_job.report = readParagraphs(folder + u"/relazione.txt"_s);
    return m_job;
}

void JobReader::takeGeneral(const DataText& text, const Row& row)
{
    struct Entry
    {
        QStringView name;
        qsizetype cells;
        void (JobReader::*take)(const DataText&, const Row&);
    };
    static constexpr std::array Entries{
        Entry{u"Descrizione", 2, &JobReader::takeDescription},
        Entry{u"Data", 2, &JobReader::takeDate}, Entry{u"Nota", 2, &JobReader::takeNote},
        Entry{u"Tabella", 3, &JobReader::takeTable}, Entry{u"Scala", 4, &JobReader::takeStaircase}};
    const QString& name = row.cells.front();
    const auto* const entry = std::ranges::find(Entries, QStringView(name), &Entry::name);
    if (entry == Entries.end())
        text.fail(row, u"voce «%1» sconosciuta."_s.arg(name));
    text.requireCells(row, entry->cells);
    (this->*entry->take)(text, row);
}

void JobReader::takeDescription(const DataText& text, const Row& row)
{
    auto* const line = std::ranges::find_if(m_job.description, &QString::isEmpty);
    if (line == m_job.description.end())
        text.fail(row, u"più di due righe di descrizione."_s);
    *line = text.cell(row, 1, longest(u"Descrizione"));
}

void JobReader::takeDate(const DataText& text, const Row& row)
{
    m_job.date = row.cells[1];
    if (!QDate::fromString(m_job.date, Qt::ISODate).isValid())
        text.fail(row, u"«%1» non è una data (aaaa-mm-gg)."_s.arg(m_job.date));
}

void JobReader::takeNote(const DataText& text, const Row& row)
{
    m_job.notes += (m_job.notes.isEmpty() ? QString() : u" "_s) + row.cells[1];
    if (m_job.notes.size() > MaxNotes)
        text.fail(row, u"le note sono più lunghe di %1 caratteri."_s.arg(MaxNotes));
}

void JobReader::takeTable(const DataText& text, const Row& row)
{
    const auto number = row.cells[1].toUInt();
    if (number < 1 || number > m_job.tables.size())
        text.fail(row, u"numero di tabella «%1» fuori da 1-10."_s.arg(row.cells[1]));
    // A gap would shift the names of the tables against the flags of the units.
    if (number > 1 && m_job.tables[number - 2].isEmpty())
        text.fail(row, u"la tabella %1 manca."_s.arg(number - 1));
    m_job.tables[number - 1] = text.cell(row, 2, longest(u"Tabella 1"));
}

void JobReader::takeStaircase(const DataText& text, const Row& row)
{
    const QString code = text.cell(row, 1, 1).toUpper();
    m_staircases.insert(code);
    m_job.staircases += tableRow({code, text.cell(row, 2, 100), numberCell(text, row, 3)});
}

void JobReader::readCoefficients(const DataText& text)
{
    const auto* group = GroupNames.end();
    for (const Row& row : text.rows()) {
        if (row.kind == RowKind::Heading) {
            group = std::ranges::find(GroupNames, QStringView(row.cells.front()));
            if (group == GroupNames.end())
                text.fail(row, u"gruppo «%1» sconosciuto."_s.arg(row.cells.front()));
        } else if (group == GroupNames.end()) {
            text.fail(row, u"coefficiente fuori da un gruppo."_s);
        } else {
            takeEntry(text, row, static_cast<std::size_t>(group - GroupNames.begin()));
        }
    }
}

void JobReader::takeEntry(const DataText& text, const Row& row, std::size_t group)
{
    text.requireCells(row, 3);
    if (++m_entries[group] > store::MostGroupRows)
        text.fail(row, u"più di %1 voci nel gruppo."_s.arg(store::MostGroupRows));
    // The first group holds the rooms' names in the place of values.
    const QString value = group == 0 ? text.cell(row, 0, MaxNumber) : numberCell(text, row, 0);
    const QString variable = text.cell(row, 1, MaxVariable);
    if (m_variables[group].contains(variable) && !variable.isEmpty())
        text.fail(row, u"variabile «%1» ripetuta."_s.arg(variable));
    m_variables[group].insert(variable);
    m_job.groups[group] += tableRow({value, variable, text.cell(row, 2, MaxExplanation)});
}

void JobReader::takeUnit(const DataText& text, const Row& row)
{
    text.requireCells(row, UnitCells);
    if (m_job.units.size() == store::MostUnits)
        text.fail(row, u"più di %1 unità."_s.arg(store::MostUnits));
    const QString& staircase = row.cells[2];
    if (!staircase.isEmpty() && !m_staircases.contains(staircase))
        text.fail(row, u"scala «%1» non dichiarata."_s.arg(staircase));
    if (!row.cells[3].isEmpty())
        numberCell(text, row, 3);
    m_job.units.push_back({.row = row, .flags = tableFlags(text, row), .rooms = {}});
}

QString JobReader::tableFlags(const DataText& text, const Row& row) const
{
    QString flags(static_cast<qsizetype>(m_job.tables.size()), u' ');
    for (const QString& item : row.cells[4].split(u' ', Qt::SkipEmptyParts)) {
        const auto number = item.toUInt();
        if (number < 1 || number > m_job.tables.size() || m_job.tables[number - 1].isEmpty())
            text.fail(row, u"tabella «%1» non dichiarata."_s.arg(item));
        flags[static_cast<qsizetype>(number) - 1] = u'X';
    }
    return flags;
}

void JobReader::takeRoom(const DataText& text, const Row& row)
{
    text.requireCells(row, RoomCells);
    if (m_job.units.empty())
        text.fail(row, u"vano senza unità."_s);
    if (m_job.units.back().rooms.size() == store::MostRooms)
        text.fail(row, u"più di %1 vani nell'unità."_s.arg(store::MostRooms));
    numberCell(text, row, 1);
    for (std::size_t group = 1; group < GroupNames.size(); ++group) {
        const auto index = static_cast<qsizetype>(group) - 1 + FirstReference;
        const QString& cell = row.cells[index];
        if (!cell.startsWith(u'['))
            numberCell(text, row, index);
        else if (!cell.endsWith(u']') || !m_variables[group].contains(cell.sliced(1).chopped(1)))
            text.fail(row, u"%1 non è nel gruppo %2."_s.arg(cell, GroupNames[group]));
    }
    m_job.units.back().rooms.push_back(row);
}

} // namespace

JobText readJobText(const QString& folder)
{
    return JobReader().read(folder);
}

} // namespace zelto::data
