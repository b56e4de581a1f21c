// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <stdexcept>

namespace zelto::shell {

/// Arguments that cannot be followed; the Italian text says why.
class UsageError : public std::runtime_error
{
public:
    explicit UsageError(const QString& text) : std::runtime_error(text.toStdString()) {}
};

/// The help text or the version, if the arguments ask for one. To be asked before there is a
/// display.
[[nodiscard]] std::optional<QString> textAskedFor(const QStringList& arguments);

/// The job named by the arguments, empty for none. Neither the program's name nor what Qt
/// itself understands is among them. Throws UsageError.
[[nodiscard]] QString jobNamed(const QStringList& arguments);

} // namespace zelto::shell
