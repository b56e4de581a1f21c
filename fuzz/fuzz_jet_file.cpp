// SPDX-License-Identifier: GPL-3.0-or-later
// Reading every table of a database of the Windows edition's engine, whatever its bytes are, and
// converting some as jobs.
#include "calc/job_loader.h"
#include "fuzz_input.h"
#include "store/files/database_error.h"
#include "store/jet/conversion.h"
#include "store/jet/table.h"

#include <QTemporaryDir>

#include <algorithm>
#include <random>
#include <span>

using namespace zelto;
using namespace zelto::fuzz;

namespace {

void readTable(const store::jet::JetFile& file, std::uint32_t definitionPage)
{
    const store::jet::Table table(file, definitionPage);
    int visited = 0;
    const auto counts = table.forEachRow([&](const std::vector<store::jet::Field>& fields) {
        require(fields.size() == table.columns().size());
        ++visited;
    });
    require(counts.read == visited);
}

void readAll(const QString& path)
{
    try {
        const store::jet::JetFile file(path);
        for (const store::jet::TableEntry& entry : store::jet::userTables(file))
            readTable(file, entry.definitionPage);
    } catch (const store::DatabaseError& error) {
        require(!error.description().isEmpty());
    } catch (const store::jet::BadBytes&) {
        return;
    }
}

/// Whole, and what the loader takes or explains; or not at all.
void convert(const QString& path)
{
    const QString target = store::jet::convertedPath(path);
    QFile::remove(target);
    bool whole = false;
    try {
        const auto report = store::jet::convertJob(path, target, [&](store::Database& job) {
            (void)calc::CaricaLavoro(job);
            whole = true;
        });
        require(!report.text().isEmpty());
    } catch (const text::Error& error) {
        require(!error.description().isEmpty());
    }
    require(QFile::exists(target) == whole);
}

constexpr std::size_t HeaderSize = 0x98;

std::span<std::uint8_t> pageOf(std::span<std::uint8_t> bytes, std::size_t number)
{
    const std::size_t size = bytes[0x14] == 0 ? 2048 : 4096;
    const std::size_t count = bytes.size() / size;
    return count < 2 ? bytes.subspan(0, 0) : bytes.subspan(size * (1 + number % (count - 1)), size);
}

/// As damage comes: bits that flipped, pages that are empty, swapped or missing.
std::size_t damage(std::span<std::uint8_t> bytes, std::minstd_rand& chance)
{
    const std::span<std::uint8_t> page = pageOf(bytes, chance());
    if (page.empty())
        return bytes.size();
    switch (chance() % 8) {
    case 0:
        std::ranges::fill(page, std::uint8_t{0});
        break;
    case 1: {
        const std::span<std::uint8_t> other = pageOf(bytes, chance());
        if (other.data() != page.data())
            std::ranges::swap_ranges(page, other);
        break;
    }
    case 2:
        return HeaderSize + chance() % (bytes.size() - HeaderSize);
    case 3: // a slot, a length, a pointer at the head of the page
        page[chance() % 128] = static_cast<std::uint8_t>(chance());
        break;
    default:
        for (unsigned flips = 1 + chance() % 8; flips > 0; --flips)
            page[chance() % page.size()] ^= static_cast<std::uint8_t>(1U << chance() % 8);
    }
    return bytes.size();
}

} // namespace

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t limit);

/// Without its header a file is refused before anything is read.
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t limit, unsigned seed)
{
    std::minstd_rand chance(seed);
    const bool hasHeader =
        size > 2 * HeaderSize && bytesOf(data, size).substr(4, 12) == "Standard Jet";
    return hasHeader && chance() % 16 != 0 ? damage(std::span(data, size), chance)
                                           : LLVMFuzzerMutate(data, size, limit);
}

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const QTemporaryDir folder(folderTemplate());
    static const QString path = folder.filePath(u"VECCHIO.ZLT"_s);
    const std::string_view bytes = bytesOf(data, size);
    writeFile(path, bytes);
    readAll(path);
    // Writing takes many times as long as reading; an input is always treated alike.
    if (std::hash<std::string_view>()(bytes) % 4 == 0)
        convert(path);
    return 0;
}
