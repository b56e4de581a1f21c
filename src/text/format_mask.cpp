// SPDX-License-Identifier: GPL-3.0-or-later
#include "text/format_mask.h"

#include "text/decimal_text.h"

#include <QList>

namespace zelto::text {

namespace {

/// Fills one mask from front to back.
class MaskFiller
{
public:
    /// The blank behind the mask belongs to a text field that nothing closes.
    MaskFiller(QStringView mask, QStringView values)
        : m_mask(mask.toString() + u' '), m_values(values.split(u'\t'))
    {
        if (m_values.size() > MaxMaskValues)
            throw MaskError(u"FormatMask: più di 30 valori."_s);
    }

    QString fill()
    {
        m_result.reserve(m_mask.size());
        while (m_position < m_mask.size())
            step(m_mask[m_position].unicode());
        qsizetype length = m_result.size();
        while (length > 0 && m_result[length - 1] == u' ')
            --length;
        return m_result.first(length);
    }

private:
    void step(char16_t c)
    {
        if (c == u'#' || c == u'0')
            numericField();
        else if (c == u'\\')
            textField();
        else if (c == u'!')
            characterField();
        else
            copyCharacter();
    }

    void copyCharacter()
    {
        if (m_position < m_mask.size())
            m_result.append(m_mask[m_position++]);
    }

    QStringView nextValue()
    {
        if (m_field == MaxMaskValues)
            throw MaskError(u"FormatMask: più di 30 campi."_s);
        const qsizetype index = m_field++;
        return index < m_values.size() ? m_values[index] : QStringView{};
    }

    void numericField()
    {
        qsizetype end = m_position;
        while (end < m_mask.size() && QStringView{u"-+0.#"}.contains(m_mask[end]))
            ++end;
        const std::string field =
            QStringView{m_mask}.sliced(m_position, end - m_position).toLatin1().toStdString();
        m_result.append(NumberMask{field}.format(readNumber(nextValue().toString())));
        m_position = end;
        copyCharacter();
    }

    void textField()
    {
        const qsizetype closing = m_mask.indexOf(u'\\', m_position + 1);
        const qsizetype end = closing < 0 ? m_mask.size() : closing + 1;
        const qsizetype width = end - m_position;
        const QStringView value = nextValue().left(width);
        m_result.append(value);
        m_result.resize(m_result.size() + width - value.size(), u' ');
        m_position = end;
        copyCharacter();
    }

    void characterField()
    {
        const QStringView value = nextValue();
        m_result.append(value.isEmpty() ? QChar(u' ') : value.front());
        ++m_position;
    }

    QString m_mask;
    QList<QStringView> m_values;
    QString m_result;
    qsizetype m_position = 0;
    int m_field = 0;
};

QString formatGrouped(const QString& text, int mode)
{
    if (readNumber(text) == 0 || mode == 1 || mode == 2)
        return {};
    // The number ends before a TAB, and the mask takes no more than thirty of them.
    const QString plain = FormatMask(u"############0.00", text.section(u'\t', 0, 0));
    const qsizetype integerEnd = plain.indexOf(u'.');
    QString result;
    for (qsizetype i = 0; i < integerEnd; ++i) {
        if ((integerEnd - i) % 3 == 0)
            result.append(u' ');
        result.append(plain[i]);
    }
    return result.trimmed() + plain.sliced(integerEnd);
}

} // namespace

QString FormatMask(QStringView mask, QStringView values)
{
    if (mask.isEmpty())
        return {};
    return MaskFiller{mask, values}.fill();
}

QString FormatGroupedComma(const QString& text, int mode)
{
    return formatGrouped(text, mode).replace(u'.', u',');
}

QString FormatGroupedPoint(const QString& text, int mode)
{
    return formatGrouped(text, mode);
}

} // namespace zelto::text
