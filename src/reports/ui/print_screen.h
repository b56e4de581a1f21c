// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "calc/modello_lavoro.h"
#include "calc/written_job.h"
#include "print/ui/print_output.h"
#include "reports/print_sequence.h"

#include <QDialog>

#include <utility>
#include <vector>

class QCheckBox;
class QHBoxLayout;
class QPushButton;
class QVBoxLayout;

namespace zelto::store {
class Database;
} // namespace zelto::store

namespace zelto::widgets {
class TypedLine;
} // namespace zelto::widgets

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

signals:
    /// The user wants to see what the check says of the job; the screen is closing.
    void controlloRequested();

protected:
    /// Throws CalcError and DatabaseError when the job cannot be loaded.
    PrintScreen(const QString& name, const QString& caption, const StampaContext& context,
                QWidget* parent);

    /// Puts the screen's own part over the boxes of the sections offered, those named checked at
    /// first, and the buttons; once, at the end of construction.
    void setContents(QWidget* contents, const QStringList& offerte, const QStringList& scelte);

    /// A row with the label and the screen's one field of figures, as wide as so many digits.
    static QHBoxLayout* fieldRow(const QString& caption, widgets::TypedLine& field, int digits);

    /// A hidden widget keeps its place in the layout, so that nothing moves when it comes and goes.
    static void keepPlaceWhenHidden(QWidget& widget);

    [[nodiscard]] const calc::ModelloLavoro& modello() const { return m_modello; }
    /// The words of the chosen sections.
    [[nodiscard]] QStringList sezioni() const;

    /// Whether there is something to do.
    [[nodiscard]] virtual bool isReady() const { return true; }
    [[nodiscard]] virtual OpzioniStampa opzioni() const = 0;

private:
    QWidget* buildSections(const QStringList& offerte, const QStringList& scelte);
    QHBoxLayout* buildButtons();
    QPushButton* addButton(QHBoxLayout& row, const QString& name, const QString& caption,
                           void (PrintScreen::*action)()) const;
    void addRemarks(QHBoxLayout& row);
    [[nodiscard]] QString proposedPath(const QString& extension) const;
    [[nodiscard]] print::DocumentData documentData() const;

    /// Draws the chosen sections: into a recording, on the engine's surface or, without any,
    /// nowhere.
    void draw();
    void record();
    void stampaInPdf();
    void writeTables(const QStringList& paths);

    /// With the hourglass; what goes wrong is told to the user and gives false.
    bool reporting(const std::function<void()>& action);

    StampaContext m_context;
    calc::ModelloLavoro m_modello;
    calc::LavoroScritto m_scritto;                         ///< the same job
    std::vector<std::pair<QString, QCheckBox*>> m_sezioni; ///< by their words
    QVBoxLayout* m_layout;
};

} // namespace zelto::reports
