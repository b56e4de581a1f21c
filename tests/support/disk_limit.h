// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "print/print_error.h"
#include "text/system_reason.h"

#include <QTest>

#include <cerrno>
#include <csignal>
#include <sys/resource.h>

namespace zelto::test {

/// Files of this process cannot grow beyond the size, as on a full disk.
class DiskLimit
{
public:
    explicit DiskLimit(rlim_t bytes)
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        m_handler = std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{.rlim_cur = bytes, .rlim_max = m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~DiskLimit()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }
    Q_DISABLE_COPY(DiskLimit)

private:
    rlimit m_before{};
    void (*m_handler)(int) = nullptr;
};

/// The action must fail and tell the user that the file cannot grow.
template <typename Action>
void verifyDiskIsFull(Action&& action)
{
    try {
        action();
        QFAIL("written to a full disk");
    } catch (const print::PrintError& error) {
        QVERIFY(error.description().contains(text::systemReason(EFBIG)));
        QVERIFY(!error.description().contains(u".zelto-"_s));
    }
}

} // namespace zelto::test
