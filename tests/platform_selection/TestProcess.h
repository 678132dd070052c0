#pragma once

#include <sys/types.h>

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace brimwick {

/// A program started by a test; it ends with this object, or with the test program.
class TestProcess {
  public:
    explicit TestProcess(const std::vector<std::string>& command);
    TestProcess(const TestProcess&) = delete;
    TestProcess& operator=(const TestProcess&) = delete;
    ~TestProcess();

    /// The next line that the program writes, without its end; nothing when none came in time.
    std::optional<std::string> readLine(std::chrono::milliseconds patience);
    /// All that the program still writes until it ends; nothing when it did not end in time.
    std::optional<std::string> readAll(std::chrono::milliseconds patience = std::chrono::seconds(10));
    bool isRunning();
    void signal(int number);

  private:
    bool readMore(std::chrono::steady_clock::time_point end);

    pid_t process_ = -1;
    int output_ = -1;
    bool ended_ = false;
    std::string pending_;
};

/// Runs a program to its end and gives what it wrote.
std::string outputOf(const std::vector<std::string>& command);

} // namespace brimwick
