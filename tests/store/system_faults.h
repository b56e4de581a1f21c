// SPDX-License-Identifier: GPL-3.0-or-later
// Calls of the system that change files, made to fail or to be the last. The program must be built
// with system_faults.cpp.
#pragma once

#include <limits>

namespace zelto::test {

/// What becomes of the call: it fails alone, it and all later ones fail, or the process is killed.
enum class Fault { Once, ForGood, Kill };

/// Writes, syncs, truncations, renames and deletions are counted, from 1; the one of that number
/// meets the fault.
struct SystemFaults
{
    int call = std::numeric_limits<int>::max();
    Fault fault = Fault::Once;
    int callsSoFar = 0;
    bool plainRenamesOnly =
        false; ///< as file systems of some network drives and memory sticks know
};
inline constinit SystemFaults systemFaults;

} // namespace zelto::test
