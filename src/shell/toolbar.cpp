// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/toolbar.h"

#include "shell/icons.h"

#include <QAction>

namespace zelto::shell {

Toolbar::Toolbar(QWidget* parent) : QToolBar(QStringLiteral("Barra degli strumenti"), parent)
{
    setObjectName(QStringLiteral("Toolbar1"));
    setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    // Moved away or hidden, it would be hard to find again.
    setMovable(false);
    toggleViewAction()->setVisible(false);
    addButton(QStringLiteral("DatiGenerali"), QStringLiteral("Dati generali"),
              QStringLiteral("Dati generali e relazione del lavoro"),
              QStringLiteral("dati_generali"), QStringLiteral("Ctrl+1"));
    addButton(QStringLiteral("Variabili"), QStringLiteral("Variabili"),
              QStringLiteral("Coefficienti del lavoro"), QStringLiteral("variabili"),
              QStringLiteral("Ctrl+2"));
    addButton(QStringLiteral("Parametri"), QStringLiteral("Parametri"),
              QStringLiteral("Unità immobiliari e vani del lavoro"), QStringLiteral("parametri"),
              QStringLiteral("Ctrl+3"));
}

void Toolbar::addButton(const QString& key, const QString& caption, const QString& hint,
                        const QString& iconName, const QString& shortcut)
{
    QAction* button = addAction(icon(iconName), caption);
    button->setObjectName(key);
    button->setShortcut(QKeySequence(shortcut));
    const QString hintWithKeys = QStringLiteral("%1 (%2)").arg(hint, shortcut);
    button->setToolTip(hintWithKeys);
    button->setStatusTip(hintWithKeys);
    connect(button, &QAction::triggered, this, [this, key] { emit chosen(key); });
}

} // namespace zelto::shell
