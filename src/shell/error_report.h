// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <exception>

namespace zelto::shell {

/// The general error report's text: description and number of the error. Errors that carry no
/// number have 0, want of memory 7.
[[nodiscard]] QString errorReportText(const std::exception& error);

} // namespace zelto::shell
