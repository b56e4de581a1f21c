// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/error_report.h"

#include "text/error.h"

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
    if (const auto* known = dynamic_cast<const text::Error*>(&error))
        return {known->description(), known->code()};
    if (dynamic_cast<const std::bad_alloc*>(&error) != nullptr)
        return {u"Memoria esaurita"_s, OutOfMemory};
    return {QString::fromUtf8(error.what())};
}

} // namespace

QString errorReportText(const std::exception& error)
{
    const auto [description, number] = reportOf(error);
    return u"The following Error occurred:\n\n%1\nNumber: %2"_s.arg(description,
                                                                    QString::number(number));
}

} // namespace zelto::shell
