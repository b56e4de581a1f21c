// SPDX-License-Identifier: GPL-3.0-or-later
// Rows of a group of coefficients that get another code, and the rooms that refer to them.
#pragma once

#include <QString>

#include <map>
#include <span>
#include <utility>
#include <vector>

namespace zelto::store {
class Database;
} // namespace zelto::store

namespace zelto::coefficients {

/// A row of group 1 to 6, counted from 1 as it is stored, whose code becomes another.
struct CodeRename
{
    int group = 0;
    int row = 0;
    QString before;
    QString after;
    bool isTaken = false; ///< another row has the new code: rooms that followed would be its own
};

/// Renames that are made together or not at all: where codes change places, one alone would make
/// one code of two.
using Renames = std::vector<CodeRename>;

/// The rows that get another code. Both texts are those of the group; formerRows tells for each row
/// of the new one which it was in the stored one, 0 for none. An entry that stands elsewhere as it
/// was has only moved.
[[nodiscard]] std::vector<Renames> renamedCodes(int group, const QString& stored,
                                                const QString& changed,
                                                const std::vector<int>& formerRows);

/// How many rooms refer to the rows, by the rules of the calculation or by their very codes. Throws
/// DatabaseError, here and below.
[[nodiscard]] int roomsUsing(store::Database& lavoro, const Renames& renames);

/// Texts of rooms, by their field and as they were, with what has become of them.
using RoomTexts = std::map<std::pair<std::size_t, QString>, QString>;

/// The rooms refer to the rows by their new codes; gives the texts that changed. All at once, so
/// that codes may change places; within a transaction of the caller's and while the job still holds
/// the old lists.
RoomTexts renameCodes(store::Database& lavoro, std::span<const CodeRename> renames);

} // namespace zelto::coefficients
