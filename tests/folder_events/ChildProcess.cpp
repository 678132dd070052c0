#include "folder_events/ChildProcess.h"

#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <exception>
#include <fstream>

namespace brimwick {
namespace {

constexpr int notPermitted = 77;
constexpr int threw = 78;

std::optional<int> permitted(int result) {
    if (result == notPermitted) return std::nullopt;
    return result;
}

bool write(const std::string& path, const std::string& text) {
    std::ofstream file(path);
    return static_cast<bool>(file << text << std::flush);
}

} // namespace

int inChild(const std::function<int()>& body) {
    const pid_t child = fork();
    if (child == 0) {
        int result = threw;
        try {
            result = body();
        } catch (const std::exception&) {
        }
        _exit(result);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 100 + WTERMSIG(status);
}

std::optional<int> inChildWithOwnLimits(const std::string& limit, int value,
                                        const std::function<int()>& body) {
    const uid_t user = geteuid();
    return permitted(inChild([&] {
        if (unshare(CLONE_NEWUSER) != 0) return notPermitted;
        if (!write("/proc/self/uid_map", "0 " + std::to_string(user) + " 1")) return notPermitted;
        if (!write("/proc/sys/user/" + limit, std::to_string(value))) return notPermitted;
        return body();
    }));
}

std::optional<int> inChildWithOwnMounts(const std::function<int()>& body) {
    return permitted(inChild([&] {
        if (unshare(CLONE_NEWNS) != 0) return notPermitted;
        if (mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) return notPermitted;
        return body();
    }));
}

} // namespace brimwick
