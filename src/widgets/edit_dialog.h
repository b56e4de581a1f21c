// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

class QLabel;
class QPushButton;
class QVBoxLayout;

namespace zelto::store {
class Settings;
} // namespace zelto::store

namespace zelto::widgets {

class Dialogs;

/// A modal screen on a working copy. Only "Applica" stores it, after a question; closing a changed
/// screen asks as well. What cannot be stored is reported and stays on the screen.
class EditDialog : public QDialog
{
    Q_OBJECT

public:
    [[nodiscard]] bool isChanged() const { return m_changed; }

    /// Esc and "Annulla": closes without storing.
    void reject() override;

protected:
    /// The name is the screen's section in the settings; dialogs and settings outlive the screen.
    EditDialog(const QString& name, const QString& caption, Dialogs& dialogs,
               store::Settings& settings, QWidget* parent);

    /// Puts the screen's own part over the buttons; once, at the end of construction.
    void setContents(QWidget* contents);

    /// Something was typed that is not stored yet.
    void markChanged();

    /// A remark below the contents; empty for none.
    void showRemark(const QString& text);

    [[nodiscard]] Dialogs& dialogs() { return m_dialogs; }
    [[nodiscard]] store::Settings& settings() { return m_settings; }

    /// Takes over what is still being typed; false, with the focus on the field, when a text must
    /// not stay as it is.
    virtual bool finishTyping() = 0;

    /// Throws DatabaseError when the working copy cannot be stored.
    virtual void store() = 0;

    /// The screen is about to close.
    virtual void saveSettings() = 0;

    void closeEvent(QCloseEvent* event) override;

private:
    void addButtons();
    void apply();
    /// Asks and stores; false when it could not be stored.
    bool askAndStore();
    void setChanged(bool changed);

    Dialogs& m_dialogs;
    store::Settings& m_settings;
    QVBoxLayout* m_layout;
    QLabel* m_remark;
    QPushButton* m_applica = nullptr;
    bool m_changed = false;
    bool m_discarded = false;
};

} // namespace zelto::widgets
