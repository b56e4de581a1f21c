// SPDX-License-Identifier: GPL-3.0-or-later
#include "data/job_text.h"

#include "store/schema.h"

#include <QDate>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <utility>

namespace zelto::data {
namespace {

// As many characters as the fields and their editors take.
constexpr int MaxNumber = 10;
constexpr int MaxTitle = 30;
constexpr int MaxNotes = 400;
// With its brackets a reference fills the ten characters of a room's cell.
constexpr int MaxVariable = 8;

constexpr int UnitCells = 5;
constexpr int RoomCells = 8;
// Cells 2 to 7 of a room refer to the groups 1 to 6.
constexpr int FirstReference = 2;

using store::GroupNames;

QString tableRow(const QStringList& cells)
{
    return cells.join(u'\t') + QStringLiteral("\r\n");
}

QString numberCell(const DataText& text, const Row& row, qsizetype index)
{
    static const QRegularExpression number(QStringLiteral("^[0-9]+([.][0-9]+)?$"));
    QString cell = text.cell(row, index, MaxNumber);
    if (!number.match(cell).hasMatch())
        text.fail(row, QStringLiteral("«%1» non è un numero.").arg(cell));
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
        return DataText::read(QStringLiteral("%1/%2").arg(folder, name));
    };
    const DataText general = open(u"dati_generali.txt");
    for (const Row& row : general.rows())
        takeGeneral(general, row);
    readCoefficients(open(u"coefficienti.txt"));
    const DataText units = open(u"unita.txt");
    m_job.unitsPath = units.path();
    for (const Row& row : units.rows())
        row.kind == RowKind::Indented ? takeRoom(units, row) : takeUnit(units, row);
    m_job.report = readParagraphs(folder + QStringLiteral("/relazione.txt"));
    return std::move(m_job);
}

void JobReader::takeGeneral(const DataText& text, const Row& row)
{
    using Take = void (JobReader::*)(const DataText&, const Row&);
    static constexpr std::array<std::pair<QStringView, Take>, 5> takes{{
        {u"Descrizione", &JobReader::takeDescription},
        {u"Data", &JobReader::takeDate},
        {u"Nota", &JobReader::takeNote},
        {u"Tabella", &JobReader::takeTable},
        {u"Scala", &JobReader::takeStaircase},
    }};
    const auto* take = std::ranges::find(takes, QStringView(row.cells.front()),
                                         &std::pair<QStringView, Take>::first);
    if (take == takes.end())
        text.fail(row, QStringLiteral("voce «%1» sconosciuta.").arg(row.cells.front()));
    (this->*take->second)(text, row);
}

void JobReader::takeDescription(const DataText& text, const Row& row)
{
    text.requireCells(row, 2);
    auto* const line = std::ranges::find_if(m_job.description, &QString::isEmpty);
    if (line == m_job.description.end())
        text.fail(row, QStringLiteral("più di due righe di descrizione."));
    *line = text.cell(row, 1, MaxTitle);
}

void JobReader::takeDate(const DataText& text, const Row& row)
{
    text.requireCells(row, 2);
    m_job.date = row.cells[1];
    if (!QDate::fromString(m_job.date, Qt::ISODate).isValid())
        text.fail(row, QStringLiteral("«%1» non è una data (aaaa-mm-gg).").arg(m_job.date));
}

void JobReader::takeNote(const DataText& text, const Row& row)
{
    text.requireCells(row, 2);
    m_job.notes += (m_job.notes.isEmpty() ? QString() : QStringLiteral(" ")) + row.cells[1];
    if (m_job.notes.size() > MaxNotes)
        text.fail(row, QStringLiteral("le note sono più lunghe di %1 caratteri.").arg(MaxNotes));
}

void JobReader::takeTable(const DataText& text, const Row& row)
{
    text.requireCells(row, 3);
    const auto number = row.cells[1].toUInt();
    if (number < 1 || number > m_job.tables.size())
        text.fail(row, QStringLiteral("numero di tabella «%1» fuori da 1-10.").arg(row.cells[1]));
    // A gap would shift the names of the tables against the flags of the units.
    if (number > 1 && m_job.tables[number - 2].isEmpty())
        text.fail(row, QStringLiteral("la tabella %1 manca.").arg(number - 1));
    m_job.tables[number - 1] = text.cell(row, 2, 50);
}

void JobReader::takeStaircase(const DataText& text, const Row& row)
{
    text.requireCells(row, 4);
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
                text.fail(row, QStringLiteral("gruppo «%1» sconosciuto.").arg(row.cells.front()));
        } else if (group == GroupNames.end()) {
            text.fail(row, QStringLiteral("coefficiente fuori da un gruppo."));
        } else {
            takeEntry(text, row, static_cast<std::size_t>(group - GroupNames.begin()));
        }
    }
}

void JobReader::takeEntry(const DataText& text, const Row& row, std::size_t group)
{
    text.requireCells(row, 3);
    if (++m_entries[group] > store::MostGroupRows)
        text.fail(row, QStringLiteral("più di %1 voci nel gruppo.").arg(store::MostGroupRows));
    // The first group holds the rooms' names in the place of values.
    const QString value = group == 0 ? text.cell(row, 0, MaxNumber) : numberCell(text, row, 0);
    const QString variable = text.cell(row, 1, MaxVariable);
    if (m_variables[group].contains(variable) && !variable.isEmpty())
        text.fail(row, QStringLiteral("variabile «%1» ripetuta.").arg(variable));
    m_variables[group].insert(variable);
    m_job.groups[group] += tableRow({value, variable, text.cell(row, 2, MaxTitle)});
}

void JobReader::takeUnit(const DataText& text, const Row& row)
{
    text.requireCells(row, UnitCells);
    if (m_job.units.size() == store::MostUnits)
        text.fail(row, QStringLiteral("più di %1 unità.").arg(store::MostUnits));
    const QString& staircase = row.cells[2];
    if (!staircase.isEmpty() && !m_staircases.contains(staircase))
        text.fail(row, QStringLiteral("scala «%1» non dichiarata.").arg(staircase));
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
            text.fail(row, QStringLiteral("tabella «%1» non dichiarata.").arg(item));
        flags[static_cast<qsizetype>(number) - 1] = u'X';
    }
    return flags;
}

void JobReader::takeRoom(const DataText& text, const Row& row)
{
    text.requireCells(row, RoomCells);
    if (m_job.units.empty())
        text.fail(row, QStringLiteral("vano senza unità."));
    if (m_job.units.back().rooms.size() == store::MostRooms)
        text.fail(row, QStringLiteral("più di %1 vani nell'unità.").arg(store::MostRooms));
    numberCell(text, row, 1);
    for (std::size_t group = 1; group < GroupNames.size(); ++group) {
        const auto index = static_cast<qsizetype>(group) - 1 + FirstReference;
        const QString& cell = row.cells[index];
        if (!cell.startsWith(u'['))
            numberCell(text, row, index);
        else if (!cell.endsWith(u']') || !m_variables[group].contains(cell.sliced(1).chopped(1)))
            text.fail(row, QStringLiteral("%1 non è nel gruppo %2.").arg(cell, GroupNames[group]));
    }
    m_job.units.back().rooms.push_back(row);
}

} // namespace

JobText readJobText(const QString& folder)
{
    return JobReader().read(folder);
}

} // namespace zelto::data
