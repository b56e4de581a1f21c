// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/dialogs.h"

namespace zelto::shell {

/// The dialogs as the user sees them.
class QtDialogs : public widgets::Dialogs
{
public:
    void showMessage(const QString& text) override;
    void ReportError(const std::exception& error) override;
    void showError(const QString& text) override;
    bool askYesNo(const QString& question) override;
    bool confirmLoss(const QString& question) override;
    std::optional<int> choose(const QString& question, const QStringList& choices) override;
    bool offerConversion(const QString& text) override;
    QString ShowFileDialog(const widgets::FileDialogRequest& request) override;
    std::optional<store::JobCopy> chooseCopy(const store::JobCopies& copies,
                                             const QString& job) override;
    void setUpPrinter(QPrinter& printer) override;
    std::optional<widgets::PageRange> choosePages(QPrinter& printer, int pageCount) override;
    void showAbout() override;
    bool moveToTrash(const QString& path) override;

private:
    QString m_lastFolder; ///< where the user last chose a file
};

} // namespace zelto::shell
