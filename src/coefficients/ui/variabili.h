// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "coefficients/job_texts.h"
#include "widgets/edit_dialog.h"

#include <QStringList>

class QPlainTextEdit;
class QTabBar;

namespace zelto::store {} // namespace zelto::store

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
    void store() override;

private:
    QWidget* buildContents();
    void showGroup(int group);
    void keepGroup();
    void remarkLength();

    store::Database& m_lavoro;
    QStringList m_descriptions;
    JobTexts m_loaded;
    JobTexts m_groups;
    int m_group = 1; ///< the one in the grid
    QTabBar* m_tabs;
    QPlainTextEdit* m_description;
};

} // namespace zelto::coefficients
