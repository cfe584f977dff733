#include "platform/Apart.h"

#include <array>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tessaro {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kTurn{50};
constexpr std::chrono::milliseconds kSignOfLife{200};
constexpr std::size_t kLongestReason = 2000;
constexpr char kProgressKind = 'P';
constexpr char kReasonKind = 'R';

/// Bytes of private memory that this process has, which RLIMIT_DATA counts.
std::uint64_t DataInUse() {
    std::uint64_t pages[6] = {};
    std::FILE* file = std::fopen("/proc/self/statm", "re");
    if (file == nullptr) return 0;
    for (std::uint64_t& number : pages) {
        unsigned long long read = 0;
        if (std::fscanf(file, "%llu", &read) == 1) number = read;
    }
    std::fclose(file);
    return pages[5] * static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE));
}

void Limit(__rlimit_resource resource, std::uint64_t bytes) {
    rlimit limit{};
    ::getrlimit(resource, &limit);
    limit.rlim_cur = std::min<rlim_t>(bytes, limit.rlim_max);
    ::setrlimit(resource, &limit);
}

[[noreturn]] void RunAndLeave(const std::function<bool(ApartReport&)>& work, const ApartLimits& limits, int pipe,
                              pid_t program) {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != program) ::_exit(1);
    Limit(RLIMIT_CORE, 0);
    if (limits.memory > 0) Limit(RLIMIT_DATA, DataInUse() + limits.memory);
    if (limits.file > 0) Limit(RLIMIT_FSIZE, limits.file);
    std::signal(SIGXFSZ, SIG_IGN); // the write fails instead
    std::signal(SIGSEGV, SIG_DFL); // a crash is an answer here, nothing to be reported by handlers of the program
    std::signal(SIGABRT, SIG_DFL);
    bool good = false;
    try {
        ApartReport report(pipe);
        good = work(report);
    } catch (...) {
        good = false;
    }
    ::_exit(good ? 0 : 1); // without the exit handlers, which belong to the program
}

/// The program's end: takes the reports as they come and watches the limits.
class Watch final {
  public:
    Watch(pid_t child, int pipe, const ApartLimits& limits) : child_(child), pipe_(pipe), limits_(limits) {
        started_ = heard_ = Clock::now();
    }

    ApartResult Follow(const std::function<bool(int)>& goOn) {
        while (!Ended()) {
            Listen();
            result_.stopped = goOn && !goOn(percent_);
            if (result_.stopped || IsLate()) {
                ::kill(child_, SIGKILL);
                ::waitpid(child_, &status_, 0);
                result_.reason.clear();
                return result_;
            }
        }
        Read();
        result_.good = WIFEXITED(status_) && WEXITSTATUS(status_) == 0;
        return result_;
    }

  private:
    bool Ended() {
        const pid_t gone = ::waitpid(child_, &status_, WNOHANG);
        return gone == child_ || (gone < 0 && errno != EINTR);
    }

    [[nodiscard]] bool IsLate() const {
        const auto now = Clock::now();
        const auto over = [now](Clock::time_point since, std::chrono::milliseconds limit) {
            return limit.count() > 0 && now - since > limit;
        };
        return over(started_, limits_.whole) || over(heard_, limits_.silence);
    }

    void Listen() {
        pollfd waiting{pipe_, POLLIN, 0};
        if (::poll(&waiting, 1, static_cast<int>(kTurn.count())) > 0) Read();
        // A closed pipe is ready at once; what remains is to wait for the process.
        if ((waiting.revents & POLLHUP) != 0) ::poll(nullptr, 0, 5);
    }

    void Read() {
        std::array<char, 4096> part{};
        for (ssize_t got = 0; (got = ::read(pipe_, part.data(), part.size())) > 0;)
            text_.append(part.data(), static_cast<std::size_t>(got));
        for (std::size_t end = 0; (end = text_.find('\0')) != std::string::npos; text_.erase(0, end + 1))
            Take(std::string_view(text_).substr(0, end));
    }

    void Take(std::string_view report) {
        if (report.empty()) return;
        const std::string_view text = report.substr(1);
        if (report.front() == kReasonKind) result_.reason = text;
        if (report.front() != kProgressKind) return;
        heard_ = Clock::now();
        std::from_chars(text.data(), text.data() + text.size(), percent_);
    }

    pid_t child_;
    int pipe_;
    ApartLimits limits_;
    Clock::time_point started_;
    Clock::time_point heard_;
    std::string text_;
    ApartResult result_;
    int percent_ = 0;
    int status_ = 0;
};

} // namespace

void ApartReport::Progress(int percent) {
    const auto now = Clock::now();
    if (percent == last_ && now - sent_ < kSignOfLife) return;
    last_ = percent;
    sent_ = now;
    Send(kProgressKind, std::to_string(percent));
}

void ApartReport::Reason(std::string_view text) const {
    Send(kReasonKind, text.substr(0, kLongestReason));
}

void ApartReport::Send(char kind, std::string_view text) const {
    const std::string report = kind + std::string(text) + '\0';
    // Shorter than what a pipe takes at once. Nobody listens any more only when the program is gone.
    if (::write(pipe_, report.data(), report.size()) < 0) return;
}

ApartResult RunApart(const std::function<bool(ApartReport&)>& work, const ApartLimits& limits,
                     const std::function<bool(int)>& goOn) {
    int ends[2] = {};
    if (::pipe2(ends, O_CLOEXEC) != 0) return {};
    ::fcntl(ends[0], F_SETFL, O_NONBLOCK);
    const pid_t program = ::getpid();
    const pid_t child = ::fork();
    if (child == 0) RunAndLeave(work, limits, ends[1], program);
    ::close(ends[1]);
    ApartResult result;
    if (child > 0) result = Watch(child, ends[0], limits).Follow(goOn);
    ::close(ends[0]);
    return result;
}

bool RunApart(const std::function<bool()>& work, std::chrono::milliseconds limit) {
    ApartLimits limits;
    limits.whole = limit;
    return RunApart([&](ApartReport&) { return work(); }, limits, {}).good;
}

} // namespace tessaro
