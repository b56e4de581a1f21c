// SPDX-License-Identifier: GPL-3.0-or-later
// Everything that stops the program until the user answers.
#pragma once

#include "store/job_copies.h"
#include "store/user_interface.h"

#include <QString>
#include <QStringList>

#include <optional>

class QPrinter;

namespace zelto::widgets {

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
};

/// Pages counted from 1.
struct PageRange
{
    int first = 1;
    int last = 1;
};

/// The modal dialogs of the program, and the trash beside them; tests answer them by script. They
/// stand over the modal screen, if there is one.
class Dialogs : public store::Messages
{
public:
    /// showMessage in the form of an error.
    virtual void showError(const QString& text) = 0;

    /// A question answered by Yes (true) or No.
    virtual bool askYesNo(const QString& question) = 0;

    /// The same before something is lost: No is the button that Return presses.
    virtual bool confirmLoss(const QString& question) = 0;

    /// A question with a button of each caption, of which Return presses the first, and "Annulla".
    /// The place of the choice; nothing when the user cancels.
    virtual std::optional<int> choose(const QString& question, const QStringList& choices) = 0;

    /// Tells of a file that was written, with buttons that open it and its folder.
    virtual void showWritten(const QString& text, const QString& path) = 0;

    /// The message with "Converti ..." beside OK; whether that was chosen.
    virtual bool offerConversion(const QString& text) = 0;

    /// The chosen file, or the empty text when the user cancels. Of a file about to be written it
    /// does not ask whether to replace one: the operations refuse that themselves.
    virtual QString ShowFileDialog(const FileDialogRequest& request) = 0;

    /// A copy to be restored, at first one of this job if it has any; nothing when the user
    /// cancels.
    virtual std::optional<store::JobCopy> chooseCopy(const store::JobCopies& copies,
                                                     const QString& job) = 0;

    /// Lets the user choose printer, paper and orientation.
    virtual void setUpPrinter(QPrinter& printer) = 0;

    /// Lets the user choose printer, copies and pages of a document; nothing when cancelled.
    virtual std::optional<PageRange> choosePages(QPrinter& printer, int pageCount) = 0;

    virtual void showAbout() = 0;

    /// Moves the file to the desktop's trash; false when there is none for it.
    virtual bool moveToTrash(const QString& path) = 0;
};

} // namespace zelto::widgets
