// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>

namespace zelto::registro {

/// What the calculation makes of the register while it is edited. It lives above this folder and is
/// handed in.
class UnitFigures
{
public:
    virtual ~UnitFigures() = default;

    /// Total size and general share of the unit as they would be printed now, or why there are
    /// none; empty for a unit that does not exist.
    [[nodiscard]] virtual QString describe(int unit) = 0;

    /// These units were changed, added or deleted in the job.
    virtual void unitsChanged(const QList<int>& units) = 0;

    /// Anything may have changed.
    virtual void reload() = 0;
};

} // namespace zelto::registro
