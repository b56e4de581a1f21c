// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/whole_report.h"

#include "calc/job_loader.h"
#include "reports/print_sequence.h"

#include <QFileInfo>

#include <utility>

namespace zelto::bench {

namespace {

class Nobody : public store::StatusLine
{
public:
    void SetStatus(const QString& /*text*/, bool /*busy*/) override {}
};

calc::ModelloLavoro load(const QString& jobPath)
{
    store::Database job = store::Database::openCopyInMemory(jobPath);
    return calc::CaricaLavoro(job);
}

} // namespace

WholeReport::WholeReport(const QString& jobPath, QString folder)
    : m_jobPath(jobPath), m_folder(std::move(folder)), m_modello(load(jobPath)),
      m_engine(m_folder, text::DecimalSeparators{})
{
    record();
}

void WholeReport::record()
{
    Nobody nobody;
    const calc::LavoroScritto scritto; // no section of these looks at it
    const reports::ReportContext context{.modello = m_modello,
                                         .scritto = scritto,
                                         .jobPath = m_jobPath,
                                         .outputFolder = m_folder,
                                         .engine = m_engine,
                                         .status = nobody};
    m_engine.BeginDocument();
    reports::stampaDocumento(context, reports::sectionWords(&reports::Section::isUsual),
                             reports::OpzioniCalcolo());
    m_engine.EndDocument();
}

void WholeReport::printOn(print::Surface& surface)
{
    m_engine.setSurface(&surface);
    m_engine.PrintDocument(1, m_engine.pageCount());
    m_engine.setSurface(nullptr);
}

int WholeReport::fullestPage() const
{
    int fullest = 0;
    qint64 most = 0;
    for (int page = 0; page < m_engine.pageCount(); ++page) {
        const qint64 size = QFileInfo(print::pageFilePath(m_folder, page)).size();
        if (size > most) {
            most = size;
            fullest = page + 1;
        }
    }
    return fullest;
}

} // namespace zelto::bench
