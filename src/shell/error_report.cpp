// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/error_report.h"

#include "print/print_error.h"
#include "store/database_error.h"

#include <new>

namespace zelto::shell {

namespace {

struct Report
{
    QString description;
    int number = 0;
};

Report reportOf(const std::exception& error)
{
    constexpr int OutOfMemory = 7;
    if (const auto* database = dynamic_cast<const store::DatabaseError*>(&error))
        return {database->description(), static_cast<int>(database->number())};
    if (const auto* print = dynamic_cast<const print::PrintError*>(&error))
        return {print->description(), static_cast<int>(print->number())};
    if (dynamic_cast<const std::bad_alloc*>(&error) != nullptr)
        return {QStringLiteral("Memoria esaurita"), OutOfMemory};
    return {QString::fromUtf8(error.what())};
}

} // namespace

QString errorReportText(const std::exception& error)
{
    const auto [description, number] = reportOf(error);
    return QStringLiteral("The following Error occurred:\n\n%1\nNumber: %2")
        .arg(description, QString::number(number));
}

} // namespace zelto::shell
