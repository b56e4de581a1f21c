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
    const QString building = QStringLiteral("%1 %2").arg(modello.Descrizione, modello.Descrizione2);
    return building.trimmed().isEmpty() ? kind
                                        : kind + QStringLiteral(" - ") + building.simplified();
}

} // namespace zelto::reports
