// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/connection.h"

#include <QString>
#include <QStringList>
#include <QStringView>

#include <optional>

namespace zelto::store {

/// How a table stands in the file.
struct TableLayout
{
    QString name;
    QStringList fields{};
    /// Ordinal of the primary index's field; none when there is no such index.
    std::optional<int> keyField{};
    /// The SQL name of what tells one record from all others.
    QString identity{};
};

/// Names of all tables in stored order.
[[nodiscard]] QStringList tableNames(Connection& connection);

/// The table of that name, found without regard to letter case; TableNotFound when there is none.
[[nodiscard]] TableLayout readLayout(Connection& connection, QStringView name);

} // namespace zelto::store
