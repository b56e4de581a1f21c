// SPDX-License-Identifier: GPL-3.0-or-later
// Calls of the system that change files, made to fail or to be the last. The program must be built
// with system_faults.cpp.
#pragma once

namespace zelto::test {

/// What becomes of the call: it fails alone, it and all later ones fail, or the process is killed.
enum class Fault { Once, ForGood, Kill };

/// From now on writes, syncs, truncations, renames and deletions are counted, from 1; the one of
/// that number meets the fault.
void faultAt(int call, Fault fault);

/// How many there were.
[[nodiscard]] int callsSoFar();

/// From now on file systems know plain renames only, as some network drives and memory sticks do.
void allowPlainRenamesOnly();

} // namespace zelto::test
