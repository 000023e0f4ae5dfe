#pragma once

#include <optional>

#include <csignal>
#include <grp.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

/// What \a work, a function that returns an int, returns in a forked process of its own; nothing
/// where that process dies or takes longer than \a seconds. Limits and rights that \a work gives
/// away are those of the child only.
template <typename Work>
std::optional<int> inChild(Work work, unsigned seconds = 60)
{
    int ends[2];
    if (::pipe(ends) != 0)
        return std::nullopt;
    const pid_t child = ::fork();
    if (child == 0) {
        ::alarm(seconds);
        const int result = work();
        const bool sent = ::write(ends[1], &result, sizeof result) == sizeof result;
        ::_exit(sent ? 0 : 1);
    }
    ::close(ends[1]);
    int result = 0;
    const bool received = child > 0 && ::read(ends[0], &result, sizeof result) == sizeof result;
    ::close(ends[0]);
    int status = 0;
    if (child > 0)
        ::waitpid(child, &status, 0);
    return received ? std::optional(result) : std::nullopt;
}

/// Gives up the rights of the superuser, which no permission stops. \returns false where the
/// process had them and can't give them up.
inline bool becomeUnprivileged()
{
    constexpr uid_t nobody = 65534;
    if (::geteuid() != 0)
        return true;
    return ::setgroups(0, nullptr) == 0 && ::setgid(nobody) == 0 && ::setuid(nobody) == 0;
}

/// Answer of a child that could not become what the test needs.
inline constexpr int notPossible = -1000;
