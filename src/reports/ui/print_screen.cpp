// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/ui/print_screen.h"

#include "calc/calc_error.h"
#include "calc/job_loader.h"
#include "print/complete_file.h"
#include "print/print_error.h"
#include "print/ui/frm_preview.h"
#include "reports/table_export.h"
#include "store/main_window_services.h"

#include <QCheckBox>
#include <QDir>
#include <QFileInfo>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>

#include <utility>

namespace zelto::reports {

namespace {

/// The folder of the CSV files beside the workbook.
QString csvFolder(const QString& workbook)
{
    const QFileInfo file(workbook);
    return file.dir().filePath(file.completeBaseName() + u" CSV"_s);
}

} // namespace

PrintScreen::PrintScreen(const QString& name, const QString& caption, Documento documento,
                         const StampaContext& context, QWidget* parent)
    : QDialog(parent), m_context(context), m_documento(std::move(documento)),
      m_modello(calc::CaricaLavoro(context.lavoro)), m_layout(new QVBoxLayout(this))
{
    setObjectName(name);
    setWindowTitle(caption);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
}

void PrintScreen::setContents(QWidget* contents)
{
    m_layout->addWidget(contents);
    m_layout->addWidget(buildSections());
    setSezioni({});
    m_layout->addStretch(1);
    m_layout->addLayout(buildButtons());
}

QWidget* PrintScreen::buildSections()
{
    auto* frame = new QGroupBox(u"Opzioni di stampa"_s);
    auto* row = new QHBoxLayout(frame);
    const std::array captions{u" Prima pagina"_s, u" Relazione"_s, u" Calcolo"_s};
    for (std::size_t i = 0; i < m_sezioni.size(); ++i) {
        m_sezioni[i] = new QCheckBox(captions[i]);
        m_sezioni[i]->setObjectName(u"Sezione%1"_s.arg(i));
        row->addWidget(m_sezioni[i]);
    }
    row->addStretch(1);
    return frame;
}

QHBoxLayout* PrintScreen::buildButtons()
{
    auto* row = new QHBoxLayout;
    addButton(*row, u"Anteprima"_s, u"&Anteprima"_s, &PrintScreen::anteprima)->setDefault(true);
    addButton(*row, u"Stampa"_s, u"&Stampa"_s, &PrintScreen::stampa);
    addButton(*row, u"Esporta"_s, u"&Esporta tabelle ..."_s, &PrintScreen::esportaTabelle);
    row->addStretch(1);
    addButton(*row, u"Chiudi"_s, u"&Chiudi"_s, &PrintScreen::reject);
    return row;
}

QPushButton* PrintScreen::addButton(QHBoxLayout& row, const QString& name, const QString& caption,
                                    void (PrintScreen::*action)()) const
{
    auto* button = new QPushButton(caption);
    button->setObjectName(name);
    connect(button, &QPushButton::clicked, this, action);
    row.addWidget(button);
    return button;
}

SezioniStampa PrintScreen::sezioni() const
{
    return {.primaPagina = m_sezioni[0]->isChecked(),
            .relazione = m_sezioni[1]->isChecked(),
            .calcolo = m_sezioni[2]->isChecked()};
}

void PrintScreen::setSezioni(const SezioniStampa& sezioni)
{
    m_sezioni[0]->setChecked(sezioni.primaPagina);
    m_sezioni[1]->setChecked(sezioni.relazione);
    m_sezioni[2]->setChecked(sezioni.calcolo);
}

QString PrintScreen::proposedPath(const QString& extension) const
{
    const QFileInfo job(m_context.jobPath);
    return job.dir().filePath(job.completeBaseName() + m_documento.nameSuffix + extension);
}

print::DocumentData PrintScreen::documentData() const
{
    return {.printTitle = printTitle(),
            .info = {.title = documentTitle(m_documento.kind, m_modello),
                     .author = print::userFullName()},
            .pdfPath = proposedPath(u".pdf"_s)};
}

void PrintScreen::draw()
{
    print({.modello = m_modello,
           .jobPath = m_context.jobPath,
           .outputFolder = m_context.outputFolder,
           .engine = m_context.print.engine,
           .user = m_context.print.window});
    m_context.print.engine.EndDocument();
}

/// Paper takes nothing back: what fails does so before anything is drawn on it.
void PrintScreen::rehearse()
{
    m_context.print.engine.setPageSize(m_context.print.printers.pageSize());
    draw();
}

void PrintScreen::record()
{
    print::PrintEngine& engine = m_context.print.engine;
    engine.setPageSize(m_context.print.printers.pageSize());
    engine.BeginDocument();
    draw();
    if (engine.pageCount() == 0)
        throw print::EmptyDocument();
}

void PrintScreen::anteprima()
{
    if (!isReady())
        return;
    if (!reporting([this] { record(); })) {
        m_context.print.engine.DeletePages();
        return;
    }
    m_context.print.engine.setPageNumber(0);
    print::frmPreview(m_context.print, documentData(), this).exec();
    m_context.print.window.SetStatus({}, false);
    accept();
}

void PrintScreen::stampa()
{
    if (!isReady())
        return;
    const auto drawing = [this] { draw(); };
    if (print::PrinterDesk::isInstalled()) {
        reporting([&] {
            rehearse();
            print::drawOnPrinter(m_context.print, printTitle(), drawing);
        });
        return;
    }
    store::MainWindowServices& window = m_context.print.window;
    if (!print::offersPdfInstead(window))
        return;
    const print::DocumentData document = documentData();
    const QString path = print::choosePdfPath(window, document.pdfPath);
    if (path.isEmpty())
        return;
    const bool written =
        reporting([&] { print::drawIntoPdf(m_context.print, path, document.info, drawing); });
    if (written)
        print::tellWritten(window, path);
}

void PrintScreen::esportaTabelle()
{
    if (!isReady())
        return;
    const QString path =
        print::chooseOutputPath(m_context.print.window, u"Esporta tabelle"_s,
                                u"Cartelle di lavoro (*.XLSX)|*.xlsx"_s, proposedPath(u".xlsx"_s));
    if (path.isEmpty())
        return;
    const QString folder = csvFolder(path);
    const bool isFree = !QFileInfo::exists(folder) ||
                        m_context.print.window.confirmLoss(
                            u"La cartella «%1» esiste già.\n\nSostituire i suoi file CSV?"_s.arg(
                                QFileInfo(folder).fileName()));
    if (!isFree)
        return;
    const bool written = reporting([&] { writeTables(path); });
    if (written)
        m_context.print.window.showMessage(
            u"Le tabelle sono state scritte nella cartella di lavoro\n«%1»\n\ne, in "
            u"formato CSV, nella cartella\n«%2»."_s.arg(path, folder));
}

void PrintScreen::writeTables(const QString& path)
{
    const std::vector<TableReport> chosen = tables();
    if (chosen.empty())
        throw calc::CalcError(u"Non c'è nessuna tabella da esportare tra quelle scelte."_s);
    print::makeOwnFolder(csvFolder(path));
    writeWorkbook(print::chosenPath(path), chosen, documentData().info);
    writeCsv(csvFolder(path), chosen);
}

bool PrintScreen::reporting(const std::function<void()>& action)
{
    store::MainWindowServices& window = m_context.print.window;
    QString remark;
    try {
        const store::StatusScope busy(window, m_documento.kind);
        action();
        return true;
    } catch (const calc::CalcError& error) {
        remark = error.description();
    } catch (const print::EmptyDocument& error) {
        remark = error.description();
    } catch (const std::exception& error) {
        window.ReportError(error);
        return false;
    }
    // Something that the user can put right: no failure of the program.
    window.showMessage(remark);
    return false;
}

} // namespace zelto::reports
