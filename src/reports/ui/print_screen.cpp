// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/ui/print_screen.h"

#include "calc/calc_error.h"
#include "calc/job_check.h"
#include "calc/job_loader.h"
#include "print/complete_file.h"
#include "print/print_error.h"
#include "print/ui/frm_preview.h"
#include "reports/on_paper.h"
#include "reports/table_export.h"
#include "widgets/dialogs.h"
#include "widgets/main_window_services.h"
#include "widgets/typed_line.h"

#include <QCheckBox>
#include <QFileInfo>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace zelto::reports {

namespace {

/// The folder or file of a format beside the chosen file.
QString pathBeside(const QString& chosen, const TableFormat& format)
{
    const QFileInfo file(chosen);
    return file.dir().filePath(file.completeBaseName() + (format.isFolder()
                                                              ? u' ' + format.option.toUpper()
                                                              : format.extension));
}

} // namespace

PrintScreen::PrintScreen(const QString& name, const QString& caption, const StampaContext& context,
                         QWidget* parent)
    : QDialog(parent), m_context(context), m_modello(calc::CaricaLavoro(context.lavoro)),
      m_scritto(calc::LeggiLavoroScritto(context.lavoro)), m_layout(new QVBoxLayout(this))
{
    setObjectName(name);
    setWindowTitle(caption);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
}

void PrintScreen::setContents(QWidget* contents, const QStringList& offerte,
                              const QStringList& scelte)
{
    m_layout->addWidget(contents);
    m_layout->addWidget(buildSections(offerte, scelte));
    m_layout->addStretch(1);
    m_layout->addLayout(buildButtons());
}

QWidget* PrintScreen::buildSections(const QStringList& offerte, const QStringList& scelte)
{
    auto* frame = new QGroupBox(u"Opzioni di stampa"_s);
    auto* row = new QHBoxLayout(frame);
    for (const Section& section : sections()) {
        if (!offerte.contains(section.word))
            continue;
        auto* box = new QCheckBox(section.caption);
        box->setChecked(scelte.contains(section.word));
        box->setObjectName(u"Sezione%1"_s.arg(m_sezioni.size()));
        row->addWidget(box);
        m_sezioni.emplace_back(section.word, box);
    }
    row->addStretch(1);
    return frame;
}

void PrintScreen::keepPlaceWhenHidden(QWidget& widget)
{
    QSizePolicy policy = widget.sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget.setSizePolicy(policy);
}

QHBoxLayout* PrintScreen::fieldRow(const QString& caption, widgets::TypedLine& field, int digits)
{
    field.setObjectName(u"Dati0"_s);
    field.setAccessibleName(caption);
    field.setAlignment(Qt::AlignRight);
    field.setMaximumWidth(field.fontMetrics().horizontalAdvance(u'0') * digits);
    auto* label = new QLabel(caption);
    label->setBuddy(&field);
    auto* row = new QHBoxLayout;
    row->addWidget(label);
    row->addWidget(&field);
    return row;
}

QHBoxLayout* PrintScreen::buildButtons()
{
    auto* row = new QHBoxLayout;
    addButton(*row, u"Anteprima"_s, u"&Anteprima"_s, &PrintScreen::anteprima)->setDefault(true);
    addButton(*row, u"Stampa"_s, u"&Stampa"_s, &PrintScreen::stampa);
    addButton(*row, u"Esporta"_s, u"&Esporta tabelle ..."_s, &PrintScreen::esportaTabelle);
    row->addStretch(1);
    addRemarks(*row);
    addButton(*row, u"Chiudi"_s, u"&Chiudi"_s, &PrintScreen::reject);
    return row;
}

