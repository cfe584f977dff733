#include "office/Worker.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QEventLoop>
#include <QThread>
#include <QTimer>

namespace tessaro::office {

namespace {

using namespace std::chrono_literals;

/// Most calls are back before a window could want to paint.
constexpr auto kQuietWait = 15ms;
/// Between two looks at whether the work is stuck.
constexpr auto kNextLook = 500ms;

bool HasEventLoop() {
    return QCoreApplication::instance() && QThread::currentThread() == QCoreApplication::instance()->thread() &&
           QAbstractEventDispatcher::instance();
}

} // namespace

Worker::Worker() : thread_([this] { Loop(); }) {}

Worker::~Worker() {
    {
        const std::lock_guard lock(mutex_);
        ending_ = true;
    }
    changed_.notify_all();
    thread_.join();
}

void Worker::Loop() {
    std::unique_lock lock(mutex_);
    while (true) {
        changed_.wait(lock, [this] { return ending_ || !queue_.empty(); });
        if (queue_.empty()) return;
        const std::shared_ptr<Task> task = queue_.front();
        queue_.pop_front();
        lock.unlock();
        std::exception_ptr failure;
        try {
            task->work();
        } catch (...) {
            failure = std::current_exception();
        }
        task->work = nullptr; // what it holds is released on this thread
        lock.lock();
        task->failure = failure;
        task->done = true;
        if (task->wake) task->wake();
        changed_.notify_all();
    }
}

void Worker::Push(std::shared_ptr<Task> task) {
    {
        const std::lock_guard lock(mutex_);
        queue_.push_back(std::move(task));
    }
    changed_.notify_all();
}

void Worker::Post(std::function<void()> work) {
    auto task = std::make_shared<Task>();
    task->work = std::move(work);
    Push(std::move(task));
}

bool Worker::Wait(const std::shared_ptr<Task>& task, std::chrono::milliseconds limit) {
    std::unique_lock lock(mutex_);
    return changed_.wait_for(lock, limit, [&task] { return task->done; });
}

bool Worker::WaitWithEvents(const std::shared_ptr<Task>& task, std::chrono::milliseconds limit) {
    const auto end = std::chrono::steady_clock::now() + limit;
    QEventLoop loop;
    {
        const std::lock_guard lock(mutex_);
        if (task->done) return true;
        task->wake = [&loop] { QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection); };
    }
    QTimer::singleShot(limit, &loop, &QEventLoop::quit);
    loop.exec(QEventLoop::ExcludeUserInputEvents);
    std::unique_lock lock(mutex_);
    task->wake = nullptr;
    // The loop also ends early when the program is about to end; the work still has its time.
    return changed_.wait_until(lock, end, [&task] { return task->done; });
}

bool Worker::Run(const std::function<void()>& work, std::chrono::milliseconds limit,
                 const std::function<bool()>& isStuck, const std::function<void()>& onLate) {
    auto task = std::make_shared<Task>();
    task->work = work;
    Push(task);
    const auto end = std::chrono::steady_clock::now() + limit;
    const auto left = [&end] {
        return std::chrono::ceil<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
    };
    bool done = Wait(task, std::min<std::chrono::milliseconds>(kQuietWait, limit));
    while (!done && left() > 0ms && !isStuck()) {
        const auto step = std::min<std::chrono::milliseconds>(kNextLook, left());
        done = HasEventLoop() ? WaitWithEvents(task, step) : Wait(task, step);
    }
    if (!done) {
        onLate();
        // The work refers to values of its caller, so nothing goes on before it is back.
        while (!Wait(task, 1s)) {
        }
        return true;
    }
    if (task->failure) std::rethrow_exception(task->failure);
    return false;
}

} // namespace tessaro::office
