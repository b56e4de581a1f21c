// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/console.h"

#include "print/print_error.h"
#include "text/system_reason.h"

#include <QTextStream>

#include <cerrno>
#include <cstdio>

namespace zelto::cli {

void Console::showMessage(const QString& text)
{
    const QString prefix = m_job.isEmpty() ? QString() : m_job + u": "_s;
    QTextStream(stderr) << m_program << u": "_s << prefix << text << '\n';
}

void Console::ReportError(const std::exception& error)
{
    showMessage(QString::fromUtf8(error.what()));
}

int runCommand(Console& console, const QString& hint, const std::function<int()>& command)
{
    try {
        return command();
    } catch (const UsageError& error) {
        console.ReportError(error);
        console.showMessage(u"«%1 --help» %2"_s.arg(console.program(), hint));
        return WrongUsage;
    } catch (const std::exception& error) {
        console.ReportError(error);
        return JobFailed;
    }
}

void writeOut(const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    const auto size = static_cast<std::size_t>(bytes.size());
    if (std::fwrite(bytes.constData(), 1, size, stdout) != size || std::fflush(stdout) != 0)
        throw print::PrintError(
            print::PrintErrorNumber::DeviceFailed,
            u"Impossibile scrivere il risultato: %1."_s.arg(text::systemReason(errno)));
}

} // namespace zelto::cli
