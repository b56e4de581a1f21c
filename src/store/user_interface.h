// SPDX-License-Identifier: GPL-3.0-or-later
// What the folders below the windows need of the user. The window and its dialogs are one such
// user, the command line another; tests script one.
#pragma once

#include <QString>

#include <exception>

namespace zelto::store {

class StatusLine
{
public:
    virtual ~StatusLine() = default;

    /// Shows the text, with ", Prego attendere..." behind it when busy; an empty text shows
    /// "Pronto".
    virtual void SetStatus(const QString& text, bool busy) = 0;
};

class Messages
{
public:
    virtual ~Messages() = default;

    /// A message that the user has to acknowledge.
    virtual void showMessage(const QString& text) = 0;

    /// The general error report of an operation that failed.
    virtual void ReportError(const std::exception& error) = 0;
};

} // namespace zelto::store
