#include "TestProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <stdexcept>

namespace brimwick {

TestProcess::TestProcess(const std::vector<std::string>& command) {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) throw std::runtime_error("no pipe");
    std::vector<char*> arguments;
    for (const std::string& argument : command) arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    process_ = fork();
    if (process_ < 0) throw std::runtime_error("no process");
    if (process_ == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        dup2(ends[1], STDOUT_FILENO);
        close(ends[0]);
        close(ends[1]);
        // What the programs remark about this bare desktop is of no interest.
        dup2(open("/dev/null", O_WRONLY | O_CLOEXEC), STDERR_FILENO);
        execvp(arguments.front(), arguments.data());
        _exit(127);
    }
    close(ends[1]);
    output_ = ends[0];
}

TestProcess::~TestProcess() {
    if (isRunning()) {
        kill(process_, SIGKILL);
        waitpid(process_, nullptr, 0);
    }
    close(output_);
}

void TestProcess::signal(int number) {
    if (isRunning()) kill(process_, number);
}

bool TestProcess::isRunning() {
    if (!ended_) ended_ = waitpid(process_, nullptr, WNOHANG) == process_;
    return !ended_;
}

bool TestProcess::readMore(std::chrono::steady_clock::time_point end) {
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(end - std::chrono::steady_clock::now()).count();
    pollfd descriptor{output_, POLLIN, 0};
    if (left <= 0 || poll(&descriptor, 1, static_cast<int>(left)) <= 0) return false;
    std::array<char, 65536> bytes{};
    const ssize_t size = read(output_, bytes.data(), bytes.size());
    if (size <= 0) return false;
    pending_.append(bytes.data(), static_cast<std::size_t>(size));
    return true;
}

std::optional<std::string> TestProcess::readLine(std::chrono::milliseconds patience) {
    const auto end = std::chrono::steady_clock::now() + patience;
    while (pending_.find('\n') == std::string::npos)
        if (!readMore(end)) return std::nullopt;
    const std::string line = pending_.substr(0, pending_.find('\n'));
    pending_.erase(0, line.size() + 1);
    return line;
}

std::optional<std::string> TestProcess::readAll(std::chrono::milliseconds patience) {
    const auto end = std::chrono::steady_clock::now() + patience;
    while (readMore(end)) {
    }
    if (std::chrono::steady_clock::now() >= end) return std::nullopt;
    return std::move(pending_);
}

std::string outputOf(const std::vector<std::string>& command) {
    TestProcess process(command);
    return process.readAll().value_or("(" + command.front() + " did not end)");
}

} // namespace brimwick
