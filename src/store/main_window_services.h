// SPDX-License-Identifier: GPL-3.0-or-later
// What the operations of the File menu need of the main window.
#pragma once

#include "store/files/job_copies.h"
#include "store/user_interface.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace zelto::store {

/// What a file dialog is asked for.
struct FileDialogRequest
{
    enum class Kind { Open, Save };

    QString title;
    QString filter;        ///< pairs of caption and pattern separated by "|"
    int flags = 0;         ///< FileMustExist or AnyFile
    QString initialFolder; ///< empty: the dialog's own choice
    Kind kind = Kind::Open;
    QString defaultName = {};

    static constexpr int FileMustExist = 4108;
    static constexpr int AnyFile = 12;

    bool operator==(const FileDialogRequest&) const = default;
};

/// Beyond messages: dialogs, pointer, title, recent entries and document windows. The main window
/// implements it, tests script it.
class MainWindowServices : public UserInterface
{
public:
    /// The chosen file, or the empty text when the user cancels. Of a file about to be written it
    /// does not ask whether to replace one: the operations refuse that themselves.
    virtual QString ShowFileDialog(const FileDialogRequest& request) = 0;

    /// A copy to be restored, at first one of this job if it has any; nothing when the user
    /// cancels.
    virtual std::optional<JobCopy> chooseCopy(const JobCopies& copies, const QString& job) = 0;

    /// The message with "Converti ..." beside OK; whether that was chosen.
    virtual bool offerConversion(const QString& text) = 0;

    /// A question answered by Yes (true) or No.
    virtual bool askYesNo(const QString& question) = 0;

    /// The same before something is lost: No is the button that Return presses.
    virtual bool confirmLoss(const QString& question) = 0;

    /// A question with a button for each choice, of which Return presses the first, and "Annulla".
    /// The place of the choice; nothing when the user cancels.
    virtual std::optional<int> choose(const QString& question, const QStringList& choices) = 0;

    /// Moves the file to the desktop's trash; false when there is none for it.
    virtual bool moveToTrash(const QString& path) = 0;

    /// showMessage in the form of an error.
    virtual void showError(const QString& text) = 0;

    /// Hourglass pointer until as many EndBusy have come as BeginBusy.
    virtual void BeginBusy() = 0;
    virtual void EndBusy() = 0;

    /// Shows in title and status bar which job is open; an empty path stands for none.
    virtual void showJob(const QString& path) = 0;

    /// Brings the recent entries of the menu up to date.
    virtual void showRecentJobs() = 0;

    /// Whether a screen lives inside the main window.
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

} // namespace zelto::store
