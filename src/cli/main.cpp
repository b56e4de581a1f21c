// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/clean_end.h"
#include "cli/job_printer.h"

#include <QGuiApplication>

#include <algorithm>

using namespace Qt::StringLiterals;

using namespace zelto::cli;

namespace {

int run(const Options& options, Console& console)
{
    const bool checks = options.action == Options::Action::Check;
    if (!checks && options.action != Options::Action::Print) {
        writeOut(options.action == Options::Action::ShowHelp
                     ? helpText()
                     : QStringLiteral("zelto-stampa " ZELTO_VERSION "\n"));
        return Done;
    }
    bool hasFailed = false;
    ExitStatus status = Done;
    for (const QString& lavoro : options.lavori) {
        console.setJob(lavoro);
        const ExitStatus one =
            checks ? checkJob(lavoro, console) : printJob(options, lavoro, console);
        hasFailed = hasFailed || one == JobFailed;
        status = std::max(status, one);
    }
    return hasFailed ? JobFailed : status;
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
    cleanUpOnSignals();
    const QGuiApplication application(argc, argv);
    Console console(u"zelto-stampa"_s);
    return runCommand(console, u"elenca le opzioni"_s,
                      [&] { return run(parseOptions(arguments), console); });
}
