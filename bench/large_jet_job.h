// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace zelto::bench {

/// Writes a job of the edition for Windows (Jet 3) as large as jobs may be, made of a small one by
/// giving it more pages of units and rooms. Throws std::runtime_error when the small one is not as
/// expected.
void writeLargeJetJob(const QString& smallJob, const QString& path);

} // namespace zelto::bench
