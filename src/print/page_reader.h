// SPDX-License-Identifier: GPL-3.0-or-later
// Reading a page file line by line.
#pragma once

#include <QIODevice>

#include <optional>
#include <string_view>
#include <vector>

namespace zelto::print {

/// The lines of a device, in a fixed amount of memory whatever the device holds.
class PageReader
{
public:
    /// The device is open for reading and outlives the reader.
    explicit PageReader(QIODevice& device);

    /// The next line without its end, cut at MaxRecordLength bytes; nothing at the device's end.
    /// The line is good until the next call. Throws PrintError when the device cannot be read.
    std::optional<std::string_view> nextLine();

private:
    [[nodiscard]] std::string_view pending() const;
    bool readMore();
    void skipRestOfLine();

    QIODevice& m_device;
    std::vector<char> m_buffer;
    std::size_t m_begin = 0;
    std::size_t m_end = 0;
    bool m_lineCut = false;
};

} // namespace zelto::print
