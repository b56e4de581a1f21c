// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/user_interface.h"

#include <QString>

#include <utility>

namespace zelto::cli {

/// The user at a terminal: messages about the job in hand go to standard error, progress to
/// nowhere.
class Console : public store::Messages, public store::StatusLine
{
public:
    /// Messages begin with the program's name.
    explicit Console(QString program) : m_program(std::move(program)) {}

    /// The job that the next messages are about.
    void setJob(const QString& job) { m_job = job; }

    void SetStatus(const QString& text, bool busy) override;
    void showMessage(const QString& text) override;
    void ReportError(const std::exception& error) override;

private:
    QString m_program;
    QString m_job;
};

/// Writes UTF-8 text to standard output. Throws PrintError when not all of it gets there.
void writeOut(const QString& text);

} // namespace zelto::cli
