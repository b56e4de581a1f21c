// SPDX-License-Identifier: GPL-3.0-or-later
#include "fuzz_journal.h"

#include "fuzz_input.h"
#include "store/big_endian.h"

#include <algorithm>
#include <array>

namespace zelto::fuzz {

namespace {

constexpr std::string_view Magic("\xd9\xd5\x05\xf9\x20\xa1\x63\xd7", 8);

// Places in a journal's head.
constexpr std::size_t RecordsAt = 8;
constexpr std::size_t SumAt = 12;
constexpr std::size_t PagesAt = 16;
constexpr std::size_t SectorAt = 20;
constexpr std::size_t PageSizeAt = 24;
constexpr std::size_t HeadSize = 28;

std::uint32_t numberAt(std::string_view bytes, std::size_t at)
{
    return static_cast<std::uint32_t>(
        store::numberAt(store::viewOf(bytes), at, sizeof(std::uint32_t)).value_or(0));
}

void setNumber(std::string& bytes, std::size_t at, std::uint32_t number)
{
    for (std::size_t i = 4; i > 0; --i, number >>= 8U)
        bytes[at + i - 1] = static_cast<char>(number & 0xFFU);
}

std::string number(std::uint32_t value)
{
    std::string bytes(4, '\0');
    setNumber(bytes, 0, value);
    return bytes;
}

/// Where the records of pages begin, and how long each is; 0 for a head that makes no sense.
struct Records
{
    std::size_t first = 0;
    std::size_t pageSize = 0;
    std::size_t count = 0;

    [[nodiscard]] std::size_t at(std::size_t record) const
    {
        return first + record * (pageSize + 8);
    }
};

Records recordsOf(std::string_view journal)
{
    if (journal.size() < HeadSize)
        return {};
    const std::size_t sector = numberAt(journal, SectorAt);
    const std::size_t pageSize = numberAt(journal, PageSizeAt);
    if (pageSize < 512 || pageSize > 65536 || sector < HeadSize || sector > journal.size())
        return {};
    return {
        .first = sector, .pageSize = pageSize, .count = (journal.size() - sector) / (pageSize + 8)};
}

/// The sum of every 200th byte of a page, counted from its end.
void putSumsRight(std::string& journal)
{
    const Records records = recordsOf(journal);
    for (std::size_t record = 0; record < records.count; ++record) {
        const std::size_t page = records.at(record) + 4;
        std::uint32_t sum = numberAt(journal, SumAt);
        for (std::size_t i = records.pageSize - 200; i > 0 && i < records.pageSize; i -= 200)
            sum += static_cast<unsigned char>(journal[page + i]);
        setNumber(journal, page + records.pageSize, sum);
    }
}

void changeHead(std::string& journal, std::minstd_rand& chance)
{
    constexpr std::array Places{RecordsAt, PagesAt, SectorAt, PageSizeAt};
    constexpr std::array<std::uint32_t, 9> Values{0,    1,     2,          32,        512,
                                                  4096, 65536, 0x7fffffff, 0xffffffff};
    if (journal.size() >= HeadSize)
        setNumber(journal, Places[chance() % Places.size()], Values[chance() % Values.size()]);
}

void changePage(std::string& journal, std::minstd_rand& chance)
{
    const Records records = recordsOf(journal);
    if (records.count == 0)
        return;
    const std::size_t record = records.at(chance() % records.count);
    // The head of a page, and of the file, decides more than what follows.
    const std::size_t within = chance() % 2 == 0 ? records.pageSize : 128;
    for (unsigned changes = 1 + chance() % 8; changes > 0; --changes)
        journal[record + 4 + chance() % std::min(within, records.pageSize)] =
            static_cast<char>(chance());
    if (chance() % 4 == 0)
        setNumber(journal, record, static_cast<std::uint32_t>(chance() % 64));
}

/// As at the end of a journal that belongs to changes of several files.
void nameFile(std::string& journal, std::minstd_rand& chance)
{
    constexpr std::array<std::string_view, 5> Names{"NOTE.TXT", "../NOTE.TXT", "VICINO.ZLT",
                                                    "./VICINO.ZLT", "LAVORO.ZLT"};
    const std::string_view name = Names[chance() % Names.size()];
    std::uint32_t sum = 0;
    for (const char c : name)
        sum += static_cast<std::uint32_t>(c);
    journal += number(chance() % 2) + std::string(name) +
               number(static_cast<std::uint32_t>(name.size())) + number(sum) + std::string(Magic);
}

void changeJob(std::string& job, std::minstd_rand& chance)
{
    if (!job.empty())
        job[chance() % std::min<std::size_t>(job.size(), 4096)] = static_cast<char>(chance());
}

} // namespace

Parts partsOf(std::string_view input)
{
    const auto length = [&input] {
        std::size_t bytes = 0;
        for (int i = 0; i < 3; ++i)
            bytes = bytes << 8U | static_cast<std::size_t>(takeByte(input));
        return bytes;
    };
    const std::size_t journal = length();
    const std::size_t wal = length();
    Parts parts{.journal = take(input, journal), .wal = take(input, wal), .job = {}};
    parts.job = input;
    return parts;
}

std::string inputOf(const Parts& parts)
{
    std::string input = number(static_cast<std::uint32_t>(parts.journal.size())).substr(1) +
                        number(static_cast<std::uint32_t>(parts.wal.size())).substr(1);
    for (const std::string_view part : {parts.journal, parts.wal, parts.job})
        input += part;
    return input;
}

std::size_t mutateJournal(std::uint8_t* data, std::size_t size, std::size_t limit,
                          std::minstd_rand& chance)
{
    const Parts parts = partsOf(bytesOf(data, size));
    std::string journal(parts.journal);
    std::string job(parts.job);
    switch (chance() % 8) {
    case 0:
        changeHead(journal, chance);
        break;
    case 1:
        nameFile(journal, chance);
        break;
    case 2:
        changeJob(job, chance);
        break;
    case 3:
        journal.resize(journal.empty() ? 0 : chance() % journal.size());
        break;
    default:
        changePage(journal, chance);
    }
    if (chance() % 16 != 0)
        putSumsRight(journal);
    const std::string input = inputOf({.journal = journal, .wal = parts.wal, .job = job});
    const std::size_t length = std::min(limit, input.size());
    std::copy_n(input.begin(), length, data);
    return length;
}

} // namespace zelto::fuzz
