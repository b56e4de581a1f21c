// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/clean_end.h"

#include "store/files/passing_folder.h"

#include <csignal>
#include <thread>

namespace zelto::cli {

namespace {

/// As after nohup, or for a command in the background.
bool isIgnored(int number)
{
    struct sigaction action = {};
    return ::sigaction(number, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

void endBy(int number)
{
    std::signal(number, SIG_DFL);
    sigset_t only;
    ::sigemptyset(&only);
    ::sigaddset(&only, number);
    ::pthread_sigmask(SIG_UNBLOCK, &only, nullptr);
    std::raise(number);
}

} // namespace

void cleanUpOnSignals()
{
    std::signal(SIGPIPE, SIG_IGN); // writing to nobody fails like any other writing
    sigset_t ending;
    ::sigemptyset(&ending);
    for (const int number : {SIGHUP, SIGINT, SIGTERM})
        if (!isIgnored(number))
            ::sigaddset(&ending, number);
    ::pthread_sigmask(SIG_BLOCK, &ending, nullptr);
    // A thread that waits may do what a signal handler must not.
    std::thread([ending] {
        int number = 0;
        if (::sigwait(&ending, &number) != 0)
            return;
        store::PassingFolder::removeAll();
        endBy(number);
    }).detach();
}

} // namespace zelto::cli
