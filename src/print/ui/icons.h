// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIcon>
#include <QString>

namespace zelto::print {

/// One of the program's own icons, by the name of its file; the same object for every window, since
/// each one made anew leaves its pictures in a cache.
[[nodiscard]] const QIcon& icon(const QString& name);

} // namespace zelto::print
