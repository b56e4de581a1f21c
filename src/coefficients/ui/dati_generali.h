// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "coefficients/general_data.h"
#include "widgets/edit_dialog.h"

#include <vector>

class QGridLayout;
class QTabWidget;

namespace zelto::widgets {
class Grid;
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

protected:
    bool finishTyping() override;
    void store() override;
    void saveSettings() override;

private:
    QWidget* buildGenerale();
    QWidget* buildTabelle();
    QWidget* buildScale();
    widgets::TypedLine* addLine(int text, const QString& tag, int maxLength, const QString& name);
    widgets::TypedText* addText(int text, int maxLength, const QString& name);
    void connectGrid();
    void showTexts();
    [[nodiscard]] GeneralTexts shownTexts() const;
    void remarkDate();
    void remarkCodes();

    /// An input of one line or of several; the grid of codes is neither.
    struct Input
    {
        int text;
        widgets::TypedLine* line = nullptr;
        widgets::TypedText* lines = nullptr;
    };

    store::Database& m_lavoro;
    GeneralTexts m_loaded;
    std::vector<Input> m_dati;
    widgets::TypedLine* m_data = nullptr;
    QTabWidget* m_tabs;
    widgets::Grid* m_lavori;
};

} // namespace zelto::coefficients
