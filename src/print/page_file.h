// SPDX-License-Identifier: GPL-3.0-or-later
// The temporary files that hold the recorded pages, one each.
#pragma once

#include "print/record.h"
#include "store/files/own_file.h"

#include <QFile>
#include <QString>

#include <optional>
#include <utility>

namespace zelto::print {

/// The folder named by the environment variable TEMP, the application's own when that is empty.
[[nodiscard]] QString TempFolder(const QString& applicationFolder);

/// The page file of the index, from 0 to 9999, in the folder: "~VKM0000.Tmp" and so on.
[[nodiscard]] QString pageFilePath(const QString& folder, int index);

/// Removes every page file of the user's own from the folder.
void deletePageFiles(const QString& folder);

/// The folder that the page files of one engine go to, for it alone. Whoever comes first has the
/// given folder itself, others a private subfolder "~VKM1", "~VKM2" and so on; so do all if
/// anything but plain files of the user's own bears our names. It is taken at the first recording
/// and given back at the end; what a crashed program left behind goes to the next.
class PageFolder
{
public:
    explicit PageFolder(QString root) : m_root(std::move(root)) {}
    ~PageFolder();
    PageFolder(const PageFolder&) = delete;
    PageFolder& operator=(const PageFolder&) = delete;

    /// Takes the folder, unless it is taken already, and removes the page files in it. Throws
    /// PrintError when there is none that can be written.
    void claim();

    [[nodiscard]] QString pagePath(int index) const;

    /// Removes the page files, if the folder was ever taken.
    void clear();

private:
    /// Whether the folder is now ours, empty of page files.
    bool take(const QString& folder);
    bool takeSubfolder(int number);

    QString m_root;
    QString m_folder; ///< empty until it is taken
    std::optional<store::OwnFile> m_lock;
};

/// The page file being written. Records gather in memory and go to the file in large blocks. After
/// an error, thrown as PrintError, the file is closed.
class PageFileWriter
{
public:
    explicit PageFileWriter(char decimalSeparator) : m_records(decimalSeparator) {}

    /// Starts the file of the path; one that is there already is replaced.
    void open(const QString& path);

    /// Writes out what is still in memory and closes the file. Returns its length in bytes.
    qint64 close();

    /// Closes the file without what is still in memory.
    void abandon();

    [[nodiscard]] bool isOpen() const { return m_file.isOpen(); }

    template <typename... Fields>
    void write(Opcode opcode, const Fields&... fields)
    {
        m_records.append(opcode, fields...);
        if (m_records.size() >= BlockSize)
            writeOut();
    }

private:
    static constexpr std::size_t BlockSize = 262'144;

    void writeOut();
    [[noreturn]] void fail();

    RecordBuffer m_records;
    QFile m_file;
};

} // namespace zelto::print
