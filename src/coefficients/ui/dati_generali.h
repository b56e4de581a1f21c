// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "calc/job_check.h"
#include "coefficients/job_texts.h"
#include "widgets/edit_dialog.h"

#include <vector>

class QTabWidget;

namespace zelto::widgets {
class TypedLine;
class TypedText;
} // namespace zelto::widgets

namespace zelto::coefficients {

/// The screen "Dati generali": description, notes, date and report of a job, the names of its
/// special tables and its codes of staircases.
class DatiGenerali : public widgets::EditDialog
{
    Q_OBJECT

public:
    /// Throws DatabaseError when the job cannot be read. All of it outlives the screen.
    DatiGenerali(store::Database& lavoro, widgets::Dialogs& dialogs, store::Settings& settings,
                 QWidget* parent = nullptr);

    /// Goes to a field, the name of a special table or the row of a staircase.
    void goTo(const calc::Posto& posto);

protected:
    bool finishTyping() override;
    bool store() override;

private:
    /// How a field is entered: in one line or in several.
    struct Input
    {
        QString field;
        widgets::TypedLine* line = nullptr;
        widgets::TypedText* lines = nullptr;
    };

    void goTo(const QString& field);
    QWidget* buildPage(const QString& page);
    QWidget* addLine(const QString& field, widgets::FieldKind kind, int longest);
    QWidget* addText(const QString& field, int longest);
    void showTexts();
    void remarkDate(const widgets::TypedLine& date);
    void remarkCodes();

    store::Database& m_lavoro;
    JobTexts m_loaded;
    std::vector<Input> m_inputs;
    QTabWidget* m_tabs;
};

} // namespace zelto::coefficients
