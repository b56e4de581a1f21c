// SPDX-License-Identifier: GPL-3.0-or-later
// Dialogs that answer by script and note what they showed.
#pragma once

#include "shell/dialogs.h"
#include "text/literals.h"

#include <QStringList>

#include <utility>

namespace zelto::test {

/// Every dialog shown becomes a line; an unscripted file dialog is cancelled.
class ScriptedDialogs : public shell::Dialogs
{
public:
    QStringList files; ///< what the next file dialogs give
    bool answer = true;
    bool restores = true;                  ///< whether the last copy is chosen, or none
    std::optional<print::PageRange> pages; ///< what the print options give; nothing cancels

    /// The lines since the last call.
    [[nodiscard]] QString shown() { return std::exchange(m_lines, {}).join(u'\n'); }

    QString chooseFile(QWidget* /*parent*/, const store::FileDialogRequest& request) override
    {
        m_lines << u"file: "_s + request.title;
        return files.isEmpty() ? QString() : files.takeFirst();
    }
    std::optional<store::JobCopy> chooseCopy(QWidget* /*parent*/, const store::JobCopies& copies,
                                             const QString& job) override
    {
        m_lines << u"copies: %1"_s.arg(copies.jobs().size());
        return restores ? std::optional(copies.copiesOf(job).front()) : std::nullopt;
    }
    bool offerConversion(QWidget* /*parent*/, const QString& text) override
    {
        m_lines << u"convert: "_s + text;
        return answer;
    }
    bool askYesNo(QWidget* /*parent*/, const QString& question) override
    {
        m_lines << u"question: "_s + question;
        return answer;
    }
    bool confirmLoss(QWidget* /*parent*/, const QString& question) override
    {
        m_lines << u"confirm: "_s + question;
        return answer;
    }
    std::optional<int> choose(QWidget* /*parent*/, const QString& question,
                              const QStringList& choices) override
    {
        m_lines << u"choose: "_s + question.section(u'\n', 0, 0) + choices.join(u'|');
        return answer ? std::optional(0) : std::nullopt;
    }
    bool moveToTrash(const QString& /*path*/) override { return false; }
    void showMessage(QWidget* /*parent*/, const QString& text) override
    {
        m_lines << u"message: "_s + text;
    }
    void showError(QWidget* /*parent*/, const QString& text) override
    {
        m_lines << u"error: "_s + text;
    }
    void showAbout(QWidget* /*parent*/) override { m_lines << u"about"_s; }
    void setUpPrinter(QWidget* /*parent*/, QPrinter& /*printer*/) override
    {
        m_lines << u"printer"_s;
    }
    std::optional<print::PageRange> choosePages(QWidget* /*parent*/, QPrinter& /*printer*/,
                                                int pageCount) override
    {
        m_lines << u"pages: %1"_s.arg(pageCount);
        return pages;
    }

private:
    QStringList m_lines;
};

} // namespace zelto::test
