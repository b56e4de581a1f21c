// SPDX-License-Identifier: GPL-3.0-or-later
// What operations that a dialog or a menu begins need of the main window.
#pragma once

#include "store/user_interface.h"

#include <QString>

namespace zelto::widgets {

/// Title, status bar, pointer and document windows. The main window implements it, tests script it.
class MainWindowServices : public store::StatusLine
{
public:
    /// Hourglass pointer until as many EndBusy have come as BeginBusy.
    virtual void BeginBusy() = 0;
    virtual void EndBusy() = 0;

    /// Shows in title and status bar which job is open; an empty path stands for none.
    virtual void showJob(const QString& path) = 0;

    /// Brings the recent entries of the menu up to date.
    virtual void showRecentJobs() = 0;

    /// Whether a screen lives inside the main window, or a modal one is open.
    [[nodiscard]] virtual bool HasDocumentWindows() const = 0;

    /// Closes every document window; false when one refuses.
    virtual bool closeDocumentWindows() = 0;
};

/// Status line, and hourglass if wanted, for as long as an operation lasts.
class StatusScope
{
public:
    enum class Pointer { Normal, Hourglass };

    /// With the hourglass the text is shown as busy.
    StatusScope(MainWindowServices& window, const QString& text,
                Pointer pointer = Pointer::Hourglass)
        : m_window(window), m_busy(pointer == Pointer::Hourglass)
    {
        if (m_busy)
            m_window.BeginBusy();
        m_window.SetStatus(text, m_busy);
    }

    ~StatusScope()
    {
        m_window.SetStatus({}, false);
        if (m_busy)
            m_window.EndBusy();
    }

    StatusScope(const StatusScope&) = delete;
    StatusScope& operator=(const StatusScope&) = delete;

private:
    MainWindowServices& m_window;
    bool m_busy;
};

} // namespace zelto::widgets
