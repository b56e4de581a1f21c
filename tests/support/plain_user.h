// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <unistd.h>

namespace zelto::test {

/// Takes the rights of the administrator, who may write everything, away for a while.
class PlainUser
{
public:
    PlainUser() : m_changed(::geteuid() == 0)
    {
        if (m_changed && ::setresuid(Nobody, Nobody, 0) != 0)
            qFatal("cannot become a plain user");
    }
    ~PlainUser()
    {
        if (m_changed && ::setresuid(0, 0, 0) != 0)
            qFatal("cannot become the administrator again");
    }
    Q_DISABLE_COPY(PlainUser)

    static constexpr uid_t Nobody = 65534;

private:
    bool m_changed;
};

} // namespace zelto::test
