// SPDX-License-Identifier: GPL-3.0-or-later
// The temporary files that hold the recorded pages, one each.
#pragma once

#include "print/record.h"

#include <QFile>
#include <QString>

namespace zelto::print {

/// The folder named by the environment variable TEMP, the application's own when that is empty.
[[nodiscard]] QString TempFolder(const QString& applicationFolder);

/// "~VKM", the last four digits of the index (0 and up), ".Tmp".
[[nodiscard]] QString pageFileName(int index);

/// The page file of the index in the folder.
[[nodiscard]] QString pageFilePath(const QString& folder, int index);

/// Removes every page file of the user's own from the folder.
void deletePageFiles(const QString& folder);

/// Whether something bears the name of a page file that is no plain file of the user's own.
[[nodiscard]] bool hasForeignPageFiles(const QString& folder);

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
