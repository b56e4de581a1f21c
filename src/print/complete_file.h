// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/files/new_file.h"

#include <QFile>
#include <QString>

#include <memory>
#include <vector>

namespace zelto::print {

/// An output file. It appears, and what bore its name goes, only when all of it is written. A link
/// is replaced like any other file. All operations throw PrintError naming the file.
class CompleteFile
{
public:
    /// Opens it for writing in a passing folder beside its place.
    explicit CompleteFile(const QString& path);

    /// As above, in the passing folder of another one.
    CompleteFile(const QString& path, const CompleteFile& neighbour);

    /// Where to write; failures are noticed at the end.
    [[nodiscard]] QIODevice& device() { return m_file; }

    /// For those who write by name.
    [[nodiscard]] QString passingPath() const { return m_file.fileName(); }

    /// Writes what is still in memory and closes the file, which stays where it is.
    void finish();

    /// Finishes the file and puts it in its place.
    void commit();

    /// The same with all of them or none.
    static void commitAll(std::vector<std::unique_ptr<CompleteFile>>& files);

private:
    void open();
    void keepPermissions() const;

    std::unique_ptr<store::NewFile> m_newFile;
    QFile m_file;
};

/// Where the output goes that the user gave this name: to the end of his links. Throws PrintError
/// when something is there that is no plain file, such as a device.
[[nodiscard]] QString chosenPath(const QString& path);

/// Makes the folder, and those above it, if it is not there. Throws PrintError.
void makeFolder(const QString& path);

/// The same for a name that the user did not choose: somebody else may have put a link there, which
/// is refused.
void makeOwnFolder(const QString& path);

} // namespace zelto::print
