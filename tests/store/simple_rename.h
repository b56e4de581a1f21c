// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace zelto::test {

/// From now on file systems know plain renames only, as some network drives and memory sticks do.
/// The program must be built with simple_rename.cpp.
void allowPlainRenamesOnly();

} // namespace zelto::test
