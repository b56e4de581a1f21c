// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/dialogs.h"

#include <memory>

namespace zelto::shell {

/// The dialogs as the user sees them.
[[nodiscard]] std::unique_ptr<widgets::Dialogs> makeDialogs();

} // namespace zelto::shell
