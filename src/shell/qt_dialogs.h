// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "shell/dialogs.h"

#include <QMessageBox>

namespace zelto::shell {

/// The dialogs as the user sees them.
class QtDialogs : public Dialogs
{
public:
    QString chooseFile(QWidget* parent, const store::FileDialogRequest& request) override;
    std::optional<store::JobCopy> chooseCopy(QWidget* parent, const store::JobCopies& copies,
                                             const QString& job) override;
    bool offerConversion(QWidget* parent, const QString& text) override;
    bool askYesNo(QWidget* parent, const QString& question) override;
    bool confirmLoss(QWidget* parent, const QString& question) override;
    std::optional<int> choose(QWidget* parent, const QString& question,
                              const QStringList& choices) override;
    void showMessage(QWidget* parent, const QString& text) override;
    void showError(QWidget* parent, const QString& text) override;
    void showAbout(QWidget* parent) override;
    bool moveToTrash(const QString& path) override;
    void setUpPrinter(QWidget* parent, QPrinter& printer) override;
    std::optional<print::PageRange> choosePages(QWidget* parent, QPrinter& printer,
                                                int pageCount) override;

private:
    QString m_lastFolder; ///< where the user last chose a file
};

} // namespace zelto::shell
