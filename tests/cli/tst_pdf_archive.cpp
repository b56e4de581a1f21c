// SPDX-License-Identifier: GPL-3.0-or-later
// The printed example against ISO 19005-1 (PDF/A-1b), clause by clause as far as its objects show
// it.
#include "support/columns.h"
#include "support/pdf_file.h"
#include "support/runner.h"

#include <QRegularExpression>
#include <QXmlStreamReader>

#include <algorithm>

using namespace zelto::test;

namespace {

using Clause = bool (*)(const PdfFile& file);

bool hasNone(const PdfFile& file, const QStringList& keys)
{
    return std::ranges::none_of(keys,
                                [&](const QString& key) { return file.entries.contains(key); });
}

/// Whether the key has no other values, wherever it stands.
bool hasOnly(const PdfFile& file, const QString& key, const QJsonArray& values)
{
    return std::ranges::all_of(file.entries.values(key),
                               [&](const QJsonValue& value) { return values.contains(value); });
}

QJsonValue trailer(const PdfFile& file)
{
    return file.json[u"qpdf"_s][1][u"trailer"_s][u"value"_s];
}

QJsonValue catalog(const PdfFile& file)
{
    return file.object(trailer(file)[u"/Root"_s]);
}

/// The texts of the metadata by their elements; those of a list by the element around it.
QMap<QString, QString> metadata(const PdfFile& file)
{
    const qsizetype begin = file.bytes.indexOf("<?xpacket begin");
    const qsizetype end = file.bytes.indexOf("<?xpacket end", begin);
    QXmlStreamReader reader(file.bytes.mid(begin, end - begin));
    QMap<QString, QString> texts;
    QString element;
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isStartElement() && reader.prefix() != u"rdf")
            element = reader.qualifiedName().toString();
        else if (reader.isCharacters() && !reader.isWhitespace())
            texts[element] += reader.text();
    }
    return texts;
}

bool infoEqualsMetadata(const PdfFile& file)
{
    static const QMap<QString, QString> names{{u"/Title"_s, u"dc:title"_s},
                                              {u"/Author"_s, u"dc:creator"_s},
                                              {u"/Subject"_s, u"dc:description"_s},
                                              {u"/Keywords"_s, u"pdf:Keywords"_s},
                                              {u"/Creator"_s, u"xmp:CreatorTool"_s},
                                              {u"/Producer"_s, u"pdf:Producer"_s},
                                              {u"/CreationDate"_s, u"xmp:CreateDate"_s},
                                              {u"/ModDate"_s, u"xmp:ModifyDate"_s}};
    const QMap<QString, QString> said = metadata(file);
    const QJsonObject info = file.object(trailer(file)[u"/Info"_s]).toObject();
    const auto isSame = [&](const QString& key) {
        QString text = said.value(names[key]);
        if (key.endsWith(u"Date"))
            text = u"D:"_s + text.remove(QRegularExpression(u"[-:T]"_s));
        return !text.isEmpty() && PdfFile::textOf(info[key]) == text;
    };
    return info.keys() == names.keys() && std::ranges::all_of(names.keys(), isSame);
}

/// A font for both directions of writing, whose parts lie in the file under one name.
bool isEmbedded(const PdfFile& file, const QJsonValue& font)
{
    const QJsonValue part = file.object(font[u"/DescendantFonts"_s][0]);
    const QJsonValue descriptor = file.object(part[u"/FontDescriptor"_s]);
    const QJsonValue name = descriptor[u"/FontName"_s];
    return file.object(descriptor[u"/FontFile2"_s]).isObject() &&
           file.object(descriptor[u"/CIDSet"_s]).isObject() &&
           part[u"/CIDToGIDMap"_s] == u"/Identity"_s && part[u"/BaseFont"_s] == name &&
           font[u"/BaseFont"_s] == name;
}

bool fontsAreEmbedded(const PdfFile& file)
{
    int fonts = 0;
    for (const QJsonValue& reference : file.entries.values(u"/Font"_s))
        for (const QJsonValue font : reference.toObject()) {
            ++fonts;
            if (!isEmbedded(file, file.object(font)))
                return false;
        }
    return fonts > 0 && hasOnly(file, u"/Subtype"_s, {u"/Type0"_s, u"/CIDFontType2"_s, u"/XML"_s});
}

bool hasOutputIntent(const PdfFile& file)
{
    const QJsonValue intent = file.object(catalog(file)[u"/OutputIntents"_s][0]);
    return intent[u"/S"_s] == u"/GTS_PDFA1"_s &&
           file.object(intent[u"/DestOutputProfile"_s])[u"/N"_s] == 3 &&
           hasNone(file, {u"/ColorSpaceCMYK"_s});
}

} // namespace

class TestPdfArchive : public QObject
{
    Q_OBJECT

    std::unique_ptr<PdfFile> m_file;

private slots:
    void initTestCase()
    {
        const JobFolder folder;
        const QString pdf = folder.file(u"a.pdf"_s);
        (void)outputOf(QStringLiteral(PROGRAM), {u"-o"_s, pdf, u"-u"_s, folder.path(),
                                                 u"--prima-pagina"_s, u"12"_s, folder.example()});
        m_file = std::make_unique<PdfFile>(pdf);
    }

