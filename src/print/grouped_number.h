// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace zelto::print {

/// The number, written with either decimal separator, with a blank before every third digit
/// counted from the point and a decimal point: "1234567,5" is "1 234 567.5". Empty when the text
/// is blank or its value 0.
[[nodiscard]] QString groupedNumber(const QString& number);

} // namespace zelto::print
