// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class QIODevice;

namespace zelto::text {

/// Why a call of the system failed, from its error number: Italian words for the middle of a
/// sentence, whatever the machine speaks.
[[nodiscard]] QString systemReason(int error);

/// Why the last operation on the file failed.
[[nodiscard]] QString systemReason(const QIODevice& file);

} // namespace zelto::text
