#include "folder_events/FolderEventsTest.h"

#include <sys/syscall.h>

#include <fstream>
#include <thread>

namespace brimwick {
namespace {

/// What a thread of ours waits for in the kernel: the number of the call and its arguments.
std::string callOfThread(const std::string& name) {
    for (const auto& thread : std::filesystem::directory_iterator("/proc/self/task")) {
        std::string comm, call;
        std::getline(std::ifstream(thread.path() / "comm") >> std::ws, comm);
        if (comm != name) continue;
        std::getline(std::ifstream(thread.path() / "syscall") >> std::ws, call);
        return call;
    }
    return "no such thread";
}

} // namespace

TEST_F(FolderEventsTest, SleepsWithoutEndWhileNothingHappens) {
#ifdef SYS_poll
    makeFolder("a");
    start();
    const std::string polls = std::to_string(SYS_poll) + " ";
    std::string call;
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!call.starts_with(polls) && std::chrono::steady_clock::now() < end) {
        std::this_thread::yield();
        call = callOfThread("folder-events");
    }
    if (call.empty()) GTEST_SKIP() << "cannot see what a thread waits for";
    // Four sources, no time limit.
    EXPECT_NE(call.find(" 0x4 0xffffffff"), std::string::npos) << call;
#else
    GTEST_SKIP() << "another system call is used here";
#endif
}

} // namespace brimwick
