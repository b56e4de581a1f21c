// SPDX-License-Identifier: GPL-3.0-or-later
// A job with the files of an interrupted change, as one input, and changes to it that leave the
// journal one that counts.
#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t limit);

namespace zelto::fuzz {

struct Parts
{
    std::string_view journal;
    std::string_view wal;
    std::string_view job;
};

[[nodiscard]] Parts partsOf(std::string_view input);
[[nodiscard]] std::string inputOf(const Parts& parts);

/// Changes a field of the journal's head, a page or its number, or lets it name a file; the sums
/// are put right afterwards. Returns the new size.
std::size_t mutateJournal(std::uint8_t* data, std::size_t size, std::size_t limit,
                          std::minstd_rand& chance);

} // namespace zelto::fuzz
