// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/page_reader.h"

#include "print/print_error.h"
#include "print/record.h"
#include "text/system_reason.h"

#include <algorithm>

namespace zelto::print {

PageReader::PageReader(QIODevice& device) : m_device(device), m_buffer(2 * MaxRecordLength) {}

std::string_view PageReader::pending() const
{
    return {m_buffer.data() + m_begin, m_end - m_begin};
}

std::optional<std::string_view> PageReader::nextLine()
{
    if (m_lineCut)
        skipRestOfLine();
    std::size_t length = pending().find('\n');
    while (length == std::string_view::npos && pending().size() <= MaxRecordLength && readMore())
        length = pending().find('\n');
    if (pending().empty())
        return std::nullopt;

    const std::string_view line = pending().substr(0, std::min(length, MaxRecordLength));
    m_lineCut = length > MaxRecordLength; // or there is no end at all
    m_begin += m_lineCut ? line.size() : length + 1;
    return line.ends_with('\r') ? line.substr(0, line.size() - 1) : line;
}

bool PageReader::readMore()
{
    std::copy(m_buffer.begin() + static_cast<std::ptrdiff_t>(m_begin),
              m_buffer.begin() + static_cast<std::ptrdiff_t>(m_end), m_buffer.begin());
    m_end -= m_begin;
    m_begin = 0;
    const qint64 count =
        m_device.read(m_buffer.data() + m_end, static_cast<qint64>(m_buffer.size() - m_end));
    if (count < 0)
        throw PrintError(
            PrintErrorNumber::DeviceFailed,
            u"Impossibile leggere il file di pagina: %1."_s.arg(text::systemReason(m_device)));
    m_end += static_cast<std::size_t>(count);
    return count > 0;
}

void PageReader::skipRestOfLine()
{
    m_lineCut = false;
    std::size_t length = pending().find('\n');
    while (length == std::string_view::npos) {
        m_begin = m_end;
        if (!readMore())
            return;
        length = pending().find('\n');
    }
    m_begin += length + 1;
}

} // namespace zelto::print
