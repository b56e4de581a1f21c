// SPDX-License-Identifier: GPL-3.0-or-later
// Everything that stops the program until the user answers.
#pragma once

#include "print/ui/printer_desk.h"
#include "store/main_window_services.h"

#include <QString>

#include <optional>

class QWidget;

namespace zelto::shell {

/// The modal dialogs of the program, and the trash beside them; tests answer them by script.
class Dialogs : public print::PrintDialogs
{
public:
    /// The chosen path, or the empty text.
    virtual QString chooseFile(QWidget* parent, const store::FileDialogRequest& request) = 0;
    virtual std::optional<store::JobCopy>
    chooseCopy(QWidget* parent, const store::JobCopies& copies, const QString& job) = 0;
    virtual bool offerConversion(QWidget* parent, const QString& text) = 0;
    virtual bool askYesNo(QWidget* parent, const QString& question) = 0;
    virtual bool confirmLoss(QWidget* parent, const QString& question) = 0;
    virtual std::optional<int> choose(QWidget* parent, const QString& question,
                                      const QStringList& choices) = 0;
    virtual void showMessage(QWidget* parent, const QString& text) = 0;
    virtual void showError(QWidget* parent, const QString& text) = 0;
    virtual void showAbout(QWidget* parent) = 0;
    virtual bool moveToTrash(const QString& path) = 0;
};

} // namespace zelto::shell
