// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

namespace zelto::test {

/// A CUPS server of our own on the loopback address. Its one queue keeps what is printed as files.
/// Made before anything asks for printers: the library looks for its server once.
class PrintServer
{
public:
    PrintServer()
    {
        for (const char* name : {"spool/tmp", "state", "cache", "bin/backend", "bin/filter",
                                 "share/mime", "share/banners", "jobs"})
            QDir(m_folder.path()).mkpath(QLatin1StringView(name));
        // The server works as another user.
        for (const char* name : {"", "jobs", "bin", "bin/backend"})
            ::chmod(QFile::encodeName(path(QLatin1StringView(name))).constData(), 0755);
        ::chmod(QFile::encodeName(path(QStringLiteral("jobs"))).constData(), 0777);
        QFile::link(QStringLiteral("/usr/lib/cups/daemon"), path(QStringLiteral("bin/daemon")));
        write(QStringLiteral("share/mime/zelto.types"), "application/pdf pdf string(0,%PDF)\n");
        write(QStringLiteral("share/mime/zelto.convs"), "");
        write(QStringLiteral("bin/backend/raccolta"),
              "#!/bin/sh\n[ $# -eq 0 ] && exit 0\numask 022\n"
              "cat \"${6:--}\" > \"${DEVICE_URI#*:}/$1.part\" &&\n"
              "mv \"${DEVICE_URI#*:}/$1.part\" \"${DEVICE_URI#*:}/$1.pdf\"\n");
        ::chmod(QFile::encodeName(path(QStringLiteral("bin/backend/raccolta"))).constData(), 0755);
        writeSettings();
    }
    ~PrintServer()
    {
        m_server.terminate();
        m_server.waitForFinished();
    }
    PrintServer(const PrintServer&) = delete;
    PrintServer& operator=(const PrintServer&) = delete;

    /// Starts the server and its queue; false where the machine has no CUPS or does not let it run.
    bool start()
    {
        qputenv("CUPS_SERVER", QStringLiteral("127.0.0.1:%1").arg(m_port).toLatin1());
        m_server.start(QStringLiteral("/usr/sbin/cupsd"),
                       {QStringLiteral("-f"), QStringLiteral("-c"),
                        path(QStringLiteral("cupsd.conf")), QStringLiteral("-s"),
                        path(QStringLiteral("cups-files.conf"))});
        if (!m_server.waitForStarted())
            return false;
        const auto addQueue = [this] {
            return QProcess::execute(QStringLiteral("lpadmin"),
                                     {QStringLiteral("-p"), QStringLiteral("Prova"),
                                      QStringLiteral("-E"), QStringLiteral("-v"),
                                      QStringLiteral("raccolta:") + path(QStringLiteral("jobs")),
                                      QStringLiteral("-m"), QStringLiteral("raw")}) == 0;
        };
        return QTest::qWaitFor(addQueue, 10'000) &&
               QProcess::execute(QStringLiteral("lpadmin"),
                                 {QStringLiteral("-d"), QStringLiteral("Prova")}) == 0;
    }

    /// What was printed, in the order of the jobs.
    [[nodiscard]] QStringList jobs() const
    {
        QStringList paths;
        for (int job = 1; QFile::exists(jobPath(job)); ++job)
            paths << jobPath(job);
        return paths;
    }

private:
    [[nodiscard]] QString path(const QString& name) const { return m_folder.filePath(name); }
    [[nodiscard]] QString jobPath(int job) const
    {
        return path(QStringLiteral("jobs/%1.pdf").arg(job));
    }
    void write(const QString& name, const QByteArray& text) const
    {
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
            qFatal("cannot write %s", qPrintable(name));
    }
    void writeSettings()
    {
        QTcpServer free;
        free.listen(QHostAddress::LocalHost);
        m_port = free.serverPort();
        write(QStringLiteral("cupsd.conf"),
              QStringLiteral("Listen 127.0.0.1:%1\nBrowsing Off\nDefaultAuthType None\n"
                             "DefaultEncryption Never\n<Location />\nAllow all\n</Location>\n"
                             "<Location /admin>\nAllow all\n</Location>\n"
                             "<Policy default>\n<Limit All>\nAllow all\n</Limit>\n</Policy>\n")
                  .arg(m_port)
                  .toLatin1());
        QByteArray files;
        for (const auto& [name, folder] :
             {std::pair{"ServerRoot", ""}, std::pair{"RequestRoot", "spool"},
              std::pair{"TempDir", "spool/tmp"}, std::pair{"StateDir", "state"},
              std::pair{"CacheDir", "cache"}, std::pair{"ServerBin", "bin"},
              std::pair{"DataDir", "share"}, std::pair{"AccessLog", "access_log"},
              std::pair{"ErrorLog", "error_log"}, std::pair{"PageLog", "page_log"}})
            files +=
                name + QByteArray(" ") + QFile::encodeName(path(QLatin1StringView(folder))) + '\n';
        write(QStringLiteral("cups-files.conf"), files);
    }

    QTemporaryDir m_folder;
    int m_port = 0;
    QProcess m_server;
};

} // namespace zelto::test
