// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/user_interface.h"

#include <QString>

#include <functional>
#include <stdexcept>
#include <utility>

namespace zelto::cli {

/// The user at a terminal: messages about the job in hand go to standard error, progress to
/// nowhere.
class Console : public store::Messages, public store::StatusLine
{
public:
    /// Messages begin with the program's name.
    explicit Console(QString program) : m_program(std::move(program)) {}

    [[nodiscard]] const QString& program() const { return m_program; }

    /// The job that the next messages are about.
    void setJob(const QString& job) { m_job = job; }

    void SetStatus(const QString& /*text*/, bool /*busy*/) override {}
    void showMessage(const QString& text) override;
    void ReportError(const std::exception& error) override;

private:
    QString m_program;
    QString m_job;
};

/// A command line that cannot be carried out; the Italian text says why.
class UsageError : public std::runtime_error
{
public:
    explicit UsageError(const QString& text) : std::runtime_error(text.toStdString()) {}
};

enum ExitStatus : int { Done = 0, WrongUsage = 1, JobFailed = 2, ErrorsFound = 3 };

/// Runs the command and gives its exit status. The user hears of what it throws; of a command line
/// that cannot be carried out the hint says what "--help" does.
int runCommand(Console& console, const QString& hint, const std::function<int()>& command);

/// Writes UTF-8 text to standard output. Throws PrintError when not all of it gets there.
void writeOut(const QString& text);

} // namespace zelto::cli
