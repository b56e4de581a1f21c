// SPDX-License-Identifier: GPL-3.0-or-later
#include "system_faults.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

using zelto::test::systemFaults;

namespace {

/// Runs the system's own call, unless this is the one.
template <typename... Arguments>
long call(long number, Arguments... arguments)
{
    using zelto::test::Fault;
    const int now = ++systemFaults.callsSoFar;
    const Fault fault = systemFaults.fault;
    const bool isFaulty = now == systemFaults.call;
    if (isFaulty && fault == Fault::Kill)
        ::kill(::getpid(), SIGKILL);
    if (isFaulty || (now > systemFaults.call && fault == Fault::ForGood)) {
        errno = EIO;
        return -1;
    }
    return ::syscall(number, arguments...);
}

} // namespace

// They take the place of the system library's, whose own names of parameters are reserved.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)
extern "C" {

ssize_t write(int file, const void* bytes, size_t size)
{
    constexpr int LastStream = 2;
    return file <= LastStream ? ::syscall(SYS_write, file, bytes, size)
                              : call(SYS_write, file, bytes, size);
}

ssize_t pwrite64(int file, const void* bytes, size_t size, off64_t offset)
{
    return call(SYS_pwrite64, file, bytes, size, offset);
}

int fsync(int file)
{
    return static_cast<int>(call(SYS_fsync, file));
}

int fdatasync(int file)
{
    return static_cast<int>(call(SYS_fdatasync, file));
}

int ftruncate64(int file, off64_t size) noexcept
{
    return static_cast<int>(call(SYS_ftruncate, file, size));
}

int unlink(const char* path) noexcept
{
    return static_cast<int>(call(SYS_unlinkat, AT_FDCWD, path, 0));
}

int renameat2(int oldFolder, const char* oldPath, int newFolder, const char* newPath,
              unsigned int flags) noexcept
{
    if (flags != 0 && systemFaults.plainRenamesOnly) {
        errno = EINVAL;
        return -1;
    }
    return static_cast<int>(call(SYS_renameat2, oldFolder, oldPath, newFolder, newPath, flags));
}

} // extern "C"
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
