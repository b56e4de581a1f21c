// SPDX-License-Identifier: GPL-3.0-or-later
// A user who answers dialogs from a script, and remembers the whole conversation.
#pragma once

#include "store/files/database_error.h"
#include "widgets/dialogs.h"
#include "widgets/main_window_services.h"

#include <QFile>
#include <QStringList>

#include <utility>

namespace zelto::test {

/// The window and its dialogs at once. Every call becomes a line; paths below the folder are
/// written with "~".
class ScriptedUser : public widgets::MainWindowServices, public widgets::Dialogs
{
public:
    explicit ScriptedUser(QString folder = {}) : m_folder(std::move(folder)) {}

    /// What the next file dialogs are answered, "~" for the folder; nothing left means cancelled.
    QStringList files;
    bool saysYes = true;
    QString keeps = u"Copie di sicurezza"_s; ///< what is refused, even so
    std::optional<int> choice = 0;           ///< which button is pressed
    bool hasTrash = true;
    bool converts = true;
    std::size_t copy = 0; ///< which of the job's copies is chosen; none when there are not as many
    std::optional<widgets::PageRange> pages; ///< what the print options give; nothing cancels
    bool hasDocuments = false;
    bool documentsClose = true;

    /// The conversation since the last call.
    [[nodiscard]] QString said() { return std::exchange(m_lines, {}).join(u'\n'); }

    /// The conversation until something is done, with these answers to file dialogs.
    template <typename Acting>
    QString hears(Acting&& acting, const QStringList& answers = {})
    {
        files = answers;
        acting();
        return said();
    }

    QString ShowFileDialog(const widgets::FileDialogRequest& request) override
    {
        const bool saving = request.kind == widgets::FileDialogRequest::Kind::Save;
        say(saving ? u"save" : u"open",
            u"%1, %2, %3 in [%4]"_s.arg(request.title, QString::number(request.flags),
                                        request.filter,
                                        request.initialFolder + request.defaultName));
        return files.isEmpty() ? QString() : files.takeFirst().replace(u'~', m_folder);
    }
    std::optional<store::JobCopy> chooseCopy(const store::JobCopies& copies,
                                             const QString& job) override
    {
        say(u"copies", copies.jobs().join(u' '));
        const std::vector<store::JobCopy> kept =
            copies.copiesOf(job.isEmpty() ? copies.jobs().constFirst() : job);
        return copy < kept.size() ? std::optional(kept[copy]) : std::nullopt;
    }
    bool offerConversion(const QString& text) override { return say(u"convert", text, converts); }
    bool askYesNo(const QString& question) override
    {
        return say(u"ask", question, saysYes && !question.contains(keeps));
    }
    bool confirmLoss(const QString& question) override
    {
        return say(u"confirm", question, saysYes && !question.contains(keeps));
    }
    std::optional<int> choose(const QString& question, const QStringList& choices) override
    {
        return say(u"choose", question.section(u'\n', 0, 0) + choices.join(u'|'), choice);
    }
    bool moveToTrash(const QString& path) override
    {
        return hasTrash && QFile::rename(path, path + u".trashed"_s);
    }
    void setUpPrinter(QPrinter& /*printer*/) override { say(u"printer"); }
    std::optional<widgets::PageRange> choosePages(QPrinter& /*printer*/, int pageCount) override
    {
        return say(u"pages", QString::number(pageCount), pages);
    }
    void showAbout() override { say(u"about"); }
    void showWritten(const QString& text, const QString& /*path*/) override
    {
        say(u"message", text);
    }
    void showMessage(const QString& text) override { say(u"message", text); }
    void showError(const QString& text) override { say(u"error", text); }
    void ReportError(const std::exception& error) override
    {
        const auto* const known = dynamic_cast<const store::DatabaseError*>(&error);
        say(u"report", known == nullptr ? QString::fromUtf8(error.what())
                                        : QString::number(static_cast<int>(known->number())));
    }
    void SetStatus(const QString& text, bool busy) override
    {
        say(u"status", text + (busy ? u" (busy)"_s : QString()));
    }
    void BeginBusy() override { say(u"hourglass"); }
    void EndBusy() override { say(u"pointer"); }
    void showJob(const QString& path) override { say(u"job", path); }
    void showRecentJobs() override { say(u"recent"); }
    [[nodiscard]] bool HasDocumentWindows() const override { return hasDocuments; }
    bool closeDocumentWindows() override
    {
        if (hasDocuments)
            say(u"close documents", {});
        hasDocuments = hasDocuments && !documentsClose;
        return !hasDocuments;
    }

private:
    /// Notes it, and hands on what is answered.
    template <typename Answer = bool>
    Answer say(QStringView what, QString about = {}, const Answer& answer = {})
    {
        if (!m_folder.isEmpty())
            about.replace(m_folder, u"~"_s);
        m_lines += about.isEmpty() ? what.toString() : u"%1: %2"_s.arg(what, about);
        return answer;
    }

    QString m_folder;
    QStringList m_lines;
};

} // namespace zelto::test
