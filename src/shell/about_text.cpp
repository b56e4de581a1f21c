// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/about_text.h"

#include <SQLiteCpp/Database.h>

namespace zelto::shell {

QString aboutText()
{
    return QStringLiteral(
               "<h3>Zelto %1</h3>"
               "<p>Tabelle millesimali dei condomìni.</p>"
               "<p>Software libero: può essere usato, studiato, modificato e ridistribuito secondo "
               "la <a href=\"https://www.gnu.org/licenses/gpl-3.0.html\">GNU General Public "
               "License</a>, versione 3 o successiva. È distribuito senza alcuna garanzia.</p>"
               "<p>Librerie: Qt %2 (LGPL-3.0), SQLite %3 (pubblico dominio), SQLiteCpp (MIT), "
               "SimpleIni (MIT).</p>")
        .arg(QStringLiteral(ZELTO_VERSION), QString::fromLatin1(qVersion()),
             QString::fromLatin1(SQLite::getLibVersion()));
}

} // namespace zelto::shell
