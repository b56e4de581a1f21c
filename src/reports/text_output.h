// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "print/complete_file.h"

#include <QStringList>

#include <span>
#include <string>

namespace zelto::reports {

/// A plain copy of printed figures: UTF-8, fields separated by TAB, lines ended by CR LF. An older
/// file is replaced only by a complete one.
class TextOutput
{
public:
    /// Opens the file in the folder; throws PrintError when it cannot be written.
    TextOutput(const QString& folder, const QString& name);

    void writeLine(const QStringList& fields);
    /// The same of fields that are UTF-8 already.
    void writeLine(std::span<const std::string> fields);

    /// Puts the file in its place; throws PrintError when not all of it could be written.
    void commit() { m_file.commit(); }

private:
    print::CompleteFile m_file;
    std::string m_line;
};

} // namespace zelto::reports
