// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/pdf_file.h"

#include "print/print_error.h"

#include <QIODevice>
#include <qpdf/Pipeline.hh>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFObjectHandle.hh>
#include <qpdf/QPDFWriter.hh>

#include <stdexcept>

namespace zelto::print {

namespace {

using Object = QPDFObjectHandle;
using Pages = std::vector<Object>;

class DevicePipeline : public Pipeline
{
public:
    explicit DevicePipeline(QIODevice& device) : Pipeline("device", nullptr), m_device(device) {}

    void write(const unsigned char* data, size_t length) override
    {
        m_device.write(reinterpret_cast<const char*>(data), static_cast<qint64>(length));
    }
    void finish() override {}

private:
    QIODevice& m_device;
};

Object textObject(const QString& text)
{
    return Object::newUnicodeString(withoutControls(text).toStdString());
}

/// An entry that leads to the top of the page and keeps the viewer's zoom.
Object outlineEntry(QPDF& pdf, const QString& title, Object page)
{
    Object entry = pdf.makeIndirectObject(Object::newDictionary());
    entry.replaceKey("/Title", textObject(title.simplified()));
    entry.replaceKey(
        "/Dest", Object::newArray({page, Object::newName("/XYZ"), Object::newInteger(0),
                                   page.getKey("/MediaBox").getArrayItem(3), Object::newNull()}));
    return entry;
}

void addOutline(QPDF& pdf, const Pages& pages, const PageMarks& marks)
{
    std::vector<Object> entries;
    for (const auto& [page, mark] : marks)
        if (const auto index = static_cast<std::size_t>(page);
            !mark.section.isEmpty() && index < pages.size())
            entries.push_back(outlineEntry(pdf, mark.section, pages[index]));
    if (entries.empty())
        return;
    Object outline = pdf.makeIndirectObject(Object::newDictionary());
    outline.replaceKey("/Type", Object::newName("/Outlines"));
    outline.replaceKey("/First", entries.front());
    outline.replaceKey("/Last", entries.back());
    outline.replaceKey("/Count", Object::newInteger(static_cast<long long>(entries.size())));
    for (std::size_t i = 0; i < entries.size(); ++i) {
        entries[i].replaceKey("/Parent", outline);
        if (i > 0) {
            entries[i].replaceKey("/Prev", entries[i - 1]);
            entries[i - 1].replaceKey("/Next", entries[i]);
        }
    }
    pdf.getRoot().replaceKey("/Outlines", outline);
}

/// Only numbers from 1 on can be counted; others are words.
bool isCounted(const PageLabel& label)
{
    return label.number && *label.number >= 1;
}

/// Whether viewers come from the label before to this one by themselves.
bool follows(const PageLabel& label, const PageLabel& before)
{
    return label.word == before.word &&
           (isCounted(before) ? label.number == *before.number + 1 : label.number == before.number);
}

Object labelObject(const PageLabel& label)
{
    Object dictionary = Object::newDictionary();
    if (isCounted(label)) {
        dictionary.replaceKey("/S", Object::newName("/D"));
        dictionary.replaceKey("/St", Object::newInteger(*label.number));
    }
    dictionary.replaceKey("/P", textObject(isCounted(label) ? label.word : label.text()));
    return dictionary;
}

void addLabels(QPDF& pdf, const Pages& pages, const PageMarks& marks)
{
    if (marks.empty())
        return;
    Object numbers = Object::newArray();
    PageLabel before;
    const auto count = static_cast<int>(pages.size());
    for (int page = 0; page < count; ++page) {
        const auto mark = marks.find(page);
        const PageLabel label = mark != marks.end() ? mark->second.label : PageLabel();
        if (page == 0 || !follows(label, before)) {
            numbers.appendItem(Object::newInteger(page));
            numbers.appendItem(labelObject(label));
        }
        before = label;
    }
    Object labels = Object::newDictionary();
    labels.replaceKey("/Nums", numbers);
    pdf.getRoot().replaceKey("/PageLabels", labels);
}

/// Of a font in part the writer has the descriptor alone say so; to readers all of its names are
/// one.
void nameFonts(QPDF& pdf)
{
    for (Object& font : pdf.getAllObjects()) {
        if (!font.isDictionaryOfType("/Font") || !font.hasKey("/DescendantFonts"))
            continue;
        Object descendant = font.getKey("/DescendantFonts").getArrayItem(0);
        const Object name = descendant.getKey("/FontDescriptor").getKey("/FontName");
        font.replaceKey("/BaseFont", name);
        descendant.replaceKey("/BaseFont", name);
    }
}

void addInfo(QPDF& pdf, const PdfInfo& info, const QDateTime& made)
{
    Object dictionary = Object::newDictionary();
    for (const auto& [key, text] : pdfInfoEntries(info, made))
        dictionary.replaceKey(key, textObject(text));
    pdf.getTrailer().replaceKey("/Info", pdf.makeIndirectObject(dictionary));
    Object preferences = Object::newDictionary();
    preferences.replaceKey("/DisplayDocTitle", Object::newBool(true));
    Object root = pdf.getRoot();
    root.replaceKey("/ViewerPreferences", preferences);
    root.replaceKey("/Lang", Object::newString("it-IT"));
}

} // namespace

void writePdf(const QByteArray& drawn, QIODevice& device, const PdfInfo& info,
              const QDateTime& made, const PageMarks& marks)
try {
    QPDF pdf;
    pdf.setSuppressWarnings(true);
    pdf.setAttemptRecovery(false);
    pdf.processMemoryFile("PDF", drawn.constData(), static_cast<size_t>(drawn.size()));
    Pages pages = pdf.getAllPages();
    for (Object& page : pages)
        page.removeKey("/Annots"); // there are none
    nameFonts(pdf);
    addInfo(pdf, info, made);
    addOutline(pdf, pages, marks);
    addLabels(pdf, pages, marks);

    DevicePipeline output(device);
    QPDFWriter writer(pdf);
    writer.setOutputPipeline(&output);
    writer.setObjectStreamMode(qpdf_o_disable); // PDF 1.4 knows of none
    writer.setNewlineBeforeEndstream(true);     // ISO 19005-1, 6.1.7
    writer.write();
} catch (const std::runtime_error& error) {
    throw PrintError(
        PrintErrorNumber::DeviceFailed,
        u"Impossibile completare il documento PDF (%1)."_s.arg(QString::fromUtf8(error.what())));
}

} // namespace zelto::print
