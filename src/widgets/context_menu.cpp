// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/context_menu.h"

namespace zelto::widgets {

ContextMenu::ContextMenu(QWidget* parent) : QMenu(parent)
{
    setObjectName(u"MnuDxMouse"_s);
    for (int i = 0; i < EntryCount; ++i) {
        QAction* entry = addAction(QString());
        m_entries.at(static_cast<std::size_t>(i)) = entry;
        connect(entry, &QAction::triggered, this, [this, i] { m_menuChoice = QString::number(i); });
    }
    ResetContextMenu();
}

void ContextMenu::ResetContextMenu()
{
    for (QAction* entry : m_entries) {
        entry->setText({});
        entry->setVisible(entry == m_entries.front());
        entry->setEnabled(true);
    }
}

QString ContextMenu::choose(const QPoint& place)
{
    m_menuChoice = u"-1"_s;
    exec(place);
    return m_menuChoice;
}

} // namespace zelto::widgets
