// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QProcess>
#include <QStringList>
#include <QThread>

namespace zelto::test {

/// How often a test kills; the environment variable ZELTO_KILLS tells otherwise.
inline int kills()
{
    bool given = false;
    const int wanted = qEnvironmentVariableIntValue("ZELTO_KILLS", &given);
    return given ? wanted : 200;
}

/// Starts the program, waits until it says that it has begun, and kills it at a moment of its work;
/// false when it ended by itself.
inline bool killed(const QString& program, const QStringList& arguments, unsigned long microseconds)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForReadyRead())
        return false;
    QThread::usleep(microseconds);
    process.kill();
    process.waitForFinished();
    if (process.exitStatus() == QProcess::CrashExit)
        return true;
    qWarning("%s", process.readAllStandardError().constData());
    return false;
}

} // namespace zelto::test
