// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QToolBar>

namespace zelto::shell {

/// The toolbar "Toolbar1": one button for each editing screen, addressed by the screen's key
/// ("DatiGenerali", "Variabili", "Parametri").
class Toolbar : public QToolBar
{
    Q_OBJECT

public:
    explicit Toolbar(QWidget* parent = nullptr);

signals:
    /// The user wants the screen of the key.
    void chosen(const QString& key);

private:
    void addButton(const QString& key, const QString& caption, const QString& hint,
                   const QString& iconName, const QString& shortcut);
};

} // namespace zelto::shell
