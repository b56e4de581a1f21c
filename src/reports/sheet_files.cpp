// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/calc_error.h"
#include "print/pdf_surface.h"
#include "reports/distinct_names.h"
#include "reports/unit_sheets.h"

#include <QDir>

namespace zelto::reports {

namespace {

/// Number and reference in characters that every system takes in the name of a file.
QStringList fileNames(const std::vector<calc::UnitaImmobiliare>& unita)
{
    QStringList texts;
    for (const calc::UnitaImmobiliare& una : unita)
        texts << u"%1 %2"_s.arg(una.RifUI, 3, 10, QChar(u'0'))
                     .arg(una.Riferimento)
                     .replace(u'/', u'-');
    return distinctNames(texts,
                         {.reserved = u"<>:\"/\\|?*", .longest = 60, .fallback = u"Scheda"_s});
}

} // namespace

void writeSheets(const QString& folder, const Schede& schede, const ReportContext& context,
                 const print::PdfInfo& info)
{
    if (schede.unita().empty())
        throw calc::CalcError(u"Non c'è nessuna unità di cui scrivere la scheda."_s);
    print::makeFolder(folder);
    const QStringList names = fileNames(schede.unita());
    std::vector<std::unique_ptr<print::CompleteFile>> files;
    for (std::size_t u = 0; u < schede.unita().size(); ++u) {
        const QString& name = names[static_cast<qsizetype>(u)];
        const QString path = QDir(folder).filePath(name + u".pdf"_s);
        print::PdfSurface pdf(files.empty()
                                  ? std::make_unique<print::CompleteFile>(path)
                                  : std::make_unique<print::CompleteFile>(path, *files.front()),
                              {.title = name + u" - "_s + info.title, .author = info.author});
        const print::DrawingTarget target(context.engine, pdf);
        ReportPage page(context, 1);
        schede.draw(page, u);
        context.engine.EndDocument();
        files.push_back(pdf.finishedFile());
    }
    print::CompleteFile::commitAll(files);
}

} // namespace zelto::reports
