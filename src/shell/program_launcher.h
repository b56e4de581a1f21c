// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace zelto::shell {

/// Starts the program that the desktop associates with the file's type, with the file as its
/// argument; "calc.exe" stands for the calculator: the one that the user prefers, else one made for
/// the running desktop, else the first by name. Does not wait, and does nothing when there is no
/// such program.
void ApriConProgramma(const QString& fileName);

} // namespace zelto::shell
