// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/text_output.h"

#include <QDir>

#include <algorithm>
#include <vector>

namespace zelto::reports {

TextOutput::TextOutput(const QString& folder, const QString& name)
    : m_file(QDir(folder).filePath(name))
{}

void TextOutput::writeLine(const QStringList& fields)
{
    std::vector<std::string> utf8(static_cast<std::size_t>(fields.size()));
    std::ranges::transform(fields, utf8.begin(), &QString::toStdString);
    writeLine(utf8);
}

/// A tab or line break in a text would shift everything behind it.
void TextOutput::writeLine(std::span<const std::string> fields)
{
    const auto shifts = [](char c) { return c == '\t' || c == '\r' || c == '\n'; };
    m_line.clear();
    for (const std::string& field : fields) {
        if (&field != &fields.front())
            m_line += '\t';
        const auto start = static_cast<std::ptrdiff_t>(m_line.size());
        m_line += field;
        std::replace_if(m_line.begin() + start, m_line.end(), shifts, ' ');
    }
    m_line += "\r\n";
    m_file.device().write(m_line.data(), static_cast<qint64>(m_line.size()));
}

} // namespace zelto::reports
