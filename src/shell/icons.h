// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "text/literals.h"

#include <QIcon>
#include <QString>

namespace zelto::shell {

/// One of the program's own icons, by the name of its file.
[[nodiscard]] inline QIcon icon(const QString& name)
{
    return QIcon(u":/zelto/icons/%1.svg"_s.arg(name));
}

} // namespace zelto::shell
