// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/record.h"
#include "support/property.h"
#include "support/runner.h"
#include "text/decimal_text.h"

#include <QTest>

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;
using namespace zelto::print;

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
        QVERIFY(zelto::test::holds("numbers keep seven digits", [](int over, bool comma) {
            for (const float under : {1.0F, 4.0F, 7.0F, 1000.0F, 1e9F}) {
                const float number = static_cast<float>(over) / under;
                const QByteArray record = recordOf(comma ? ',' : '.', Opcode::FontSize, number);
                const double shown = zelto::text::readNumber(zelto::text::decimalText(number));
                const auto limited = static_cast<float>(std::clamp(shown, -1e9, 1e9));
                RC_ASSERT(RecordFields(line(record)).number(1) == limited);
            }
        }));
        QVERIFY(zelto::test::holds("texts come back", [](const std::vector<char16_t>& units) {
            QString text;
            for (const char16_t unit : units)
                text += QChar(unit % 0x500 == 27 ? u' ' : static_cast<char16_t>(unit % 0x500));
            const QByteArray record = recordOf(',', Opcode::FontName, text);
            text.replace(u'\r', u' ').replace(u'\n', u' ');
            RC_ASSERT(RecordFields(line(record)).tabbedText(1) == text);
        }));
    }
};

ZELTO_TEST(TestRecord)

#include "tst_record.moc"