/// What the check finds wrong in the job, where it finds anything.
void PrintScreen::addRemarks(QHBoxLayout& row)
{
    const QString counts =
        calc::conteggio(calc::controlla(m_scritto, sullaCarta()), calc::Gravita::Avviso);
    if (counts.isEmpty())
        return;
    auto* show = new QPushButton(counts + u" - &Mostra"_s);
    show->setObjectName(u"Mostra"_s);
    show->setFlat(true);
    show->setAutoDefault(false);
    show->setToolTip(u"Chiude questa finestra e apre il controllo del lavoro"_s);
    connect(show, &QPushButton::clicked, this, [this] {
        emit controlloRequested();
        reject();
    });
    row.addWidget(show);
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

QStringList PrintScreen::sezioni() const
{
    QStringList chosen;
    for (const auto& [word, box] : m_sezioni)
        if (box->isChecked())
            chosen << word;
    return chosen;
}

QString PrintScreen::proposedPath(const QString& extension) const
{
    const QFileInfo job(m_context.jobPath);
    return job.dir().filePath(job.completeBaseName() + documentKind(opzioni()).nameSuffix +
                              extension);
}

print::DocumentData PrintScreen::documentData() const
{
    return {.printTitle = documentKind(opzioni()).printTitle,
            .info = documentInfo(opzioni(), m_modello),
            .pdfPath = proposedPath(u".pdf"_s)};
}

void PrintScreen::draw()
{
    stampaDocumento({.modello = m_modello,
                     .scritto = m_scritto,
                     .jobPath = m_context.jobPath,
                     .outputFolder = m_context.outputFolder,
                     .engine = m_context.print.engine,
                     .status = m_context.print.window},
                    sezioni(), opzioni());
    m_context.print.engine.EndDocument();
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
    if (!print::PrinterDesk::isInstalled()) {
        stampaInPdf();
        return;
    }
    reporting([this] {
        // Paper takes nothing back: what fails does so before anything is drawn on it.
        m_context.print.engine.setPageSize(m_context.print.printers.pageSize());
        draw();
        print::drawOnPrinter(m_context.print, documentData().printTitle, [this] { draw(); });
    });
}

void PrintScreen::stampaInPdf()
{
    widgets::Dialogs& dialogs = m_context.print.dialogs;
    if (!print::offersPdfInstead(dialogs))
        return;
    const print::DocumentData document = documentData();
    const QString path = print::choosePdfPath(dialogs, document.pdfPath);
    if (!path.isEmpty() && reporting([&] {
            print::drawIntoPdf(m_context.print, path, document.info, [this] { draw(); });
        }))
        print::tellWritten(dialogs, path);
}

void PrintScreen::esportaTabelle()
{
    if (!isReady())
        return;
    widgets::Dialogs& dialogs = m_context.print.dialogs;
    QString path = print::chooseOutputPath(dialogs, u"Esporta tabelle"_s,
                                           u"Cartelle di lavoro (*.XLSX)|*.xlsx"_s,
                                           proposedPath(tableFormats().front().extension));
    if (path.isEmpty())
        return;
    QStringList paths;
    QStringList places;
    for (const TableFormat& format : tableFormats()) {
        if (!paths.isEmpty())
            path = pathBeside(paths.front(), format);
        if (format.isFolder() && QFileInfo::exists(path) &&
            !dialogs.confirmLoss(
                u"La cartella «%1» esiste già.\n\nSostituire i suoi file %2?"_s.arg(
                    QFileInfo(path).fileName(), format.option.toUpper())))
            return;
        paths << path;
        places << u"%1\n«%2»"_s.arg(format.where, path);
    }
    if (reporting([&] { writeTables(paths); }))
        dialogs.showWritten(u"Le tabelle sono state scritte %1."_s.arg(places.join(u"\n\ne, "_s)),
                            paths.front());
}

void PrintScreen::writeTables(const QStringList& paths)
{
    const Tables chosen = tabelleScelte(m_modello, opzioni());
    if (chosen.empty())
        throw calc::CalcError(u"Non c'è nessuna tabella da esportare tra quelle scelte."_s);
    // Folders first: one that cannot be made leaves nothing behind.
    for (qsizetype i = 0; const TableFormat& format : tableFormats())
        if (const QString& path = paths[i++]; format.isFolder())
            print::makeOwnFolder(path);
    for (qsizetype i = 0; const TableFormat& format : tableFormats()) {
        const QString& path = paths[i++];
        format.write(format.isFolder() ? path : print::chosenPath(path), chosen,
                     documentData().info);
    }
}

bool PrintScreen::reporting(const std::function<void()>& action)
{
    widgets::Dialogs& dialogs = m_context.print.dialogs;
    try {
        const widgets::StatusScope busy(m_context.print.window, documentKind(opzioni()).title);
        action();
        return true;
    } catch (const calc::CalcError& error) {
        // Something that the user can put right: no failure of the program.
        dialogs.showMessage(error.description());
    } catch (const print::EmptyDocument& error) {
        dialogs.showMessage(error.description());
    } catch (const std::exception& error) {
        dialogs.ReportError(error);
    }
    return false;
}

} // namespace zelto::reports
