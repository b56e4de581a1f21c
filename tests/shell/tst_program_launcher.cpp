// SPDX-License-Identifier: GPL-3.0-or-later
// Which program is started, in a desktop made of temporary folders.
#include "shell/program_launcher.h"
#include "store/store_fixture.h"
#include "support/runner.h"

using namespace zelto::test;

class TestProgramLauncher : public QObject
{
    Q_OBJECT

    void write(const QString& name, const QString& text)
    {
        const QString path = m_folder.file(name);
        QVERIFY(QDir().mkpath(QFileInfo(path).path()));
        writeBytes(path, text.toUtf8());
    }

    /// A program that says its name and its arguments.
    QString entry(const QString& name, const QString& arguments, const QString& more = {})
    {
        const QString path = m_folder.file(name + u" it.sh"_s);
        const QString seen = m_folder.file(u"seen"_s);
        write(name + u" it.sh"_s,
              u"#!/bin/sh\necho \"%1 $#:$1\" > '%2.new'\nmv '%2.new' '%2'\n"_s.arg(name, seen));
        QFile::setPermissions(path, QFile::ReadOwner | QFile::ExeOwner);
        return u"[Desktop Entry]\nType=Application\nName=%1\nExec=\"%2\" %3\n%4"_s.arg(
            name, path, arguments, more);
    }

    JobFolder m_folder;

private slots:
    /// The desktop is read once in a process: one of each kind.
    void initTestCase()
    {
        qputenv("XDG_DATA_HOME", m_folder.file(u"home"_s).toLocal8Bit());
        qputenv("XDG_DATA_DIRS", m_folder.file(u"system"_s).toLocal8Bit() + ":/usr/share");
        qputenv("XDG_CONFIG_HOME", m_folder.file(u"config"_s).toLocal8Bit());
        qputenv("XDG_CURRENT_DESKTOP", "KDE");
        write(u"system/applications/text.desktop"_s, entry(u"Testo"_s, u"%f"_s));
        write(u"config/mimeapps.list"_s, u"[Default Applications]\ntext/plain=text.desktop\n"_s);
        const auto calculator = [&](const QString& name, const QString& more) {
            write(u"system/applications/%1.desktop"_s.arg(name.toLower()),
                  entry(name, {}, u"Categories=%1\n"_s.arg(more)));
        };
        calculator(u"Beta"_s, u"Calculator;\n"_s);
        calculator(u"Gamma"_s, u"Qt;KDE;Calculator;\n"_s);
        calculator(u"Hidden"_s, u"KDE;Calculator;\nNoDisplay=true"_s);
        calculator(u"Console"_s, u"KDE;Calculator;\nTerminal=true"_s);
        calculator(u"Elsewhere"_s, u"KDE;Calculator;\nOnlyShowIn=GNOME;"_s);
        calculator(u"Gone"_s, u"KDE;Calculator;\nTryExec=/no/such/program"_s);
    }

    /// The program runs on by itself with the right arguments.
    void starts()
    {
        const auto seen = [this](const QString& fileName) {
            QFile::remove(m_folder.file(u"seen"_s));
            zelto::shell::ApriConProgramma(fileName);
            (void)QTest::qWaitFor([&] { return QFile::exists(m_folder.file(u"seen"_s)); });
            return bytesOf(m_folder.file(u"seen"_s));
        };
        QCOMPARE(seen(u"/a b/note.txt"_s), "Testo 1:/a b/note.txt\n");
        for (const QString& calculator : {u"calc.exe"_s, u"CALC.EXE"_s})
            QCOMPARE(seen(calculator), "Gamma 0:\n");
    }
};

ZELTO_TEST(TestProgramLauncher)
#include "tst_program_launcher.moc"
