// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace zelto::shell {

/// Name, version, licence and libraries of the program, as rich text.
[[nodiscard]] QString aboutText();

} // namespace zelto::shell
