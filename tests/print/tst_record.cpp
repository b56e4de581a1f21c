// SPDX-License-Identifier: GPL-3.0-or-later
// Records of page files: as they are written, and what is drawn from those that no report wrote:
// damaged, foreign or made to hurt.
#include "print/print_engine.h"
#include "probe_surface.h"
#include "support/runner.h"
#include "text/decimal_text.h"

#include <QBuffer>
#include <QTest>

#include <algorithm>
#include <limits>
#include <rapidcheck.h>

using namespace Qt::StringLiterals;
using namespace zelto::print;
using zelto::test::ProbeSurface;

namespace {

template <typename... Fields>
QByteArray recordOf(char separator, Opcode opcode, const Fields&... fields)
{
    RecordBuffer buffer(separator);
    buffer.append(opcode, fields...);
    return {buffer.bytes().data(), static_cast<qsizetype>(buffer.size())};
}

std::string_view line(const QByteArray& record)
{
    return {record.data(), static_cast<std::size_t>(record.size() - 2)};
}

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

class TestRecord : public QObject
{
    Q_OBJECT

private slots:
    void numbersAsWritten_data()
    {
        QTest::addColumn<float>("number");
        QTest::addColumn<QByteArray>("written");
        QTest::addRow("whole") << 21.0F << " 21 "_ba;
        QTest::addRow("fraction") << 21.5F << " 21,5 "_ba;
        QTest::addRow("below one") << 0.25F << " 0,25 "_ba;
        QTest::addRow("thousandth") << -0.125F << "-0,125 "_ba;
        QTest::addRow("inner zero") << 5.0625F << " 5,0625 "_ba;
        QTest::addRow("single precision") << 40.1F << " 40,1 "_ba;
        QTest::addRow("seven digits") << 3.14159274F << " 3,141593 "_ba;
        QTest::addRow("negative zero") << -0.0F << " 0 "_ba;
        QTest::addRow("no number") << std::numeric_limits<float>::quiet_NaN() << " 0 "_ba;
        QTest::addRow("infinite") << -std::numeric_limits<float>::infinity() << " 0 "_ba;
    }

    void numbersAsWritten()
    {
        QFETCH(float, number);
        QFETCH(QByteArray, written);
        QCOMPARE(recordOf(',', Opcode::FontSize, number), " 11 \t" + written + "\r\n");
        QCOMPARE(recordOf('.', Opcode::FontSize, number),
                 " 11 \t" + written.replace(',', '.') + "\r\n");
    }

    void textsAsWritten_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("written");
        QTest::addRow("plain") << u"Int. 1"_s << "Int. 1"_ba;
        QTest::addRow("accents") << u"Proprietà: 5 €"_s << "Proprietà: 5 €"_ba;
        QTest::addRow("tab") << u"a\tb"_s
                             << "a\x1B"
                                "b"_ba;
        QTest::addRow("tab among accents") << u"è\tà"_s << "è\x1Bà"_ba;
        QTest::addRow("line breaks") << u"a\r\nb\nc"_s << "a  b c"_ba;
        QTest::addRow("half a pair") << QString(QChar(0xD83C)) << "\xEF\xBF\xBD"_ba;
        QTest::addRow("longer than any line") << QString(20'000, u'x') << QByteArray(16'384, 'x');
        QTest::addRow("longest bytes") << QString(20'000, u'€') << "€"_ba.repeated(16'384);
    }

    void textsAsWritten()
    {
        QFETCH(QString, text);
        QFETCH(QByteArray, written);
        QCOMPARE(recordOf(',', Opcode::FontName, text), " 10 \t" + written + "\r\n");
    }

    void numbersAsRead_data()
    {
        QTest::addColumn<QByteArray>("field");
        QTest::addColumn<float>("number");
        QTest::addRow("comma") << " 21,5 "_ba << 21.5F;
        QTest::addRow("point") << " 21.5 "_ba << 21.5F;
        QTest::addRow("two separators") << "1,5,7"_ba << 1.5F;
        QTest::addRow("blanks inside") << "-1 234,5"_ba << -1234.5F;
        QTest::addRow("no number") << "riga"_ba << 0.0F;
        QTest::addRow("empty") << ""_ba << 0.0F;
        QTest::addRow("too large") << "1E300"_ba << 1e9F;
        QTest::addRow("too small") << "-99999999999999"_ba << -1e9F;
        QTest::addRow("endless") << QByteArray(100'000, '9') << 1e9F;
    }

    void numbersAsRead()
    {
        QFETCH(QByteArray, field);
        const RecordFields record(
            std::string_view{field.data(), static_cast<std::size_t>(field.size())});
        QTEST(record.number(0), "number");
    }

    void whatIsWrittenIsRead()
    {
        QVERIFY(rc::check("numbers keep seven digits", [](int over, bool comma) {
            for (const float under : {1.0F, 4.0F, 7.0F, 1000.0F, 1e9F}) {
                const float number = static_cast<float>(over) / under;
                const QByteArray record = recordOf(comma ? ',' : '.', Opcode::FontSize, number);
                const double shown = zelto::text::readNumber(zelto::text::decimalText(number));
                const auto limited = static_cast<float>(std::clamp(shown, -1e9, 1e9));
                RC_ASSERT(RecordFields(line(record)).number(1) == limited);
            }
        }));
        QVERIFY(rc::check("texts come back", [](const std::vector<char16_t>& units) {
            QString text;
            for (const char16_t unit : units)
                text += QChar(unit % 0x500 == 27 ? u' ' : static_cast<char16_t>(unit % 0x500));
            const QByteArray record = recordOf(',', Opcode::FontName, text);
            text.replace(u'\r', u' ').replace(u'\n', u' ');
            RC_ASSERT(RecordFields(line(record)).text(1) == text);
        }));
    }

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
        const QByteArray start = " 21 \t 0 \t 0 \t 0 \t";
        const qsizetype most = static_cast<qsizetype>(MaxRecordLength) - start.size();
        for (const qsizetype length : {most - 1, most, most + 1, most + 2, 3 * most}) {
            const QByteArray line = start + QByteArray(length, 'z') + "\r\n";
            const QStringList drawn = drawnFrom(line + start + "dopo");
            QCOMPARE(drawn.value(0).count(u'z'), std::min(length, most));
            QCOMPARE(drawn.mid(1), QStringList{u"text 0 0 Arial 200 dopo"_s});
        }
    }
};

ZELTO_TEST(TestRecord)

#include "tst_record.moc"
