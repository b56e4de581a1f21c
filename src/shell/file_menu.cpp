// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/file_menu.h"

#include "widgets/icons.h"
#include "widgets/keys.h"

#include <QKeySequence>

namespace zelto::shell {

FileMenu::FileMenu(QWidget* parent) : QMenu(u"&File"_s, parent)
{
    setObjectName(u"MenuFile"_s);
}

QAction& FileMenu::add(const FileEntry& entry)
{
    auto* action = new QAction(entry.caption, this);
    action->setSeparator(!entry.action);
    action->setStatusTip(entry.hint);
    if (!entry.iconName.isEmpty())
        action->setIcon(widgets::icon(entry.iconName));
    action->setShortcut(QKeySequence(entry.shortcut));
    // Desktops that move such entries elsewhere would leave gaps in the menu.
    action->setMenuRole(QAction::NoRole);
    m_entries.emplace(entry.index, action);
    addAction(action);
    return *action;
}

void FileMenu::showRecentJobs(const RecentJobs& jobs)
{
    bool isAny = false;
    for (int index = FirstRecent; const QString& path : jobs.paths()) {
        const bool isListed = !path.isEmpty();
        isAny = isAny || isListed;
        VoceFile(index).setText(u"&%1 "_s.arg(index - FirstRecent + 1) + widgets::asCaption(path));
        VoceFile(index++).setVisible(isListed);
    }
    VoceFile(FirstRecent - 1).setVisible(isAny);
}

} // namespace zelto::shell
