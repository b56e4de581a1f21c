// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/text_output.h"

#include <QDir>

#include <algorithm>

namespace zelto::reports {

namespace {

/// A tab or line break in a text would shift everything behind it.
void appendField(QString& line, const QString& field)
{
    const qsizetype start = line.size();
    line += field;
    const auto shifts = [](QChar c) { return c == u'\t' || c == u'\r' || c == u'\n'; };
    std::replace_if(line.begin() + start, line.end(), shifts, QChar{u' '});
}

} // namespace

TextOutput::TextOutput(const QString& folder, const QString& name)
    : m_file(QDir(folder).filePath(name))
{}

void TextOutput::writeLine(const QStringList& fields)
{
    QString line;
    line.reserve(256); // most lines
    for (const QString& field : fields) {
        if (&field != &fields.front())
            line += u'\t';
        appendField(line, field);
    }
    line += u"\r\n"_s;
    m_file.device().write(line.toUtf8());
}

} // namespace zelto::reports
