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

/// The line, without its end, must outlive the fields.
RecordFields fieldsOf(const QByteArray& line)
{
    return RecordFields({line.data(), static_cast<std::size_t>(line.size())});
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
    void numbersAsWritten()
    {
        const auto written = [](float number, char separator = ',') {
            return recordOf(separator, Opcode::FontSize, number);
        };
        QCOMPARE(written(21.5F), " 11 \t 21,5 \r\n");
        QCOMPARE(written(0.25F), " 11 \t 0,25 \r\n");
        QCOMPARE(written(-0.125F, '.'), " 11 \t-0.125 \r\n");
        QCOMPARE(written(5.0625F, '.'), " 11 \t 5.0625 \r\n");
        QCOMPARE(written(40.1F), " 11 \t 40,1 \r\n");
        QCOMPARE(written(3.14159274F), " 11 \t 3,141593 \r\n");
        QCOMPARE(written(-0.0F), " 11 \t 0 \r\n");
        QCOMPARE(written(std::numeric_limits<float>::quiet_NaN()), " 11 \t 0 \r\n");
        QCOMPARE(written(-std::numeric_limits<float>::infinity()), " 11 \t 0 \r\n");
    }

    void textsAsWritten()
    {
        const auto written = [](const QString& text) {
            return recordOf(',', Opcode::FontName, text).chopped(2).mid(5);
        };
        QCOMPARE(written(u"Proprietà: 5 €"_s), "Proprietà: 5 €");
        QCOMPARE(written(u"a\ti"_s), "a\x1Bi");
        QCOMPARE(written(u"è\tà"_s), "è\x1Bà");
        QCOMPARE(written(u"a\r\nb\nc"_s), "a  b c");
        QCOMPARE(written(QChar(0xD83C)), "\xEF\xBF\xBD"); // half a pair
        QCOMPARE(written(QString(20'000, u'x')), QByteArray(16'384, 'x'));
        QCOMPARE(written(QString(20'000, u'€')), "€"_ba.repeated(16'384));
    }

    void numbersAsRead()
    {
        const auto read = [](const QByteArray& field) { return fieldsOf(field).number(0); };
        QCOMPARE(read(" 21,5 "), 21.5F);
        QCOMPARE(read(" 21.5 "), 21.5F);
        QCOMPARE(read("1,5,7"), 1.5F);
        QCOMPARE(read("-1 234,5"), -1234.5F);
        QCOMPARE(read("riga"), 0.0F);
        QCOMPARE(read(""), 0.0F);
        QCOMPARE(read("1E300"), 1e9F);
        QCOMPARE(read("-99999999999999"), -1e9F);
        QCOMPARE(read(QByteArray(100'000, '9')), 1e9F);
    }

    void whatIsWrittenIsRead()
    {
        QVERIFY(rc::check("numbers keep seven digits", [](int over, bool comma) {
            for (const float under : {1.0F, 4.0F, 7.0F, 1000.0F, 1e9F}) {
                const float number = static_cast<float>(over) / under;
                const QByteArray line =
                    recordOf(comma ? ',' : '.', Opcode::FontSize, number).chopped(2);
                const double shown = zelto::text::readNumber(zelto::text::decimalText(number));
                const auto limited = static_cast<float>(std::clamp(shown, -1e9, 1e9));
                RC_ASSERT(fieldsOf(line).number(1) == limited);
            }
        }));
        QVERIFY(rc::check("texts come back", [](const std::vector<char16_t>& units) {
            QString text;
            for (const char16_t unit : units)
                text += QChar(unit % 0x500 == 27 ? u' ' : static_cast<char16_t>(unit % 0x500));
            const QByteArray line = recordOf(',', Opcode::FontName, text).chopped(2);
            text.replace(u'\r', u' ').replace(u'\n', u' ');
            RC_ASSERT(fieldsOf(line).text(1) == text);
        }));
    }

    void damagedRecords()
    {
        const QByteArray record = " 31 \t 1 \t 1 \t 2 \t 1 \r\n";
        const QStringList line{u"line 144 240 288 240 1"_s};
        for (const QByteArray& before :
             {" 99 \t 1 \r\n"_ba, "\r\n\n"_ba, "una riga\t1\t2\t3\t4\t5\t6\t7\r\n"_ba,
              " 31 \t 1 \t 1 \r\n"_ba, "-31 \t 1 \t 1 \t 2 \t 1 \r\n"_ba,
              " 31,5 \t 1 \t 1 \t 2 \t 1 \r\n"_ba, " 90 \t 1 \t 1 \t 0 \t-1 \t/dev/null\r\n"_ba,
              "x"_ba.repeated(300'000) + "\r\n"})
            QCOMPARE(drawnFrom(before + record), line);
        QCOMPARE(drawnFrom(record.chopped(2)), line);
        QCOMPARE(drawnFrom(record.chopped(2) + QByteArray(500, '\t') + "\r\n"), line);
    }

    void oddRecords()
    {
        const auto drawn = [](const QByteArray& page) { return drawnFrom(page).join(u'|'); };
        QCOMPARE(drawn(" 31 \t 0,5 \t 1,5 \t 2 \t 1 \r\n"), u"line 216 120 288 120 1"_s);
        // A state without a font, and one out of range.
        QCOMPARE(drawn(" 0 \t 100 \t 10 \t  \t 0 \t 0 \t 0 \t-1 \r\n 21 \t 1 \t 1 \t 0 \tx\r\n"),
                 u"text 10 100 Arial 200 italic x"_s);
        QCOMPARE(drawn(" 0 \t-240 \t 1E30 \tArial\t 1E30 \t 0 \t 0 \t 0 \r\n"
                       " 31 \t 1 \t 1 \t 1E30 \t 1 \r\n"),
                 u"line 100000 0 10000000 0 1"_s);
        // Alignment, style and shadow that are none.
        QCOMPARE(drawn(" 20 \t 1 \t 1 \t 0 \t 10 \t-7 \t1\ti\r\n"),
                 u"text 116 240 Arial 200 bold i"_s);
        QCOMPARE(drawn(" 30 \t 1 \t 1 \t 2 \t 2 \t 1 \t 2 \r\n"), u"box 144 240 288 480 1"_s);
        QCOMPARE(drawn(" 21 \t 0 \t 0 \t 0 \t\xC3(\r\n"), u"text 0 0 Arial 200 \uFFFD("_s);
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
