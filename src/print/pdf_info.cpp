// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/pdf_info.h"

#include "text/literals.h"

#include <algorithm>
#include <pwd.h>
#include <unistd.h>

namespace zelto::print {

namespace {

const QString Plain = u"%1"_s;
const QString Language = u"<rdf:Alt><rdf:li xml:lang=\"x-default\">%1</rdf:li></rdf:Alt>"_s;
const QString Persons = u"<rdf:Seq><rdf:li>%1</rdf:li></rdf:Seq>"_s;

/// A property under its two names.
struct Property
{
    const char* key; ///< in the document information
    QString element; ///< in the metadata
    QString form;    ///< how that encloses the value
    QString value;
};

std::vector<Property> propertiesOf(const PdfInfo& info)
{
    std::vector<Property> all{
        {"/Title", u"dc:title"_s, Language, info.title},
        {"/Author", u"dc:creator"_s, Persons, info.author},
        {"/Subject", u"dc:description"_s, Language, info.subject},
        {"/Keywords", u"pdf:Keywords"_s, Plain, info.keywords},
        {"/Creator", u"xmp:CreatorTool"_s, Plain, u"Zelto"_s},
        {"/Producer", u"pdf:Producer"_s, Plain, QStringLiteral("Qt " QT_VERSION_STR)},
    };
    for (Property& property : all)
        property.value = withoutControls(property.value);
    std::erase_if(all, [](const Property& property) { return property.value.isEmpty(); });
    return all;
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
    QString elements;
    for (const Property& property : propertiesOf(info))
        elements += u"<%1>%2</%1>\n"_s.arg(property.element,
                                           property.form.arg(property.value.toHtmlEscaped()));
    return u"<?xpacket begin='\uFEFF' id='W5M0MpCehiHzreSzNTczkc9d'?>\n"
           u"<x:xmpmeta xmlns:x=\"adobe:ns:meta/\">\n"
           u"<rdf:RDF xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\">\n"
           u"<rdf:Description rdf:about=\"\" xmlns:dc=\"http://purl.org/dc/elements/1.1/\""
           u" xmlns:xmp=\"http://ns.adobe.com/xap/1.0/\""
           u" xmlns:pdf=\"http://ns.adobe.com/pdf/1.3/\""
           u" xmlns:pdfaid=\"http://www.aiim.org/pdfa/ns/id/\">\n"
           u"%1"
           u"<xmp:CreateDate>%2</xmp:CreateDate>\n"
           u"<xmp:ModifyDate>%2</xmp:ModifyDate>\n"
           u"<pdfaid:part>1</pdfaid:part>\n"
           u"<pdfaid:conformance>B</pdfaid:conformance>\n"
           u"</rdf:Description>\n</rdf:RDF>\n</x:xmpmeta>\n<?xpacket end='w'?>\n"_s
               .arg(elements, made.toUTC().toString(Qt::ISODate))
               .toUtf8();
}

std::vector<std::pair<const char*, QString>> pdfInfoEntries(const PdfInfo& info,
                                                            const QDateTime& made)
{
    std::vector<std::pair<const char*, QString>> entries;
    for (const Property& property : propertiesOf(info))
        entries.emplace_back(property.key, property.value);
    const QString time = made.toUTC().toString(u"'D:'yyyyMMddHHmmss'Z'"_s);
    entries.emplace_back("/CreationDate", time);
    entries.emplace_back("/ModDate", time);
    return entries;
}

} // namespace zelto::print
