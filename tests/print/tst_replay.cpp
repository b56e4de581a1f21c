// SPDX-License-Identifier: GPL-3.0-or-later
// Page files that no report wrote: damaged, foreign or made to hurt.
#include "print/page_reader.h"
#include "print/picture_surface.h"
#include "print/print_engine.h"
#include "print/record.h"
#include "probe_surface.h"
#include "support/property.h"
#include "support/runner.h"

#include <QBuffer>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zelto::print;
using zelto::test::ProbeSurface;

namespace {

QStringList drawnFrom(QByteArray page)
{
    ProbeSurface probe;
    PrintEngine print(QString(), {});
    print.setSurface(&probe);
    QBuffer device(&page);
    device.open(QIODevice::ReadOnly);
    print.ReplayRecords(device);
    return probe.drawn;
}

} // namespace

class TestReplay : public QObject
{
    Q_OBJECT

private slots:
    void records_data()
    {
        QTest::addColumn<QByteArray>("page");
        QTest::addColumn<QStringList>("drawn");
        const QStringList line{u"line 144 240 288 240 1"_s};
        const QByteArray record = " 31 \t 1 \t 1 \t 2 \t 1 \r\n";
        QTest::addRow("written on a comma machine")
            << " 31 \t 0,5 \t 1,5 \t 2 \t 1 \r\n"_ba << QStringList{u"line 216 120 288 120 1"_s};
        QTest::addRow("unknown opcode") << " 99 \t 1 \r\n"_ba + record << line;
        QTest::addRow("empty lines") << "\r\n\n"_ba + record << line;
        QTest::addRow("opcodes that are none")
            << "-31 \t 1 \t 1 \t 2 \t 1 \r\n 31,5 \t 1 \t 1 \t 2 \t 1 \r\n"_ba << QStringList();
        QTest::addRow("words") << "una riga\t1\t2\t3\t4\t5\t6\t7\r\n"_ba + record << line;
        QTest::addRow("fields missing") << " 31 \t 1 \t 1 \r\n"_ba + record << line;
        QTest::addRow("last line open") << record.chopped(2) << line;
        QTest::addRow("too many fields") << record.chopped(2) + QByteArray(500, '\t') + "\r\n"
                                         << line;
        QTest::addRow("endless line") << "x"_ba.repeated(300'000) + "\r\n" + record << line;
        QTest::addRow("state without a font")
            << " 0 \t 100 \t 10 \t  \t 0 \t 0 \t 0 \t-1 \r\n 21 \t 1 \t 1 \t 0 \tx\r\n"_ba
            << QStringList{u"text 10 100 Arial 200 italic x"_s};
        QTest::addRow("state out of range")
            << " 0 \t-240 \t 1E30 \tArial\t 1E30 \t 0 \t 0 \t 0 \r\n 31 \t 1 \t 1 \t 1E30 \t 1 \r\n"_ba
            << QStringList{u"line 100000 0 10000000 0 1"_s};
        QTest::addRow("field of any alignment and style")
            << " 20 \t 1 \t 1 \t 0 \t 10 \t-7 \t1\ti\r\n"_ba
            << QStringList{u"text 116 240 Arial 200 bold i"_s};
        QTest::addRow("shadow that is none") << " 30 \t 1 \t 1 \t 2 \t 2 \t 1 \t 2 \r\n"_ba
                                             << QStringList{u"box 144 240 288 480 1"_s};
        QTest::addRow("picture without size")
            << " 90 \t 1 \t 1 \t 0 \t-1 \t/dev/null\r\n"_ba << QStringList();
        QTest::addRow("broken letters")
            << " 21 \t 0 \t 0 \t 0 \t\xC3(\r\n"_ba << QStringList{u"text 0 0 Arial 200 \uFFFD("_s};
    }

    void records()
    {
        QFETCH(QByteArray, page);
        QTEST(drawnFrom(page), "drawn");
    }

    void linesAreCutNotJoined()
    {
        for (const std::size_t length : {MaxRecordLength - 1, MaxRecordLength, MaxRecordLength + 1,
                                         MaxRecordLength + 2, 3 * MaxRecordLength}) {
            QByteArray page = QByteArray(static_cast<qsizetype>(length), 'x') + "\r\ndopo\r\n";
            QBuffer device(&page);
            QVERIFY(device.open(QIODevice::ReadOnly));
            PageReader reader(device);
            const std::string_view first = reader.nextLine().value_or("");
            QCOMPARE(first.find_first_not_of('x'), std::string_view::npos);
            QCOMPARE(first.size(), std::min(MaxRecordLength, length));
            QCOMPARE(reader.nextLine(), std::string_view("dopo"));
            QVERIFY(!reader.nextLine().has_value());
        }
    }

    void anyBytesAreDrawn()
    {
        QImage picture(40, 40, QImage::Format_RGB32);
        picture.fill(Qt::white);
        PictureSurface surface(picture, 0.05);
        PrintEngine print(QString(), {});
        print.setSurface(&surface);
        const QList<int> opcodes{0, 10, 11, 12, 13, 14, 20, 21, 22, 23, 24, 30, 31, 32, 90};
        const QList<QByteArray> fields{
            "-1", "0",   "1E38",     "-1E38",     "0,0001",   "1234567890123",
            "x",  "nan", "\xFF\x1B", "e\xCC\x80", "\xD7\x90", "/dev/zero"};
        QVERIFY(zelto::test::holds("no page hurts", [&](const std::vector<unsigned>& choices) {
            QByteArray page;
            for (const unsigned choice : choices) {
                page += QByteArray::number(opcodes[choice % static_cast<unsigned>(opcodes.size())]);
                for (unsigned rest = choice; page.back() != '\n'; rest = rest * 7 + 5)
                    page += rest % 11 == 0
                                ? "\r\n"_ba
                                : '\t' + fields[rest % static_cast<unsigned>(fields.size())];
            }
            QBuffer device(&page);
            RC_ASSERT(device.open(QIODevice::ReadOnly));
            print.ReplayRecords(device);
            RC_ASSERT(device.atEnd());
            RC_ASSERT(print.LineHeight() >= 0 && print.LineHeight() <= 100'000);
        }));
    }
};

ZELTO_TEST(TestReplay)
#include "tst_replay.moc"
