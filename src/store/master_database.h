// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/database.h"

#include <QString>
#include <QStringList>
#include <QStringView>

#include <optional>

namespace zelto::store {

inline constexpr QStringView TabellaCoefficenti = u"Coefficenti";

/// The definition of its table; readers take the first field.
[[nodiscard]] const TableDef& masterTable();

/// The database that is delivered with the program: open for reading as long as the program runs,
/// but for the moments in which a file is compacted or repaired.
class MasterDatabase
{
public:
    /// How many group descriptions are read.
    static constexpr int MaxDescriptions = 11;

    /// Opens it. Throws DatabaseError: FileNotFound, WrongAccess when the access word is not the
    /// master database's, or why it cannot be read.
    explicit MasterDatabase(QString path);

    void close() { m_database.reset(); }

    /// Opens it once more, as the constructor does.
    void reopen();

    [[nodiscard]] bool isOpen() const { return m_database.has_value(); }

    /// The description of every group, in stored order; empty where there is none. Opens the
    /// database if it is closed.
    [[nodiscard]] QStringList groupDescriptions();

private:
    QString m_path;
    std::optional<Database> m_database;
};

/// What the file's user version says when the access word is the master database's. The file is
/// plain: this tells it from other databases of that name and keeps nothing secret.
[[nodiscard]] int masterAccessMark();

} // namespace zelto::store
