// SPDX-License-Identifier: GPL-3.0-or-later
#include "data/output_file.h"

#include "data/data_text.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cstdio>
#include <filesystem>

namespace zelto::data {

void buildFile(const QString& output, const std::function<void(const QString& path)>& write)
{
    const QTemporaryDir workFolder(QFileInfo(output).absolutePath() +
                                   QStringLiteral("/.build-XXXXXX"));
    if (!workFolder.isValid())
        throw DataFault(output, 0, workFolder.errorString());
    const QString built = workFolder.filePath(QFileInfo(output).fileName());
    write(built);
    std::filesystem::rename(built.toStdU16String(), output.toStdU16String());
}

int runBuilder(int argc, char** argv, const char* usage,
               const std::function<void(const QString& input, const QString& output)>& build)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 3) {
        std::fprintf(stderr, "Uso: %s\n", usage);
        return 1;
    }
    try {
        build(arguments[1], arguments[2]);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 2;
    }
    return 0;
}

} // namespace zelto::data
