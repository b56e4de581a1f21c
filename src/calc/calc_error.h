// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "text/error.h"

#include <QString>

namespace zelto::calc {

/// A job or an amount that the calculation cannot take; the Italian text names what and where.
class CalcError : public text::Error
{
public:
    explicit CalcError(const QString& description) : Error(Overflow, description) {}

    /// The number of every failure of this kind in the error report.
    static constexpr int Overflow = 6;
};

} // namespace zelto::calc
