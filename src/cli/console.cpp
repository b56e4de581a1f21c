// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/console.h"

#include <QTextStream>

namespace zelto::cli {

void Console::SetStatus(const QString& /*text*/, bool /*busy*/) {}

void Console::showMessage(const QString& text)
{
    const QString prefix = m_job.isEmpty() ? QString() : m_job + QStringLiteral(": ");
    QTextStream(stderr) << QStringLiteral("zelto-stampa: ") << prefix << text << '\n';
}

void Console::ReportError(const std::exception& error)
{
    showMessage(QString::fromUtf8(error.what()));
}

void writeOut(const QString& text)
{
    QTextStream(stdout) << text;
}

} // namespace zelto::cli
