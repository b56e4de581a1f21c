// SPDX-License-Identifier: GPL-3.0-or-later
// What the fuzz targets share.
#pragma once

#include "text/literals.h"

#include <QDir>
#include <QFile>

#include <cstdint>
#include <cstdlib>
#include <string_view>

/// One run on one input, called by libFuzzer.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace zelto::fuzz {

/// Ends the program unless the condition holds; the fuzzer reports input and place.
inline void require(bool condition)
{
    if (!condition)
        std::abort();
}

inline std::string_view bytesOf(const std::uint8_t* data, std::size_t size)
{
    return {reinterpret_cast<const char*>(data), size};
}

/// Where a QTemporaryDir goes: in memory, as the disk would be the slowest part of a run.
inline QString folderTemplate()
{
    const QString memory = u"/dev/shm"_s;
    return (QFile::exists(memory) ? memory : QDir::tempPath()) + u"/zelto-XXXXXX"_s;
}

inline void writeFile(const QString& path, std::string_view bytes)
{
    QFile file(path);
    require(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    require(file.write(bytes.data(), static_cast<qint64>(bytes.size())) >= 0);
}

/// Malformed UTF-8 becomes replacement characters.
inline QString textOf(std::string_view bytes)
{
    return QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

/// Takes up to count bytes off the front.
inline std::string_view take(std::string_view& bytes, std::size_t count)
{
    const std::string_view front = bytes.substr(0, count);
    bytes.remove_prefix(front.size());
    return front;
}

/// Takes one byte off the front, 0 when there is none.
inline int takeByte(std::string_view& bytes)
{
    const std::string_view front = take(bytes, 1);
    return front.empty() ? 0 : static_cast<unsigned char>(front.front());
}

} // namespace zelto::fuzz
