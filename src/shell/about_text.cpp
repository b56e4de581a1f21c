// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/about_text.h"

#include "text/literals.h"

#include <SQLiteCpp/Database.h>

namespace zelto::shell {

QString aboutText()
{
    return u"<h3>Zelto %1</h3>"
           u"<p>Tabelle millesimali dei condomìni.</p>"
           u"<p>Software libero: può essere usato, studiato, modificato e ridistribuito secondo "
           u"la <a href=\"https://www.gnu.org/licenses/gpl-3.0.html\">GNU General Public "
           u"License</a>, versione 3 o successiva. È distribuito senza alcuna garanzia.</p>"
           u"<p>Librerie: Qt %2 (LGPL-3.0), SQLite %3 (pubblico dominio), SQLiteCpp (MIT), "
           u"SimpleIni (MIT).</p>"_s.arg(QStringLiteral(ZELTO_VERSION),
                                         QString::fromLatin1(qVersion()),
                                         QString::fromLatin1(SQLite::getLibVersion()));
}

} // namespace zelto::shell
