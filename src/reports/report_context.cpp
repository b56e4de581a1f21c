// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/report_context.h"

#include <QFileInfo>

namespace zelto::reports {

QString ReportContext::jobReference() const
{
    return QFileInfo(jobPath).completeBaseName().toUpper();
}

QString documentTitle(const QString& kind, const calc::ModelloLavoro& modello)
{
    const QString building = u"%1 %2"_s.arg(modello.datiGenerali[u"Descrizione"_s],
                                            modello.datiGenerali[u"Descrizionee"_s]);
    return building.trimmed().isEmpty() ? kind : kind + u" - "_s + building.simplified();
}

} // namespace zelto::reports
