// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/clean_end.h"
#include "cli/console.h"
#include "cli/job_printer.h"
#include "cli/options.h"

#include <QGuiApplication>

using namespace Qt::StringLiterals;

namespace {

enum ExitStatus : int { Done = 0, WrongUsage = 1, JobFailed = 2 };

using zelto::cli::Options;

int printJobs(const Options& options, zelto::cli::Console& console)
{
    zelto::cli::JobPrinter printer(options, console);
    int status = Done;
    for (const QString& lavoro : options.lavori) {
        console.setJob(lavoro);
        if (!printer.print(lavoro))
            status = JobFailed;
    }
    return status;
}

int run(const Options& options, zelto::cli::Console& console)
{
    switch (options.action) {
    case Options::Action::ShowHelp:
        zelto::cli::writeOut(zelto::cli::helpText());
        return Done;
    case Options::Action::ShowVersion:
        zelto::cli::writeOut(QStringLiteral("zelto-stampa " ZELTO_VERSION "\n"));
        return Done;
    case Options::Action::Print:
        break;
    }
    return printJobs(options, console);
}

/// What the libraries have to remark is no message for the user of a command.
void ignoreLibraryRemarks(QtMsgType /*type*/, const QMessageLogContext& /*context*/,
                          const QString& /*text*/)
{}

} // namespace

int main(int argc, char* argv[])
{
    // Read before the application takes out what it believes to be its own.
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    // Pages are drawn without a display.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(ignoreLibraryRemarks);
    zelto::cli::cleanUpOnSignals();
    const QGuiApplication application(argc, argv);
    zelto::cli::Console console(u"zelto-stampa"_s);
    try {
        return run(zelto::cli::parseOptions(arguments), console);
    } catch (const zelto::cli::UsageError& error) {
        console.ReportError(error);
        console.showMessage(u"«zelto-stampa --help» elenca le opzioni"_s);
        return WrongUsage;
    } catch (const std::exception& error) {
        console.ReportError(error);
        return JobFailed;
    }
}
