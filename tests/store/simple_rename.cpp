// SPDX-License-Identifier: GPL-3.0-or-later
#include "simple_rename.h"

#include <cerrno>
#include <cstdio>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

bool& plainOnly()
{
    static bool plain = false;
    return plain;
}

} // namespace

void zelto::test::allowPlainRenamesOnly()
{
    plainOnly() = true;
}

/// Takes the place of the system library's, whose own names of parameters are reserved.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name)
extern "C" int renameat2(int oldFolder, const char* oldPath, int newFolder, const char* newPath,
                         unsigned int flags) noexcept
{
    if (flags != 0 && plainOnly()) {
        errno = EINVAL;
        return -1;
    }
    return static_cast<int>(
        ::syscall(SYS_renameat2, oldFolder, oldPath, newFolder, newPath, flags));
}
