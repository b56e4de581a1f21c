// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/pdf_info.h"

#include "text/literals.h"

#include <QRegularExpression>
#include <QStringEncoder>

#include <algorithm>
#include <pwd.h>
#include <unistd.h>

namespace zelto::print {

namespace {

const QString Creator = u"Zelto"_s;
const QString Producer = QStringLiteral("Qt " QT_VERSION_STR);

QByteArray hexText(const QString& text)
{
    QStringEncoder encoder(QStringEncoder::Utf16BE);
    const QByteArray encoded = encoder(text);
    return "<FEFF" + encoded.toHex().toUpper() + '>';
}

} // namespace

QString withoutControls(QString text)
{
    const auto isUnfit = [](QChar c) {
        return c.category() == QChar::Other_Control || c == u'\uFFFE' || c == u'\uFFFF';
    };
    std::ranges::replace_if(text, isUnfit, QChar(u' '));
    // Half of a pair of surrogates is none: this turns it into the sign for such.
    return QString::fromUtf8(text.toUtf8());
}

QString userFullName()
{
    const passwd* user = getpwuid(getuid());
    if (user == nullptr)
        return {};
    const QString full = QString::fromLocal8Bit(user->pw_gecos).section(u',', 0, 0).trimmed();
    return full.isEmpty() ? QString::fromLocal8Bit(user->pw_name) : full;
}

QByteArray pdfMetadata(const PdfInfo& info, const QDateTime& made)
{
    const QString time = made.toUTC().toString(Qt::ISODate);
    return u"<?xpacket begin='\uFEFF' id='W5M0MpCehiHzreSzNTczkc9d'?>\n"
           u"<x:xmpmeta xmlns:x=\"adobe:ns:meta/\">\n"
           u"<rdf:RDF xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\">\n"
           u"<rdf:Description rdf:about=\"\" xmlns:dc=\"http://purl.org/dc/elements/1.1/\""
           u" xmlns:xmp=\"http://ns.adobe.com/xap/1.0/\""
           u" xmlns:pdf=\"http://ns.adobe.com/pdf/1.3/\""
           u" xmlns:pdfaid=\"http://www.aiim.org/pdfa/ns/id/\">\n"
           u"<dc:title><rdf:Alt><rdf:li xml:lang=\"x-default\">%1</rdf:li></rdf:Alt></dc:title>"
           u"\n<dc:creator><rdf:Seq><rdf:li>%2</rdf:li></rdf:Seq></dc:creator>\n"
           u"<xmp:CreatorTool>%3</xmp:CreatorTool>\n"
           u"<xmp:CreateDate>%4</xmp:CreateDate>\n"
           u"<xmp:ModifyDate>%4</xmp:ModifyDate>\n"
           u"<pdf:Producer>%5</pdf:Producer>\n"
           u"<pdfaid:part>1</pdfaid:part>\n"
           u"<pdfaid:conformance>B</pdfaid:conformance>\n"
           u"</rdf:Description>\n</rdf:RDF>\n</x:xmpmeta>\n<?xpacket end='w'?>\n"_s
               .arg(withoutControls(info.title).toHtmlEscaped(),
                    withoutControls(info.author).toHtmlEscaped(), Creator, time, Producer)
               .toUtf8();
}

QByteArray pdfInfoUpdate(const QByteArray& end, qint64 length, const PdfInfo& info,
                         const QDateTime& made)
{
    static const QRegularExpression trailer(
        uR"(trailer\s*<<(.*/Info (\d+) 0 R.*)>>\s*startxref\s*(\d+)\s*%%EOF\s*$)"_s,
        QRegularExpression::DotMatchesEverythingOption);
    const auto found = trailer.match(QString::fromLatin1(end));
    if (!found.hasMatch())
        return {};
    const QByteArray number = found.captured(2).toLatin1();
    const QByteArray time = made.toUTC().toString(u"'(D:'yyyyMMddHHmmss'Z)'"_s).toLatin1();
    QByteArray update = "\n";
    const qint64 object = length + update.size();
    update += number + " 0 obj\n<<\n/Title " + hexText(withoutControls(info.title)) + "\n/Author " +
              hexText(withoutControls(info.author)) + "\n/Creator " + hexText(Creator) +
              "\n/Producer " + hexText(Producer) + "\n/CreationDate " + time + "\n/ModDate " +
              time + "\n>>\nendobj\n";
    const qint64 table = length + update.size();
    update += "xref\n" + number + " 1\n" + QByteArray::number(object).rightJustified(10, '0') +
              " 00000 n \ntrailer\n<<" + found.captured(1).toLatin1() + "/Prev " +
              found.captured(3).toLatin1() + "\n>>\nstartxref\n" + QByteArray::number(table) +
              "\n%%EOF\n";
    return update;
}

} // namespace zelto::print
