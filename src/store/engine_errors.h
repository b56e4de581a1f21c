// SPDX-License-Identifier: GPL-3.0-or-later
// The one place where failures of the database engine become errors that the user can read.
#pragma once

#include "store/files/database_error.h"

#include <QString>

#include <SQLiteCpp/Exception.h>
#include <utility>

namespace zelto::store {

/// The engine's failure on the file as an error with number and Italian description.
[[nodiscard]] DatabaseError translated(const SQLite::Exception& failure, const QString& path);

/// The error of a file that is not sound; it tells what the user can do about it.
[[nodiscard]] DatabaseError damagedFile(const QString& path, const QString& detail = {});

/// Runs the operation on the file; what the engine throws leaves it as DatabaseError.
template <typename Operation>
decltype(auto) onFile(const QString& path, Operation&& operation)
{
    try {
        return std::forward<Operation>(operation)();
    } catch (const SQLite::Exception& failure) {
        throw translated(failure, path);
    }
}

} // namespace zelto::store
