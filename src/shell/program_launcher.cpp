// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/program_launcher.h"

#include <QFileInfo>
#include <QMimeDatabase>
#include <QProcess>

namespace zelto::shell {

namespace {

std::optional<DesktopEntry> programForFile(const DesktopDatabase& database, const QString& fileName)
{
    const QMimeType type = QMimeDatabase().mimeTypeForFile(fileName);
    for (const QString& name : QStringList{type.name()} + type.allAncestors())
        if (auto entry = database.programFor(name))
            return entry;
    return std::nullopt;
}

} // namespace

void ProgramLauncher::ApriConProgramma(const QString& fileName) const
{
    const bool wantsCalculator = fileName.compare(u"calc.exe", Qt::CaseInsensitive) == 0;
    const DesktopDatabase database(m_folders);
    const auto entry = wantsCalculator ? database.calculator() : programForFile(database, fileName);
    if (!entry)
        return;
    const QString file = wantsCalculator ? QString() : QFileInfo(fileName).absoluteFilePath();
    QStringList command = commandLine(entry->exec, file);
    const QString program = command.takeFirst();
    QProcess::startDetached(program, command);
}

} // namespace zelto::shell
