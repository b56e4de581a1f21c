// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/toolbar.h"

#include "shell/icons.h"

#include <QAction>

namespace zelto::shell {

Toolbar::Toolbar(QWidget* parent) : QToolBar(u"Barra degli strumenti"_s, parent)
{
    setObjectName(u"Toolbar1"_s);
    setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    // Moved away or hidden, it would be hard to find again.
    setMovable(false);
    toggleViewAction()->setVisible(false);
    addButton(u"DatiGenerali"_s, u"Dati generali"_s, u"Dati generali e relazione del lavoro"_s,
              u"dati_generali"_s, u"Ctrl+1"_s);
    addButton(u"Variabili"_s, u"Variabili"_s, u"Coefficienti del lavoro"_s, u"variabili"_s,
              u"Ctrl+2"_s);
    addButton(u"Parametri"_s, u"Parametri"_s, u"Unità immobiliari e vani del lavoro"_s,
              u"parametri"_s, u"Ctrl+3"_s);
}

void Toolbar::addButton(const QString& key, const QString& caption, const QString& hint,
                        const QString& iconName, const QString& shortcut)
{
    QAction* button = addAction(icon(iconName), caption);
    button->setObjectName(key);
    button->setShortcut(QKeySequence(shortcut));
    const QString hintWithKeys = u"%1 (%2)"_s.arg(hint, shortcut);
    button->setToolTip(hintWithKeys);
    button->setStatusTip(hintWithKeys);
    connect(button, &QAction::triggered, this, [this, key] { emit chosen(key); });
}

} // namespace zelto::shell
