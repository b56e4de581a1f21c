// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/files/passing_folder.h"
#include "text/literals.h"

#include <QString>

namespace zelto::store {

/// A copy of a file and of the journal beside it, in a passing folder that goes with this object.
/// What the journal takes back is taken back there.
class PrivateCopy
{
public:
    /// Copies while no program can write the file. The path has no links; errors name the file as
    /// shown. Throws what checkFile throws, and DiskFull or CannotOpen when there is no place.
    PrivateCopy(const QString& path, const QString& shown);

    [[nodiscard]] QString path() const { return m_folder.filePath(u"copia"_s); }

private:
    PassingFolder m_folder;
};

} // namespace zelto::store
