// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "shell/desktop_database.h"

#include <QString>

#include <utility>

namespace zelto::shell {

/// Starts other programs of the desktop. The installed programs are looked up at every start.
class ProgramLauncher
{
public:
    explicit ProgramLauncher(DesktopFolders folders = DesktopFolders::ofSession())
        : m_folders(std::move(folders))
    {}

    /// Starts the program that the desktop associates with the file's type, with the file as its
    /// argument; "calc.exe" stands for the calculator. Does not wait, and does nothing when there
    /// is no such program.
    void ApriConProgramma(const QString& fileName) const;

private:
    DesktopFolders m_folders;
};

} // namespace zelto::shell
