// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/text_output.h"

#include "print/print_error.h"

#include <QDir>

#include <algorithm>

namespace zelto::reports {

namespace {

[[noreturn]] void fail(const QSaveFile& file)
{
    throw print::PrintError(print::PrintErrorNumber::PathAccess,
                            QStringLiteral("Impossibile scrivere il file"), file);
}

} // namespace

TextOutput::TextOutput(const QString& folder, const QString& name)
    : m_file(QDir(folder).filePath(name))
{
    if (!m_file.open(QIODevice::WriteOnly))
        fail(m_file);
}

void TextOutput::writeLine(const QStringList& fields)
{
    QByteArray line;
    for (const QString& field : fields) {
        if (&field != &fields.front())
            line.append('\t');
        // A tab or line break in a text would shift everything behind it.
        QByteArray bytes = field.toUtf8();
        std::ranges::replace_if(
            bytes, [](char c) { return c == '\t' || c == '\r' || c == '\n'; }, ' ');
        line.append(bytes);
    }
    line.append("\r\n");
    m_file.write(line);
}

void TextOutput::commit()
{
    if (!m_file.commit())
        fail(m_file);
}

} // namespace zelto::reports
