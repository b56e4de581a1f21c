// SPDX-License-Identifier: GPL-3.0-or-later
// Which program is started, in a desktop made of temporary folders.
#include "shell/program_launcher.h"
#include "support/runner.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zelto::shell;

namespace {

void writeFile(const QString& path, const QString& text)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(text.toUtf8());
}

/// A file of the desktop and what it holds.
using Files = QList<std::pair<QString, QString>>;

QString program(const QString& name, const QString& more = {}, const QString& exec = u"sh"_s)
{
    return u"[Desktop Entry]\nType=Application\nName=%1\nExec=%2\n%3\n"_s.arg(name, exec, more);
}

QString calculator(const QString& name, const QString& more = {})
{
    return program(name, u"Categories=Utility;Calculator;\n"_s + more);
}

/// Home and system folders of a desktop named KDE.
class Desktop
{
public:
    explicit Desktop(const Files& files)
    {
        for (const auto& [path, text] : files)
            writeFile(m_folder.filePath(path), text);
    }
    [[nodiscard]] QString file(const QString& path) const { return m_folder.filePath(path); }
    [[nodiscard]] DesktopFolders folders() const
    {
        return {.config = {file(u"config"_s)},
                .data = {file(u"home"_s), file(u"system"_s)},
                .desktops = {u"KDE"_s}};
    }

private:
    QTemporaryDir m_folder;
};

QString idOf(const std::optional<DesktopEntry>& entry)
{
    return entry ? entry->id : QString();
}

} // namespace

class TestProgramLauncher : public QObject
{
    Q_OBJECT

private slots:
    void commandLines_data()
    {
        QTest::addColumn<QString>("exec");
        QTest::addColumn<QString>("file");
        QTest::addColumn<QStringList>("command");
        const QString file = u"/a b/c.txt"_s;
        QTest::addRow("plain") << u"kcalc"_s << QString() << QStringList{u"kcalc"_s};
        QTest::addRow("blanks") << u" kcalc   -x "_s << QString()
                                << QStringList{u"kcalc"_s, u"-x"_s};
        QTest::addRow("quotes") << u"\"/opt/my calc/run\" \"a\\\"b\\\\c\\$\" \"\""_s << QString()
                                << QStringList{u"/opt/my calc/run"_s, u"a\"b\\c$"_s, QString()};
        QTest::addRow("codes without file") << u"kcalc %i -n %c %f %U 100%%"_s << QString()
                                            << QStringList{u"kcalc"_s, u"-n"_s, u"100%"_s};
        QTest::addRow("file") << u"edit %f --wait"_s << file
                              << QStringList{u"edit"_s, file, u"--wait"_s};
        QTest::addRow("address") << u"edit %U"_s << file
                                 << QStringList{u"edit"_s, u"file:///a%20b/c.txt"_s};
        QTest::addRow("inside an argument")
            << u"edit --file=%F"_s << file << QStringList{u"edit"_s, u"--file="_s + file};
        QTest::addRow("no code for the file") << u"edit"_s << file << QStringList{u"edit"_s, file};
        QTest::addRow("open quote") << u"edit \"a"_s << QString() << QStringList();
    }
    void commandLines()
    {
        QFETCH(QString, exec);
        QFETCH(QString, file);
        QTEST(commandLine(exec, file), "command");
    }

