// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/recent_jobs.h"
#include "store/settings.h"
#include "store/store_fixture.h"
#include "support/runner.h"

using namespace zelto::shell;
using namespace zelto::store;
using namespace zelto::test;

class TestSettings : public QObject
{
    Q_OBJECT

    struct SettingsFolder : JobFolder
    {
        const QString path = file(u"Zelto.ini"_s);
    };

private slots:
    void reading()
    {
        const SettingsFolder folder;
        const auto read = [&](const QByteArray& file) {
            writeBytes(folder.path, file);
            return Settings(folder.path).LeggiIni(u"Main"_s, u"File1"_s);
        };
        QCOMPARE(Settings(folder.path).LeggiIni(u"Main"_s, u"File1"_s), QString());
        QCOMPARE(read("[Main]\nFile1=/a/B.ZLT\n"), u"/a/B.ZLT"_s);
        QCOMPARE(read("[main]\r\n file1 = x y \r\n"), u"x y"_s);
        QCOMPARE(read("\xef\xbb\xbf; nota\n[A]\nFile1=no\n[Main]\nFile1=sì\n"), u"sì"_s);
        QCOMPARE(read("[Main]\nFile1=\"<<<a=b;c\"\n"), u"\"<<<a=b;c\""_s);
        QCOMPARE(read("[Main]\nFile1=\n"), QString());
        QCOMPARE(read("[Main]\nFile2=x\n"), QString());
        QCOMPARE(read(QByteArray(300, '\0')), QString()); // no settings at all
        QCOMPARE(read("[Main]\nFile1=" + QByteArray(300, 'x')), QString(254, u'x'));
        // Never cut within a character.
        QCOMPARE(read("[Main]\nFile1=" + QByteArray(253, 'x') + "𝄞"), QString(253, u'x'));
    }

    void writing()
    {
        const SettingsFolder folder;
        const auto written = [&](const QString& value) {
            writeBytes(folder.path, "; nota\n[Main]\nFile1=/a/B.ZLT\n\n[Parametri]\nTabUI0=600\n");
            Settings(folder.path).ScriviIni(u"MAIN"_s, u"file1"_s, value);
            Settings(folder.path).ScriviIni(u"MAIN"_s, u"file1"_s, value); // nothing grows
            return QString::fromUtf8(bytesOf(folder.path));
        };
        const QString lines = u"; nota\n\n\n[Main]\nFile1=%1\n\n\n[Parametri]\nTabUI0=600\n"_s;
        QCOMPARE(written(u"/è/C.ZLT"_s), lines.arg(u"/è/C.ZLT"_s));
        for (const QString& none : {u""_s, u"/a\nFile2=b"_s})
            QCOMPARE(written(none), lines.arg(QString()));
    }

    void writingKeepsTheFile()
    {
        const SettingsFolder folder;
        const QString& path = folder.path;
        Settings(path).ScriviIni(u"Main"_s, {{u"a"_s, u"1"_s}, {u"b"_s, u"2"_s}});
        QCOMPARE(Settings(path).LeggiIni(u"Main"_s, u"b"_s), u"2"_s);
        QCOMPARE(folder.names(), QStringList(u"Zelto.ini"_s));
        // A file that holds the value already is not written: its spacing stays.
        const QByteArray spaced = "[Main]\na = 1\n";
        writeBytes(path, spaced);
        Settings(path).ScriviIni(u"Main"_s, u"a"_s, u"1"_s);
        QCOMPARE(bytesOf(path), spaced);
        // Too large to have been written by the program: what is in it stays.
        const QByteArray large = "[Main]\na=1\n;" + QByteArray(2 << 20, 'x');
        writeBytes(path, large);
        Settings(path).ScriviIni(u"Main"_s, u"a"_s, u"2"_s);
        QCOMPARE(bytesOf(path), large);
    }

    void updateRule()
    {
        const auto after = [](const QStringList& stored, const QString& opened) {
            const SettingsFolder folder;
            Settings settings(folder.path);
            for (qsizetype i = 0; i < stored.size(); ++i)
                settings.ScriviIni(u"Main"_s, u"File%1"_s.arg(i + 1), stored[i]);
            RecentJobs recent;
            recent.load(settings);
            recent.AggiornaRecent(opened);
            return QStringList(recent.paths().begin(), recent.paths().end()).join(u'|');
        };
        QCOMPARE(after({u"/a"_s, u"/è.zlt"_s}, u"/È.ZLT"_s), u"/È.ZLT|/a||"_s);
        const QStringList full{u"/a"_s, u"/b"_s, u"/c"_s, u"/d"_s};
        QCOMPARE(after(full, u"/n"_s), u"/n|/a|/b|/c"_s);
        QCOMPARE(after(full, u"/C"_s), u"/C|/a|/b|/d"_s);
        const QStringList gap{u"/a"_s, {}, u"/c"_s};
        QCOMPARE(after(gap, u"/n"_s), u"/n|/a||/c"_s);
        QCOMPARE(after(gap, u"/c"_s), u"/c|/a||"_s);
    }
};

ZELTO_TEST(TestSettings)
#include "tst_settings.moc"
