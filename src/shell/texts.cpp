// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/texts.h"

#include "text/error.h"

#include <SQLiteCpp/Database.h>
#include <new>

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

QString errorReportText(const std::exception& error)
{
    constexpr int OutOfMemory = 7;
    QString description = QString::fromUtf8(error.what());
    int number = 0;
    if (const auto* known = dynamic_cast<const text::Error*>(&error)) {
        number = known->code();
    } else if (dynamic_cast<const std::bad_alloc*>(&error) != nullptr) {
        description = u"Memoria esaurita"_s;
        number = OutOfMemory;
    }
    return u"The following Error occurred:\n\n%1\nNumber: %2"_s.arg(description,
                                                                    QString::number(number));
}

} // namespace zelto::shell
