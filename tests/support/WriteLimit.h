#pragma once

#include <QtGlobal>

#include <algorithm>
#include <csignal>
#include <sys/resource.h>
#include <unistd.h>

namespace tessaro::test {

/// Forbids a process to write files larger than this, as a full disk would, for as long as it lives.
class WriteLimit final {
  public:
    WriteLimit(qint64 processId, rlim_t bytes) : processId_(static_cast<pid_t>(processId)) { Set(bytes); }
    /// This process.
    explicit WriteLimit(rlim_t bytes) : processId_(::getpid()) {
        std::signal(SIGXFSZ, SIG_IGN); // the write fails instead
        Set(bytes);
    }
    ~WriteLimit() { Set(RLIM_INFINITY); }
    WriteLimit(const WriteLimit&) = delete;
    WriteLimit& operator=(const WriteLimit&) = delete;

  private:
    void Set(rlim_t bytes) const {
        rlimit limit{};
        ::prlimit(processId_, RLIMIT_FSIZE, nullptr, &limit);
        limit.rlim_cur = std::min(bytes, limit.rlim_max);
        ::prlimit(processId_, RLIMIT_FSIZE, &limit, nullptr);
    }
    pid_t processId_;
};

} // namespace tessaro::test
