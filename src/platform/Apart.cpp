#include "platform/Apart.h"

#include <csignal>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace tessaro {

namespace {

[[noreturn]] void RunAndLeave(const std::function<bool()>& work) {
    const rlimit noCore{0, 0};
    ::setrlimit(RLIMIT_CORE, &noCore);
    std::signal(SIGSEGV, SIG_DFL); // a crash is an answer here, nothing to be reported by handlers of the program
    std::signal(SIGABRT, SIG_DFL);
    bool good = false;
    try {
        good = work();
    } catch (...) {
        good = false;
    }
    ::_exit(good ? 0 : 1); // without the exit handlers, which belong to the program
}

} // namespace

bool RunApart(const std::function<bool()>& work, std::chrono::milliseconds limit) {
    const pid_t child = ::fork();
    if (child < 0) return false;
    if (child == 0) RunAndLeave(work);
    const auto end = std::chrono::steady_clock::now() + limit;
    int status = 0;
    pid_t gone = 0;
    while ((gone = ::waitpid(child, &status, WNOHANG)) == 0 && std::chrono::steady_clock::now() < end)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    if (gone == 0) {
        ::kill(child, SIGKILL);
        ::waitpid(child, &status, 0);
        return false;
    }
    return gone == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace tessaro
