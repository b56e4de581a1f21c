// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "data/data_text.h"

#include <QFileInfo>
#include <QTemporaryDir>

#include <filesystem>

namespace zelto::data {

/// Builds a file beside the output and swaps names at the end, so that a fault leaves the old one.
template <typename Write>
void buildFile(const QString& output, Write write)
{
    const QTemporaryDir workFolder(QFileInfo(output).absolutePath() +
                                   QStringLiteral("/.build-XXXXXX"));
    if (!workFolder.isValid())
        throw DataFault(output, 0, workFolder.errorString());
    const QString built = workFolder.filePath(QFileInfo(output).fileName());
    write(built);
    std::filesystem::rename(built.toStdU16String(), output.toStdU16String());
}

} // namespace zelto::data
