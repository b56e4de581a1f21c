// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "calc/job_check.h"
#include "register/register_model.h"

#include <QWidget>

class QAction;
class QTabWidget;
class QToolBar;

namespace zelto::store {
class Settings;
} // namespace zelto::store

namespace zelto::widgets {
class ContextMenu;
class Dialogs;
} // namespace zelto::widgets

namespace zelto::registro {

class JobRemarks;
class Navig;
class RegisterStatus;
class RoomList;
class UnitDetail;
class UnitList;

/// What the parameters screen works with; all of it outlives the screen.
struct ParametriContext
{
    store::Database& lavoro;
    store::Settings& settings;
    widgets::Dialogs& dialogs;
    widgets::ContextMenu& menu;
    calc::SullaCarta sullaCarta = {}; ///< for the check of the job
};

/// The parameters screen "Parametri per millesimi": tree, unit grid, unit fields and room grid over
/// the open job. Every change is stored at once and can be undone while the screen is open. Each
/// view shows what the model says and has it store what the user does; the screen itself is about
/// where the user goes.
class Parametri : public QWidget
{
    Q_OBJECT

public:
    /// Throws DatabaseError when the job cannot be read.
    explicit Parametri(const ParametriContext& context, QWidget* parent = nullptr);
    ~Parametri() override;

    /// Stores what is still being typed; false, with the focus on the field, when a text must not
    /// stay as it is.
    bool finishTyping();

    /// The job's coefficients or general data may have changed: lists, tree, marks and figures
    /// follow, while unit, tab, filters and what can be undone stay.
    void refreshLists() { m_model.reload(); }
    /// What can be undone follows rooms that were renamed.
    void followTexts(const coefficients::RoomTexts& texts) { m_model.followTexts(texts); }

    /// The toolbar's actions, so that a panel beside the screen can obey their keys too.
    [[nodiscard]] QList<QAction*> commands() const;

    /// What the check of the job says, from when the screen is painted on.
    [[nodiscard]] const JobRemarks& remarks() const;

    /// Shows the unit, room and field of a remark, and puts the keyboard there; filters that hide
    /// the unit go. A room whose unit is gone cannot be shown, but deleted if the user wants that.
    void goTo(const calc::Posto& posto);

signals:
    void calculatorRequested();
    // Everything typed has been stored.
    void millesimiRequested();
    void ripartoRequested();
    void controlloRequested();

protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    enum Tab { Elenco, Dettaglio, Vani };

    // Building
    void buildToolbar();
    QAction* addButton(const QString& key, const QString& caption, const QString& hint);
    void addScreen(const QString& key, const QString& caption, const QString& hint,
                   const QString& shortcut, void (Parametri::*request)());
    QAction* addHistory(const QString& caption, const QList<QKeySequence>& keys,
                        RegisterChange (RegisterModel::*replayed)());
    void buildPanels();
    void addKeys();
    void followUser();

    void updateHistory();

    // Where the user goes
    void goToUnit(int unit);
    void goToRoom(int unit, int position);
    void goToNeighbour(int places);
    void goTo(const Place& place);
    void offerToDelete(const calc::Posto& orphan);
    void replay(const QAction& button, RegisterChange (RegisterModel::*replayed)());
    [[nodiscard]] Tab tab() const;

    ParametriContext m_context;
    RegisterModel m_model;
    QToolBar* m_toolbar;
    QAction* m_undo = nullptr;
    QAction* m_redo = nullptr;
    Navig* m_navig;
    QTabWidget* m_tabs;
    UnitList* m_elenco;
    UnitDetail* m_dettaglio;
    RoomList* m_vani;
    RegisterStatus* m_status;
};

} // namespace zelto::registro
