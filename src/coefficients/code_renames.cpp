// SPDX-License-Identifier: GPL-3.0-or-later
#include "coefficients/code_renames.h"

#include "calc/job_loader.h"
#include "store/schema.h"
#include "text/table_text.h"

#include <algorithm>

namespace zelto::coefficients {

namespace {

using text::CellTable;

constexpr int ValueCell = 1;
constexpr int CodeCell = 2;

CellTable tableOf(const QString& groupText)
{
    return text::TextToTable(groupText, text::rowCount(groupText), CodeCell);
}

struct ChangedRoom
{
    store::Record before;
    store::Record after;
};

/// The place of the group's field in the record of a room.
std::size_t fieldOf(int group)
{
    const auto& fields = store::jobTable(store::TabellaVani).fields;
    const auto found = std::ranges::find(fields, store::GroupNames[static_cast<std::size_t>(group)],
                                         &store::FieldDef::name);
    return static_cast<std::size_t>(found - fields.begin());
}

/// Of rows that the calculation leaves out, references are known by their text alone.
bool refersTo(const CodeRename& rename, const QString& text, calc::Liste& lists)
{
    if (!text.startsWith(u'['))
        return false;
    const int row = lists[static_cast<std::size_t>(rename.group) - 1].rowOf(text.toStdString());
    return row > 0 ? row == rename.row : text == u'[' + rename.before + u']';
}

std::vector<ChangedRoom> changedRooms(store::Database& lavoro, std::span<const CodeRename> renames)
{
    calc::Liste lists = calc::CaricaListe(lavoro);
    std::vector<ChangedRoom> changed;
    for (auto room = lavoro.records(store::TabellaVani); !room.atEnd(); room.next()) {
        const store::Record before = room.record();
        store::Record after = before;
        for (const CodeRename& rename : renames) {
            const std::size_t field = fieldOf(rename.group);
            if (refersTo(rename, before[field].text(), lists))
                after[field] = u'[' + rename.after + u']';
        }
        if (after != before)
            changed.push_back({before, after});
    }
    return changed;
}

/// Whether a code of the one is one of the other: then they are asked for together.
bool meet(const CodeRename& one, const CodeRename& other)
{
    return one.after == other.before || one.before == other.after;
}

void addTo(std::vector<Renames>& sets, CodeRename rename)
{
    Renames set{std::move(rename)};
    for (auto other = sets.begin(); other != sets.end();)
        if (std::ranges::any_of(*other,
                                [&](const CodeRename& one) { return meet(one, set.front()); })) {
            set.insert(set.end(), other->begin(), other->end());
            other = sets.erase(other);
        } else {
            ++other;
        }
    std::ranges::sort(set, {}, &CodeRename::row);
    sets.push_back(std::move(set));
}

} // namespace

std::vector<Renames> renamedCodes(int group, const QString& stored, const QString& changed,
                                  const std::vector<int>& formerRows)
{
    const CellTable before = tableOf(stored);
    const CellTable after = tableOf(changed);
    const int rows = text::rowCount(changed);
    const auto stands = [&](int former) {
        for (int row = 1; row <= rows; ++row)
            if (after.at(row, CodeCell) == before.at(former, CodeCell) &&
                after.at(row, ValueCell) == before.at(former, ValueCell))
                return true;
        return false;
    };
    const auto rowsOf = [&](const QString& code) {
        int found = 0;
        for (int row = 1; row <= rows; ++row)
            found += after.at(row, CodeCell) == code ? 1 : 0;
        return found;
    };
    // Rooms that refer to the code belong to the row that keeps it.
    const auto isKept = [&](const QString& code) {
        for (int row = 1; row <= std::min(rows, static_cast<int>(formerRows.size())); ++row)
            if (const int former = formerRows[static_cast<std::size_t>(row) - 1];
                former > 0 && after.at(row, CodeCell) == code &&
                before.at(former, CodeCell) == code)
                return true;
        return false;
    };
    std::vector<Renames> renames;
    for (int row = 1; row <= std::min(rows, static_cast<int>(formerRows.size())); ++row) {
        const int former = formerRows[static_cast<std::size_t>(row) - 1];
        if (former == 0 || former > text::rowCount(stored))
            continue;
        const QString& code = before.at(former, CodeCell);
        const QString& now = after.at(row, CodeCell);
        if (!code.isEmpty() && !now.isEmpty() && code != now && !stands(former) && !isKept(code))
            addTo(renames, {group, former, code, now, rowsOf(now) > 1});
    }
    return renames;
}

int roomsUsing(store::Database& lavoro, const Renames& renames)
{
    return static_cast<int>(changedRooms(lavoro, renames).size());
}

RoomTexts renameCodes(store::Database& lavoro, std::span<const CodeRename> renames)
{
    RoomTexts texts;
    for (const CodeRename& rename : renames)
        texts[{fieldOf(rename.group), u'[' + rename.before + u']'}] = u'[' + rename.after + u']';
    store::RecordWriter rooms = lavoro.writer(store::jobTable(store::TabellaVani));
    for (const auto& [before, after] : changedRooms(lavoro, renames)) {
        rooms.change(before, after);
        for (std::size_t field = 0; field < before.size(); ++field)
            if (before[field] != after[field])
                texts[{field, before[field].text()}] = after[field].text();
    }
    return texts;
}

} // namespace zelto::coefficients
