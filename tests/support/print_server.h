// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/store_fixture.h"

#include <QProcess>
#include <QTcpServer>

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
        for (const QString& name : {QString(), u"bin"_s, u"bin/backend"_s})
            QFile::setPermissions(path(name), QFile::Permissions::fromInt(0x7755));
        QFile::setPermissions(path(u"jobs"_s), QFile::Permissions::fromInt(0x7777));
        QFile::link(u"/usr/lib/cups/daemon"_s, path(u"bin/daemon"_s));
        writeBytes(path(u"share/mime/zelto.types"_s), "application/pdf pdf string(0,%PDF)\n");
        writeBytes(path(u"share/mime/zelto.convs"_s), {});
        writeBytes(path(u"bin/backend/raccolta"_s),
                   "#!/bin/sh\n[ $# -eq 0 ] && exit 0\numask 022\n"
                   "cat \"${6:--}\" > \"${DEVICE_URI#*:}/$1.part\" &&\n"
                   "mv \"${DEVICE_URI#*:}/$1.part\" \"${DEVICE_URI#*:}/$1.pdf\"\n");
        QFile::setPermissions(path(u"bin/backend/raccolta"_s), QFile::Permissions::fromInt(0x7755));
        QTcpServer free;
        free.listen(QHostAddress::LocalHost);
        m_port = free.serverPort();
        const QString server =
            u"Listen 127.0.0.1:%1\nBrowsing Off\nDefaultAuthType None\n"
            u"DefaultEncryption Never\n<Location />\nAllow all\n</Location>\n"
            u"<Location /admin>\nAllow all\n</Location>\n"
            u"<Policy default>\n<Limit All>\nAllow all\n</Limit>\n</Policy>\n"_s.arg(m_port);
        const QString files =
            u"ServerRoot %1\nRequestRoot %1/spool\nTempDir %1/spool/tmp\nStateDir %1/state\n"
            u"CacheDir %1/cache\nServerBin %1/bin\nDataDir %1/share\nAccessLog %1/access_log\n"
            u"ErrorLog %1/error_log\nPageLog %1/page_log\n"_s.arg(m_folder.path());
        writeBytes(path(u"cupsd.conf"_s), server.toUtf8());
        writeBytes(path(u"cups-files.conf"_s), files.toUtf8());
    }
    ~PrintServer()
    {
        m_server.terminate();
        m_server.waitForFinished();
    }
    Q_DISABLE_COPY(PrintServer)

    /// Starts the server and its queue; false where the machine has no CUPS or does not let it run.
    bool start()
    {
        qputenv("CUPS_SERVER", u"127.0.0.1:%1"_s.arg(m_port).toLatin1());
        m_server.start(u"/usr/sbin/cupsd"_s, {u"-f"_s, u"-c"_s, path(u"cupsd.conf"_s), u"-s"_s,
                                              path(u"cups-files.conf"_s)});
        if (!m_server.waitForStarted())
            return false;
        const auto addQueue = [this] {
            return QProcess::execute(u"lpadmin"_s,
                                     {u"-p"_s, u"Prova"_s, u"-E"_s, u"-v"_s,
                                      u"raccolta:"_s + path(u"jobs"_s), u"-m"_s, u"raw"_s}) == 0;
        };
        return QTest::qWaitFor(addQueue, 10'000) &&
               QProcess::execute(u"lpadmin"_s, {u"-d"_s, u"Prova"_s}) == 0;
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
    [[nodiscard]] QString path(const QString& name) const { return m_folder.file(name); }
    [[nodiscard]] QString jobPath(int job) const { return path(u"jobs/%1.pdf"_s.arg(job)); }
    JobFolder m_folder;
    int m_port = 0;
    QProcess m_server;
};

} // namespace zelto::test