    void outlineAndLabels()
    {
        QCOMPARE(m_file->outline().join(u'\n'), u"1 Prima pagina\n2 Relazione\n9 Dettaglio U.I.\n"
                                                "15 Millesimi generali\n16 Riscaldamento\n"
                                                "17 Acqua e autoclave\n18 Autorimessa interrata\n"
                                                "19 Scala A\n20 Scala B"_s);
        const QStringList labels = m_file->labels();
        QCOMPARE(labels.size(), 20);
        QCOMPARE(labels.mid(0, 2), (QStringList{u"Prima pagina"_s, u"Pag. n. 1"_s}));
        QCOMPARE(labels.mid(7, 2), (QStringList{u"Pag. n. 7"_s, u"PAG. N. 12"_s}));
        QCOMPARE(labels.back(), u"PAG. N. 23"_s);
        QCOMPARE(catalog(*m_file)[u"/Lang"_s], u"u:it-IT"_s);
        QCOMPARE(catalog(*m_file)[u"/ViewerPreferences"_s][u"/DisplayDocTitle"_s], true);
    }

    void clauses_data()
    {
        const auto row = columns<Clause>("holds");
        row("6.1.2 header and comment", [](const PdfFile& file) {
            const QByteArray comment = file.bytes.mid(9, 5);
            return file.bytes.startsWith("%PDF-1.4\n%") &&
                   std::ranges::all_of(comment.mid(1),
                                       [](char c) { return static_cast<unsigned char>(c) > 127; });
        });
        row("6.1.3 identified, not encrypted", [](const PdfFile& file) {
            return trailer(file)[u"/ID"_s].toArray().size() == 2 &&
                   hasNone(file, {u"/Encrypt"_s}) && file.bytes.endsWith("%%EOF\n");
        });
        row("6.1.4 references in a table", [](const PdfFile& file) {
            return file.bytes.contains("\nxref\n0 ") &&
                   !file.entries.contains(u"/Type"_s, u"/XRef"_s) &&
                   !file.entries.contains(u"/Type"_s, u"/ObjStm"_s);
        });
        row("6.1.7 streams", [](const PdfFile& file) {
            return file.bytes.count("\nendstream\n") == file.bytes.count("endstream") &&
                   hasNone(file, {u"/F"_s, u"/FFilter"_s, u"/FDecodeParms"_s});
        });
        row("6.1.10 filters", [](const PdfFile& file) {
            return hasOnly(file, u"/Filter"_s, {u"/FlateDecode"_s, u"/DCTDecode"_s});
        });
        row("6.1.11 no files within", [](const PdfFile& file) {
            return hasNone(file, {u"/EF"_s, u"/EmbeddedFiles"_s});
        });
        row("6.1.13 no layers",
            [](const PdfFile& file) { return hasNone(file, {u"/OCProperties"_s}); });
        row("6.2.2 output intent", hasOutputIntent);
        row("6.2.4 pictures", [](const PdfFile& file) {
            return hasNone(file, {u"/Alternates"_s, u"/OPI"_s}) &&
                   hasOnly(file, u"/Interpolate"_s, {false});
        });
        row("6.2.5 forms and programs", [](const PdfFile& file) {
            return hasNone(file, {u"/PS"_s, u"/Ref"_s, u"/Subtype2"_s});
        });
        row("6.2.8 graphics states", [](const PdfFile& file) {
            return hasNone(file, {u"/TR"_s, u"/TR2"_s, u"/HTP"_s});
        });
        row("6.3 fonts", fontsAreEmbedded);
        row("6.4 no transparency", [](const PdfFile& file) {
            return hasNone(file, {u"/Group"_s}) && hasOnly(file, u"/SMask"_s, {u"/None"_s}) &&
                   hasOnly(file, u"/CA"_s, {1}) && hasOnly(file, u"/ca"_s, {1}) &&
                   hasOnly(file, u"/BM"_s, {u"/Normal"_s});
        });
        row("6.5 no annotations",
            [](const PdfFile& file) { return hasNone(file, {u"/Annots"_s}); });
        row("6.6 no actions", [](const PdfFile& file) {
            return hasNone(file, {u"/A"_s, u"/AA"_s, u"/OpenAction"_s, u"/JS"_s, u"/JavaScript"_s});
        });
        row("6.7.2 metadata in plain text", [](const PdfFile& file) {
            const QJsonValue stream = file.object(catalog(file)[u"/Metadata"_s]);
            return stream[u"/Subtype"_s] == u"/XML"_s && !stream.toObject().contains(u"/Filter"_s);
        });
        row("6.7.3 information equals metadata", infoEqualsMetadata);
        row("6.7.11 part and conformance", [](const PdfFile& file) {
            const auto said = metadata(file);
            return said[u"pdfaid:part"_s] == u"1" && said[u"pdfaid:conformance"_s] == u"B";
        });
        row("6.9 no forms", [](const PdfFile& file) { return hasNone(file, {u"/AcroForm"_s}); });
    }

    void clauses()
    {
        QFETCH(Clause, holds);
        QVERIFY(holds(*m_file));
    }
};

ZELTO_TEST(TestPdfArchive)
#include "tst_pdf_archive.moc"
