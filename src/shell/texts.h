// SPDX-License-Identifier: GPL-3.0-or-later
// What the dialogs say.
#pragma once

#include <QString>

#include <exception>

namespace zelto::shell {

/// Name, version, licence and libraries of the program, as rich text.
[[nodiscard]] QString aboutText();

/// The general error report: description and number of the error. Errors that carry no number have
/// 0, want of memory 7.
[[nodiscard]] QString errorReportText(const std::exception& error);

} // namespace zelto::shell
