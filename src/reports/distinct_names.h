// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

namespace zelto::reports {

/// What names are held to.
struct NameRules
{
    QStringView reserved; ///< characters that none may have, beside those without a picture
    qsizetype longest;
    QString fallback; ///< begins what would be empty or hidden
};

/// A name for each of the texts; no two are alike, whatever the case of their letters.
QStringList distinctNames(const QStringList& texts, const NameRules& rules);

} // namespace zelto::reports
