// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/report_context.h"

#include <QFileInfo>

namespace zelto::reports {

QString ReportContext::jobReference() const
{
    return QFileInfo(jobPath).completeBaseName().toUpper();
}

} // namespace zelto::reports
