// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "calc/job_check.h"
#include "coefficients/code_renames.h"
#include "coefficients/job_texts.h"
#include "store/job_limits.h"
#include "widgets/edit_dialog.h"

#include <QStringList>

#include <array>
#include <vector>

class QPlainTextEdit;
class QTabBar;

namespace zelto::coefficients {

/// The screen "Dettaglio variabili": the lists of the six coefficients, one tab each.
class Variabili : public widgets::EditDialog
{
    Q_OBJECT

public:
    /// Throws DatabaseError when the job cannot be read. All of it outlives the
    /// screen.
    Variabili(store::Database& lavoro, QStringList descriptions, widgets::Dialogs& dialogs,
              store::Settings& settings, QWidget* parent = nullptr);

    /// Goes to the row of a list.
    void goTo(const calc::Posto& posto);

signals:
    /// Rooms follow their rows.
    void roomsRenamed(const zelto::coefficients::RoomTexts& texts);

protected:
    bool store() override;

private:
    QWidget* buildContents();
    void showGroup(int group);
    void keepGroup();
    void remarkEnd();
    void followRows();
    void countRows();
    [[nodiscard]] std::optional<bool> askWhetherToFollow(const Renames& renames);
    [[nodiscard]] std::optional<Renames> askForRenames();

    store::Database& m_lavoro;
    QStringList m_descriptions;
    JobTexts m_loaded;
    JobTexts m_groups;
    int m_group = 1; ///< the one in the grid
    /// Of each group, which stored row each row was; 0 for those that are new.
    std::array<std::vector<int>, store::Groups> m_formerRows;
    QTabBar* m_tabs;
    QPlainTextEdit* m_description;
};

} // namespace zelto::coefficients