    void calculators_data()
    {
        QTest::addColumn<Files>("files");
        QTest::addColumn<QString>("id");
        const QString a = u"system/applications/a.desktop"_s;
        const QString b = u"system/applications/b.desktop"_s;
        const QString preference =
            u"[Default Applications]\nx-scheme-handler/calculator=b.desktop;"_s;

        QTest::addRow("none installed") << Files{{a, program(u"Editor"_s)}} << QString();
        QTest::addRow("first by name")
            << Files{{a, calculator(u"Zeta"_s)}, {b, calculator(u"alfa"_s)}} << u"b.desktop"_s;
        QTest::addRow("made for the desktop")
            << Files{{a, calculator(u"Alfa"_s)},
                     {b, program(u"Zeta"_s, u"Categories=Qt;KDE;Calculator;"_s)}}
            << u"b.desktop"_s;
        QTest::addRow("preferred by the user")
            << Files{{a, calculator(u"Alfa"_s)},
                     {b, calculator(u"Zeta"_s, u"NoDisplay=true"_s)},
                     {u"config/mimeapps.list"_s, preference}}
            << u"b.desktop"_s;
        QTest::addRow("preferred by the desktop")
            << Files{{a, calculator(u"Alfa"_s)},
                     {b, calculator(u"Zeta"_s)},
                     {u"system/applications/kde-mimeapps.list"_s, preference}}
            << u"b.desktop"_s;
        QTest::addRow("preferred but gone")
            << Files{{a, calculator(u"Alfa"_s)}, {u"config/mimeapps.list"_s, preference}}
            << u"a.desktop"_s;
        QTest::addRow("hidden in the home folder")
            << Files{{a, calculator(u"Alfa"_s)},
                     {b, calculator(u"Zeta"_s)},
                     {u"home/applications/a.desktop"_s, calculator(u"Alfa"_s, u"Hidden=true"_s)}}
            << u"b.desktop"_s;
        QTest::addRow("in a subfolder")
            << Files{{u"system/applications/kde/c.desktop"_s, calculator(u"C"_s)}}
            << u"kde-c.desktop"_s;
        for (const QString& line :
             {u"NoDisplay=true"_s, u"OnlyShowIn=GNOME;"_s, u"NotShowIn=X;KDE;"_s,
              u"Terminal=true"_s, u"TryExec=/no/such/program"_s, u"Exec=no-such-program"_s,
              u"Exec=\"open"_s, u"Type=Link"_s})
            QTest::addRow("not one with %s", qPrintable(line))
                << Files{{a, calculator(u"Alfa"_s, line)}, {b, calculator(u"Zeta"_s)}}
                << u"b.desktop"_s;
    }
    void calculators()
    {
        QFETCH(Files, files);
        const Desktop desktop(files);
        QTEST(idOf(DesktopDatabase(desktop.folders()).calculator()), "id");
    }

    void associations()
    {
        const QString system = u"system/applications/"_s;
        const Desktop desktop(
            {{system + u"a.desktop"_s, program(u"A"_s)},
             {system + u"b.desktop"_s, program(u"B"_s)},
             {system + u"c.desktop"_s, program(u"C"_s, u"NoDisplay=true"_s)},
             {system + u"mimeinfo.cache"_s,
              u"[MIME Cache]\ntext/x-a=no.desktop;a.desktop;\ntext/x-b=a.desktop;b.desktop;\n"
              u"text/x-c=a.desktop;\ntext/x-d=a.desktop;"_s},
             {u"config/mimeapps.list"_s, u"[Default Applications]\ntext/x-c=no.desktop;c.desktop\n"
                                         u"[Removed Associations]\ntext/x-b=a.desktop;\n"
                                         u"[Added Associations]\ntext/x-d=b.desktop;"_s}});
        const DesktopDatabase database(desktop.folders());
        QCOMPARE(idOf(database.programFor(u"text/x-a"_s)), u"a.desktop"_s);
        QCOMPARE(idOf(database.programFor(u"text/x-b"_s)), u"b.desktop"_s);
        QCOMPARE(idOf(database.programFor(u"text/x-c"_s)), u"c.desktop"_s);
        QCOMPARE(idOf(database.programFor(u"text/x-d"_s)), u"b.desktop"_s);
        QCOMPARE(idOf(database.programFor(u"text/x-e"_s)), QString());
    }

    /// The program runs on by itself with the right arguments.
    void starts_data()
    {
        QTest::addColumn<QString>("fileName");
        QTest::addColumn<QString>("seen");
        QTest::addRow("calculator") << u"calc.exe"_s << u"0:\n"_s;
        QTest::addRow("letter case") << u"CALC.EXE"_s << u"0:\n"_s;
        QTest::addRow("text file") << u"/a b/note.txt"_s << u"1:/a b/note.txt\n"_s;
    }
    void starts()
    {
        QFETCH(QString, fileName);
        const Desktop desktop({});
        const QString script = desktop.file(u"my calc.sh"_s);
        const QString seen = desktop.file(u"seen"_s);
        writeFile(script, u"#!/bin/sh\necho \"$#:$1\" > '%1.new'\nmv '%1.new' '%1'\n"_s.arg(seen));
        QFile::setPermissions(script, QFile::ReadOwner | QFile::ExeOwner);
        writeFile(desktop.file(u"home/applications/x.desktop"_s),
                  program(u"X"_s, u"Categories=Calculator;"_s, u"\"%1\" %f"_s.arg(script)));
        writeFile(desktop.file(u"config/mimeapps.list"_s),
                  u"[Default Applications]\ntext/plain=x.desktop"_s);

        ProgramLauncher(desktop.folders()).ApriConProgramma(fileName);
        QTRY_VERIFY(QFile::exists(seen));
        QFile file(seen);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QTEST(QString::fromUtf8(file.readAll()), "seen");
    }
};

ZELTO_TEST(TestProgramLauncher)

#include "tst_program_launcher.moc"
