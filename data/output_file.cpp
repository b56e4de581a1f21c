// SPDX-License-Identifier: GPL-3.0-or-later
#include "data/output_file.h"

#include "store/files/new_file.h"

#include <QCoreApplication>

#include <cstdio>

namespace zelto::data {

void buildFile(const QString& output, const std::function<void(const QString& path)>& write)
{
    store::NewFile built(output);
    write(built.path());
    built.replace();
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
