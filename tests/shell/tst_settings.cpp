// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/recent_jobs.h"
#include "store/settings.h"
#include "store/store_fixture.h"
#include "support/property.h"
#include "support/runner.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zelto::shell;
using namespace zelto::store;
using namespace zelto::test;

namespace {

QString shown(const RecentJobs& recent)
{
    return QStringList(recent.paths().begin(), recent.paths().end()).join(u'|');
}

} // namespace

class TestSettings : public QObject
{
    Q_OBJECT

private slots:
    void reading_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("value");
        const auto row = [](const char* name, const QByteArray& file, const QString& value) {
            QTest::newRow(name) << file << value;
        };
        row("plain", "[Main]\nFile1=/a/B.ZLT\n", u"/a/B.ZLT"_s);
        row("letter case and blanks", "[main]\r\n file1 = x y \r\n", u"x y"_s);
        row("mark, comment, other section", "\xef\xbb\xbf; nota\n[A]\nFile1=no\n[Main]\nFile1=sì\n",
            u"sì"_s);
        row("as it stands", "[Main]\nFile1=\"<<<a=b;c\"\n", u"\"<<<a=b;c\""_s);
        row("empty", "[Main]\nFile1=\n", {});
        row("missing", "[Main]\nFile2=x\n", {});
        row("no settings", QByteArray(300, '\0'), {});
        row("cut", "[Main]\nFile1=" + QByteArray(300, 'x'), QString(254, u'x'));
        row("not cut within a character", "[Main]\nFile1=" + QByteArray(253, 'x') + "𝄞",
            QString(253, u'x'));
    }

    void reading()
    {
        QFETCH(QByteArray, file);
        const JobFolder folder;
        const QString path = folder.file(u"Zelto.ini"_s);
        QCOMPARE(Settings(path).LeggiIni(u"Main"_s, u"File1"_s), QString());
        writeBytes(path, file);
        QTEST(Settings(path).LeggiIni(u"Main"_s, u"File1"_s), "value");
    }

    void writing_data()
    {
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("lines");
        const QString lines = u"; nota [Main] File1=%1 [Parametri] TabUI0=600"_s;
        QTest::newRow("other value") << u"/è/C.ZLT"_s << lines.arg(u"/è/C.ZLT"_s);
        QTest::newRow("no value") << u""_s << lines.arg(u""_s);
        QTest::newRow("two lines") << u"/a\nFile2=b"_s << lines.arg(u""_s);
    }

    void writing()
    {
        QFETCH(QString, value);
        const JobFolder folder;
        const QString path = folder.file(u"Zelto.ini"_s);
        writeBytes(path, "; nota\n[Main]\nFile1=/a/B.ZLT\n\n[Parametri]\nTabUI0=600\n");
        Settings(path).ScriviIni(u"MAIN"_s, u"file1"_s, value);
        const QByteArray written = bytesOf(path);
        const QStringList lines = QString::fromUtf8(written).split(u'\n', Qt::SkipEmptyParts);
        QTEST(lines.join(u' '), "lines");
        Settings(path).ScriviIni(u"MAIN"_s, u"file1"_s, value);
        QCOMPARE(bytesOf(path), written);
    }

    void writingKeepsTheFile()
    {
        const JobFolder folder;
        const QString path = folder.file(u"Zelto.ini"_s);
        Settings(path).ScriviIni(u"Main"_s, {{u"a"_s, u"1"_s}, {u"b"_s, u"2"_s}});
        QCOMPARE(Settings(path).LeggiIni(u"Main"_s, u"b"_s), u"2"_s);
        QCOMPARE(folder.names(), QStringList(u"Zelto.ini"_s));
        // Too large to have been written by the program: what is in it stays.
        const QByteArray large = "[Main]\na=1\n;" + QByteArray(2 << 20, 'x');
        writeBytes(path, large);
        Settings(path).ScriviIni(u"Main"_s, u"a"_s, u"2"_s);
        QCOMPARE(bytesOf(path), large);
    }

    void updateRule_data()
    {
        QTest::addColumn<QStringList>("stored"); // keys File1 to File4
        QTest::addColumn<QString>("opened");
        QTest::addColumn<QString>("after");
        const QStringList gap{u"/a"_s, {}, u"/c"_s};
        QTest::newRow("letter case")
            << QStringList{u"/a"_s, u"/è.zlt"_s} << u"/È.ZLT"_s << u"/È.ZLT|/a||"_s;
        QTest::newRow("gap, new job") << gap << u"/n"_s << u"/n|/a||/c"_s;
        QTest::newRow("gap, listed job") << gap << u"/c"_s << u"/c|/a||"_s;
    }

    void updateRule()
    {
        QFETCH(QStringList, stored);
        QFETCH(QString, opened);
        const JobFolder folder;
        Settings settings(folder.file(u"Zelto.ini"_s));
        for (qsizetype i = 0; i < stored.size(); ++i)
            settings.ScriviIni(u"Main"_s, u"File%1"_s.arg(i + 1), stored[i]);
        RecentJobs recent;
        recent.load(settings);
        recent.AggiornaRecent(opened);
        QTEST(shown(recent), "after");
    }

    /// A list that is told without entries and places.
    void recentIsMostRecentlyUsed()
    {
        QVERIFY(holds("newest first, each once", [](const std::vector<std::uint8_t>& opened) {
            RecentJobs recent;
            QStringList model;
            for (const std::uint8_t job : opened) {
                // Few names in either letter case.
                const QString name =
                    QChar(job % 2 == 0 ? u'a' + job % 12 / 2 : u'A' + job % 12 / 2);
                recent.AggiornaRecent(name);
                model.removeIf([&](const QString& old) {
                    return old.compare(name, Qt::CaseInsensitive) == 0;
                });
                model.prepend(name);
                model = model.first(std::min<qsizetype>(model.size(), 4));
            }
            RC_ASSERT(shown(recent) == (model + QStringList{{}, {}, {}, {}}).first(4).join(u'|'));
        }));
    }

    void recentSurvivesTheProgram()
    {
        const JobFolder folder;
        Settings settings(folder.file(u"Zelto.ini"_s));
        settings.ScriviIni(u"Main"_s, {{u"File1"_s, u"/x"_s}, {u"File3"_s, u"/z"_s}});
        RecentJobs recent;
        recent.load(settings);
        recent.AggiornaRecent(u"/a & b"_s);
        recent.AggiornaRecent(u"/c"_s);
        QCOMPARE(settings.LeggiIni(u"Main"_s, u"File3"_s), u"/x"_s);
        for (const char* key : {"File3", "File4"})
            QVERIFY(bytesOf(folder.file(u"Zelto.ini"_s)).contains(key));
        RecentJobs next;
        next.load(settings);
        QCOMPARE(shown(next), u"/c|/a & b|/x|"_s);
    }
};

ZELTO_TEST(TestSettings)
#include "tst_settings.moc"
