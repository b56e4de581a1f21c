// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/files/own_file.h"

#include <QString>

#include <optional>

namespace zelto::print {

/// The folder that the page files of one engine go to, for it alone. Whoever comes first has the
/// given folder itself, others a private subfolder "~VKM1", "~VKM2" and so on; so do all if
/// anything but plain files of the user's own bears our names. It is taken at the first recording
/// and given back at the end; what a crashed program left behind goes to the next.
class PageFolder
{
public:
    explicit PageFolder(QString root);
    ~PageFolder();
    PageFolder(const PageFolder&) = delete;
    PageFolder& operator=(const PageFolder&) = delete;

    /// Takes the folder, unless it is taken already, and removes the page files in it. Throws
    /// PrintError when there is none that can be written.
    void claim();

    /// The page file of the index, 0 for the first.
    [[nodiscard]] QString pagePath(int index) const;

    /// Removes the page files, if the folder was ever taken.
    void clear();

private:
    /// Whether the folder is now ours, empty of page files.
    bool take(const QString& folder);
    bool takeSubfolder(int number);
    void giveBack();

    QString m_root;
    QString m_folder; ///< empty until it is taken
    std::optional<store::OwnFile> m_lock;
};

} // namespace zelto::print
