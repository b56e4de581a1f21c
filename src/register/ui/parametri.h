// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "register/register.h"
#include "register/register_lists.h"

#include <QWidget>

#include <functional>
#include <memory>

class QAction;
class QLabel;
class QSplitter;
class QStatusBar;
class QTabWidget;
class QToolBar;

namespace zelto::store {
class Database;
class Settings;
class UserInterface;
} // namespace zelto::store

namespace zelto::widgets {
class ContextMenu;
struct CellChange;
} // namespace zelto::widgets

namespace zelto::registro {

class Navig;
class RoomList;
class UnitDetail;
class UnitFigures;
class UnitList;

/// What the parameters screen works with; all of it outlives the screen.
struct ParametriContext
{
    store::Database& lavoro;
    store::Settings& settings;
    store::UserInterface& user;
    widgets::ContextMenu& menu;
};

/// The parameters screen "Parametri per millesimi": tree, unit grid, unit fields and room grid over
/// the open job. Every change is stored at once and can be undone while the screen is open.
class Parametri : public QWidget
{
    Q_OBJECT

public:
    /// Throws DatabaseError when the job cannot be read.
    Parametri(const ParametriContext& context, std::unique_ptr<UnitFigures> figures,
              QWidget* parent = nullptr);
    ~Parametri() override;

    /// The job's coefficients or general data may have changed: figures and marks follow, lists
    /// stay as they were when the screen was opened.
    void refreshFigures();

signals:
    void calculatorRequested();
    // Everything typed has been stored.
    void millesimiRequested();
    void ripartoRequested();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    // Building
    void buildToolbar();
    void addScreen(const QString& key, const QString& iconName, const QString& caption,
                   const QString& hint, const QString& shortcut, void (Parametri::*request)());
    void buildPanels();
    void buildStatusBar();
    void connectUnits();
    void connectRooms();
    QAction* addButton(const QString& key, const QString& iconName, const QString& caption,
                       const QString& hint);

    /// Stores what is still being typed; false when a text must not stay as it is.
    bool finishTyping();

    // Showing what is stored
    /// What cannot be read is reported, and the views stay as they are.
    void reading(const std::function<void()>& read);
    void ElencoUI();
    void AggiornaAlbero2();
    void DatiVani(int unit);
    void showUnit(int unit);
    void showRooms();
    void showFigures();
    void markUnit(int row);
    void markRooms();

    // Storing what the user does
    using Operation = std::function<RegisterChange()>;
    /// Whether texts that are empty now show as in a tree built anew, or as "-".
    enum class Nodes { Patched, Rebuilt };
    /// Stores and shows; what the job refuses is reported, and the screen shows what is stored.
    bool perform(const Operation& operation, Nodes nodes = Nodes::Patched);
    void storeUnitCells(const QList<widgets::CellChange>& changes);
    void storeRoomCells(const QList<widgets::CellChange>& changes);
    void storeUnitText(int unit, int field, const QString& text);
    void storeFlag(int unit, int table, bool on);
    [[nodiscard]] QString flagsIn(int row) const;

    // The commands of the two grids
    void unitMenu();
    void roomMenu();
    void addUnit();
    void deleteUnits();
    void duplicateUnits();
    void addRoom();
    void deleteRooms();
    void duplicateRooms();
    [[nodiscard]] QList<int> selectedUnits() const;
    [[nodiscard]] QList<int> selectedPositions() const;
    void undo();
    void redo();
    void updateUndo();

    // Patching the views
    void apply(const RegisterChange& change, Nodes nodes);
    void applyUnit(const RecordChange& change, Nodes nodes);
    void applyRoom(const RecordChange& change, Nodes nodes);
    void keepARow();

    ParametriContext m_context;
    std::unique_ptr<UnitFigures> m_calculation;
    Register m_register;
    RegisterLists m_lists;
    int m_unit = 0;        ///< the one whose rooms are shown; 0 for none
    bool m_loaded = false; ///< the figures may be shown
    bool m_busy = false;   ///< views are being patched: what they report is no wish of the user
    QToolBar* m_toolbar;
    QAction* m_undo = nullptr;
    QAction* m_redo = nullptr;
    QSplitter* m_splitter;
    Navig* m_navig;
    QTabWidget* m_tabs;
    UnitList* m_elenco;
    UnitDetail* m_dettaglio;
    RoomList* m_vani;
    QStatusBar* m_status;
    QLabel* m_figures;
};

} // namespace zelto::registro
