// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/application.h"
#include "shell/command_line.h"
#include "shell/qt_dialogs.h"
#include "store/application_folder.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTextStream>
#include <QTranslator>

#include <span>

using namespace Qt::StringLiterals;

namespace {

enum ExitStatus : int { Done = 0, Failed = 1 };

QStringList textsOf(std::span<char* const> arguments)
{
    QStringList texts;
    for (const char* argument : arguments)
        texts << QString::fromLocal8Bit(argument);
    return texts;
}

int runWindow(const QString& lavoro)
{
    const auto dialogs = zelto::shell::makeDialogs();
    const auto application =
        zelto::shell::Application::start(QCoreApplication::applicationDirPath(),
                                         zelto::store::ApplicationFolder::userFolder(), *dialogs);
    if (!application)
        return Failed;
    application->show();
    if (!lavoro.isEmpty())
        application->open(lavoro);
    return QApplication::exec();
}

} // namespace

int main(int argc, char* argv[])
{
    const QStringList arguments = textsOf(std::span(argv, static_cast<std::size_t>(argc)));
    if (const auto text = zelto::shell::textAskedFor(arguments.mid(1))) {
        QTextStream(stdout) << *text;
        return Done;
    }
    QApplication application(argc, argv);
    QApplication::setOrganizationName(u"Zelto"_s);
    QApplication::setApplicationName(u"zelto"_s);
    QApplication::setApplicationVersion(QStringLiteral(ZELTO_VERSION));
    QApplication::setDesktopFileName(u"zelto"_s);
    // Qt's own dialogs speak Italian like ours, if the translation is installed.
    QLocale::setDefault(QLocale(QLocale::Italian, QLocale::Italy));
    QTranslator italian;
    if (italian.load(u"qtbase_it"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(&italian);
    try {
        return runWindow(zelto::shell::jobNamed(QApplication::arguments().mid(1)));
    } catch (const zelto::shell::UsageError& error) {
        QTextStream(stderr) << "zelto: " << error.what() << '\n'
                            << u"«zelto --help» mostra l'uso\n"_s;
        return Failed;
    }
}
