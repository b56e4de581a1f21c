// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/grid.h"

#include <QDialog>

#include <vector>

class QLabel;
class QPushButton;
class QVBoxLayout;

namespace zelto::store {
class Settings;
} // namespace zelto::store

namespace zelto::widgets {

class Dialogs;

/// A modal screen with a grid on a working copy. Only "Applica" stores it, after a question;
/// closing a changed screen asks as well. What cannot be stored is reported and stays on the
/// screen.
class EditDialog : public QDialog
{
    Q_OBJECT

public:
    /// Esc and "Annulla": closes without storing.
    void reject() override;

signals:
    /// The job has changed.
    void stored();

protected:
    struct Screen
    {
        QString name; ///< also its section in the settings
        QString caption;
        std::vector<GridColumn> columns;
        QString widthKey; ///< what the keys of the columns' widths begin with
    };

    /// Dialogs and settings outlive the screen.
    EditDialog(const Screen& screen, Dialogs& dialogs, store::Settings& settings, QWidget* parent);

    /// Puts the screen's own part over the buttons; once, at the end of construction.
    void setContents(QWidget* contents);

    /// Something was typed that is not stored yet.
    void markChanged();

    /// A remark below the contents; empty for none.
    void showRemark(const QString& text);

    /// The screen's table. Changing it marks the screen as changed.
    [[nodiscard]] Grid& grid() { return m_grid; }

    /// The table with the commands for its rows, to be put into the contents.
    [[nodiscard]] QWidget* buildTable();

    /// Takes over what is still being typed; false, with the focus on the field, when a text must
    /// not stay as it is.
    virtual bool finishTyping();

    /// Stores the working copy; false when the user has thought better of it. Throws DatabaseError
    /// when it cannot be stored.
    virtual bool store() = 0;

    [[nodiscard]] Dialogs& dialogs() { return m_dialogs; }

    void closeEvent(QCloseEvent* event) override;

private:
    void insertRow();
    void removeRows();
    void addButtons();
    /// Asks and stores; false when it was to be stored but was not.
    bool askAndStore();

    Dialogs& m_dialogs;
    store::Settings& m_settings;
    QString m_widthKey;
    Grid m_grid; // without a parent until it has its place, for the order of the Tab key
    QVBoxLayout* m_layout;
    QLabel* m_remark;
    QPushButton* m_applica = nullptr; ///< enabled while something is to be stored
    bool m_discarded = false;
};

} // namespace zelto::widgets
