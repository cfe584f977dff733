#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

namespace tessaro::office {

/// One thread that works off a queue. The caller waits with a limit; if it is the thread of a running event loop, paint
/// events and timers pass meanwhile, input doesn't.
class Worker final {
  public:
    Worker();
    /// Works the queue off and ends.
    ~Worker();
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    /// Runs the work; rethrows what it throws. When the limit passes, or `isStuck`, which is asked twice a second,
    /// gives true, `onLate` is called once (it has to make the work end) and true is returned after the work has come
    /// back; what it threw is dropped then.
    [[nodiscard]] bool Run(const std::function<void()>& work, std::chrono::milliseconds limit,
                           const std::function<bool()>& isStuck, const std::function<void()>& onLate);
    void Post(std::function<void()> work);

  private:
    struct Task {
        std::function<void()> work;
        std::function<void()> wake; ///< called when it is done
        std::exception_ptr failure;
        bool done = false;
    };

    void Loop();
    void Push(std::shared_ptr<Task> task);
    bool Wait(const std::shared_ptr<Task>& task, std::chrono::milliseconds limit);
    bool WaitWithEvents(const std::shared_ptr<Task>& task, std::chrono::milliseconds limit);

    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<std::shared_ptr<Task>> queue_;
    bool ending_ = false;
    std::thread thread_;
};

} // namespace tessaro::office
