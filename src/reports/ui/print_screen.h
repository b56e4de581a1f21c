// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "calc/modello_lavoro.h"
#include "print/ui/print_output.h"
#include "reports/print_sequence.h"

#include <QDialog>

#include <array>

class QCheckBox;
class QHBoxLayout;
class QPushButton;
class QVBoxLayout;

namespace zelto::store {
class Database;
} // namespace zelto::store

namespace zelto::reports {

/// What the print screens work with; all of it outlives them.
struct StampaContext
{
    store::Database& lavoro;
    QString jobPath;      ///< full path of the open job
    QString outputFolder; ///< where the text files go
    print::PrintServices print;
};

/// A modal screen that prints sections of the open job: preview, printer, tables for spreadsheets.
/// The job is loaded when the screen opens.
class PrintScreen : public QDialog
{
    Q_OBJECT

public:
    /// Records the chosen sections, shows the preview and closes behind it.
    void anteprima();

    /// Draws the chosen sections on the printer, or into a PDF file if there is none.
    void stampa();

    /// Writes the chosen tables as a workbook, and as CSV files in a folder beside it.
    void esportaTabelle();

protected:
    struct Documento
    {
        QString kind;            ///< in its title
        QString nameSuffix = {}; ///< behind the job's name in the files that are proposed
    };

    /// Throws CalcError and DatabaseError when the job cannot be loaded.
    PrintScreen(const QString& name, const QString& caption, Documento documento,
                const StampaContext& context, QWidget* parent);

    /// Puts the screen's own part over the sections and the buttons; once, at the end of
    /// construction.
    void setContents(QWidget* contents);

    [[nodiscard]] const calc::ModelloLavoro& modello() const { return m_modello; }
    [[nodiscard]] SezioniStampa sezioni() const;
    void setSezioni(const SezioniStampa& sezioni);

    /// Whether there is something to do; takes over what is still being typed.
    virtual bool isReady() = 0;
    virtual void print(const ReportContext& context) = 0;
    [[nodiscard]] virtual std::vector<TableReport> tables() const = 0;
    /// The name of the print job.
    [[nodiscard]] virtual QString printTitle() const = 0;

private:
    QWidget* buildSections();
    QHBoxLayout* buildButtons();
    QPushButton* addButton(QHBoxLayout& row, const QString& name, const QString& caption,
                           void (PrintScreen::*action)()) const;
    [[nodiscard]] QString proposedPath(const QString& extension) const;
    [[nodiscard]] print::DocumentData documentData() const;

    /// Draws all sections.
    void draw();
    void rehearse();
    void record();
    void writeTables(const QString& path);

    /// With the hourglass; what goes wrong is told to the user and gives false.
    bool reporting(const std::function<void()>& action);

    StampaContext m_context;
    Documento m_documento;
    calc::ModelloLavoro m_modello;
    std::array<QCheckBox*, 3> m_sezioni{};
    QVBoxLayout* m_layout;
};

} // namespace zelto::reports
