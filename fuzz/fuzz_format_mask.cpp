// SPDX-License-Identifier: GPL-3.0-or-later
// Masks, grouped figures and the readers of numbers. Input: length of the mask, mask, values.
#include "fuzz_input.h"
#include "text/decimal_text.h"
#include "text/format_mask.h"

#include <algorithm>
#include <cmath>

using namespace zelto;
using namespace zelto::fuzz;

namespace {

void checkMask(const QString& mask, const QString& values)
{
    try {
        const QString filled = text::FormatMask(mask, values);
        require(filled.size() <= mask.size() + 1);
        require(!filled.endsWith(u' '));
    } catch (const text::MaskError&) {
        require(values.count(u'\t') >= text::MaxMaskValues || mask.size() > text::MaxMaskValues);
    }
}

void checkNumberMask(std::string_view field, double number)
{
    const text::NumberMask mask(field);
    require(mask.format(number).size() == static_cast<qsizetype>(field.size()));
    require(mask.format(static_cast<float>(number)).size() == static_cast<qsizetype>(field.size()));
}

/// Where the number has room, the mask's text is the number to half a unit of its last place.
void checkRounding(double number)
{
    constexpr text::NumberMask Wide{"###########0.000"};
    if (!(std::abs(number) < 1e10))
        return;
    const double shown = text::leadingNumber(QStringView{Wide.format(number)});
    require(std::abs(shown - number) <= 0.0005 + std::abs(number) * 1e-14);
}

void checkReaders(std::string_view bytes)
{
    const QString content = textOf(bytes);
    const double number = text::leadingNumber(bytes);
    require(std::isfinite(number));
    require(text::leadingNumber(QStringView{content}) == number);
    require(std::isfinite(text::readNumber(content)));
    const double again = text::leadingNumber(QStringView{text::decimalText(number)});
    require(std::abs(again - number) <= std::abs(number) * 1e-14);
    checkRounding(number);
}

void checkGrouped(const QString& content, int mode)
{
    QString comma = text::FormatGroupedComma(content, mode);
    const QString point = text::FormatGroupedPoint(content, mode);
    require(comma.isEmpty() == point.isEmpty());
    require(comma.replace(u',', u'.') == point);
    require(!point.startsWith(u' ') && !point.startsWith(u'.'));
    if (text::readNumber(content) == 0 || mode == 1 || mode == 2)
        require(point.isEmpty());
}

void checkSeparators(const QString& content)
{
    const text::DecimalSeparators comma{.LocalDecimalSeparator = u',',
                                        .ForeignDecimalSeparator = u'.'};
    const QString local = text::ToLocalDecimal(content, comma);
    require(!local.contains(u' ') && !local.startsWith(u','));
    require(text::ToPointDecimal(local).size() == local.size());
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::string_view rest = bytesOf(data, size);
    const auto maskLength = static_cast<std::size_t>(takeByte(rest));
    const std::string_view mask = take(rest, maskLength);
    const QString values = textOf(rest);
    checkMask(textOf(mask), values);
    checkReaders(rest);
    checkNumberMask(mask, text::leadingNumber(rest));
    checkGrouped(values, static_cast<int>(maskLength % 4));
    checkSeparators(values);
    return 0;
}
