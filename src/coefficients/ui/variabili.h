// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "coefficients/coefficient_groups.h"
#include "widgets/edit_dialog.h"

class QPlainTextEdit;
class QTabBar;

namespace zelto::store {} // namespace zelto::store

namespace zelto::widgets {
class Grid;
} // namespace zelto::widgets

namespace zelto::coefficients {

/// The screen "Dettaglio variabili": the lists of the six coefficients, one tab each.
class Variabili : public widgets::EditDialog
{
    Q_OBJECT

public:
    /// Throws DatabaseError when the job cannot be read. All of it outlives the
    /// screen.
    Variabili(store::Database& lavoro, const QStringList& descriptions, widgets::Dialogs& dialogs,
              store::Settings& settings, QWidget* parent = nullptr);

protected:
    bool finishTyping() override;
    void store() override;
    void saveSettings() override;

private:
    QWidget* buildContents();
    void buildGrid();
    void switchTo(int group);
    void showGroup(int group);
    void keepGroup();
    void remarkLength();

    store::Database& m_lavoro;
    QStringList m_descriptions;
    GroupTexts m_loaded;
    GroupTexts m_groups;
    int m_group = 1; ///< the one in the grid
    QTabBar* m_tabs;
    widgets::Grid* m_lavori = nullptr;
    QPlainTextEdit* m_text1;
};

} // namespace zelto::coefficients
