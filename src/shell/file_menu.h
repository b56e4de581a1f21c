// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "shell/recent_jobs.h"

#include <QMenu>

#include <functional>
#include <map>

namespace zelto::shell {

/// An entry of the File menu; one that does nothing is a line between others.
struct FileEntry
{
    int index;
    QString caption = {};
    QString hint = {}; ///< on the status line
    std::function<void()> action = {};
    QString iconName = {};
    QString shortcut = {};
};

/// The menu "&File", whose entries go by their index. The recent jobs are 13 to 16, below a line.
class FileMenu : public QMenu
{
public:
    static constexpr int FirstRecent = 13;

    explicit FileMenu(QWidget* parent = nullptr);

    /// Adds the entry at the end.
    QAction& add(const FileEntry& entry);

    [[nodiscard]] QAction& VoceFile(int index) { return *m_entries.at(index); }

    /// Shows the recent jobs that there are.
    void showRecentJobs(const RecentJobs& jobs);

private:
    std::map<int, QAction*> m_entries;
};

} // namespace zelto::shell
