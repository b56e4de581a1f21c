// SPDX-License-Identifier: GPL-3.0-or-later
// What the folders below the windows need of the user.
#pragma once

#include <QString>

#include <exception>

namespace zelto::store {

/// Status line, messages and error report. The main window implements it, the command line prints
/// to its streams, tests script it.
class UserInterface
{
public:
    virtual ~UserInterface() = default;

    /// Shows the text on the status line, with ", Prego attendere..." behind it when busy; an
    /// empty text shows "Pronto".
    virtual void SetStatus(const QString& text, bool busy) = 0;

    /// A message that the user has to acknowledge.
    virtual void showMessage(const QString& text) = 0;

    /// The general error report of an operation that failed.
    virtual void ReportError(const std::exception& error) = 0;
};

} // namespace zelto::store
