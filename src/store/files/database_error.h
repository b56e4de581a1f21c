// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "text/error.h"

#include <QString>

namespace zelto::store {

/// Numbers under which the user finds a failure in the error report.
enum class ErrorNumber : int {
    TableExists = 3010,
    NoCurrentRecord = 3021,
    DuplicateKey = 3022,
    FileNotFound = 3024,
    DiskFull = 3026,
    ReadOnly = 3027,
    WrongAccess = 3031,
    DiskError = 3043,
    InUse = 3045,
    Damaged = 3049,
    CannotOpen = 3051,
    NullKey = 3058,
    TableNotFound = 3078,
    Internal = 3146,
    TextTooLong = 3163,
    RecordDeleted = 3167,
    RecordChanged = 3197,
    FileExists = 3204,
    Locked = 3260,
    FieldNotFound = 3265,
    EmptyNotAllowed = 3315,
    NotADatabase = 3343,
    BadValue = 3421,
};

/// A failed operation of the database layer; the description is Italian and says which file,
/// table or field is concerned.
class DatabaseError : public text::Error
{
public:
    DatabaseError(ErrorNumber number, const QString& description)
        : Error(static_cast<int>(number), description)
    {}

    [[nodiscard]] ErrorNumber number() const noexcept { return static_cast<ErrorNumber>(code()); }
};

} // namespace zelto::store
