// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace zelto {

// For all of zelto, so that no file says it again.
using namespace Qt::StringLiterals;

} // namespace zelto
