#include "jet/engine/ColumnImages.h"

#include "jet/values/Error.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <unistd.h>

namespace jet {

namespace {

std::string Hexadecimal(std::uint64_t number) {
    std::array<char, 16> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number, 16).ptr;
    return {digits.data(), end};
}

} // namespace

ColumnImages::ColumnImages(Settings settings) : settings_(std::move(settings)) {}

ColumnImages::~ColumnImages() {
    {
        const std::lock_guard lock(mutex_);
        stop_ = true;
    }
    changed_.notify_all();
    if (thread_.joinable()) thread_.join();
}

std::string ColumnImages::PathOf(const ImageSubject& subject) const {
    return settings_.folder + "/" + Hexadecimal(subject.stamp()) + ".columns";
}

void ColumnImages::Log(const std::string& line) const {
    if (settings_.log) settings_.log(line);
}

std::shared_ptr<const ColumnImage> ColumnImages::Want(const ImageOrder& order) {
    const std::lock_guard lock(mutex_);
    const std::string path = PathOf(order.subject);
    missed_.erase(path);
    const auto known = known_.find(path);
    if (known != known_.end() && known->second.mark == order.mark) {
        known->second.wanted = ++wants_;
        return known->second.image;
    }
    for (const ImageOrder& waiting : orders_)
        if (waiting.subject == order.subject) return nullptr;
    orders_.push_back(order);
    if (!thread_.joinable()) thread_ = std::thread([this] { Work(); });
    changed_.notify_all();
    return nullptr;
}

std::shared_ptr<const ColumnImage> ColumnImages::find(const ImageSubject& subject) const {
    const std::lock_guard lock(mutex_);
    const auto known = known_.find(PathOf(subject));
    return known == known_.end() ? nullptr : known->second.image;
}

bool ColumnImages::isToBeWantedAgain(const ImageSubject& subject) const {
    const std::lock_guard lock(mutex_);
    return !missed_.empty() && missed_.contains(PathOf(subject));
}

void ColumnImages::Drop(const ImageSubject& subject) {
    const std::lock_guard lock(mutex_);
    if (known_.erase(PathOf(subject)) > 0) ++version_;
}

void ColumnImages::Wait() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return orders_.empty() || stop_; });
}

void ColumnImages::Work() {
    for (;;) {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return stop_ || !orders_.empty(); });
        if (stop_) return;
        const ImageOrder order = orders_.front();
        lock.unlock();
        Serve(order);
        lock.lock();
        orders_.pop_front();
        lock.unlock();
        changed_.notify_all();
    }
}

// When the database is written while its image is made, nothing is kept: the next statement asks again.
void ColumnImages::Serve(const ImageOrder& order) {
    const std::string name = "The column image of '" + order.subject.table + "' in '" + order.subject.file + "' ";
    Known known{nullptr, order.mark};
    bool settled = true;
    try {
        known.image = OpenFile(order);
        if (known.image == nullptr) known.image = Make(order);
        known.mark = known.image->mark();
        settled = known.mark == order.mark;
    } catch (const Error& error) {
        settled = error.number() != ErrorNumber::Busy && error.number() != ErrorNumber::Interrupted;
        if (!stop_) Log(name + "can't be made: " + error.what());
    } catch (const std::exception& error) {
        Log(name + "can't be made: " + error.what());
    }
    const std::lock_guard lock(mutex_);
    ++version_;
    if (!settled) {
        missed_.insert(PathOf(order.subject));
        return;
    }
    known.wanted = ++wants_;
    known_[PathOf(order.subject)] = std::move(known);
    ForgetOldest();
}

// A statement that is reading the image keeps it until it has ended.
void ColumnImages::ForgetOldest() {
    constexpr std::size_t kMostKnown = 4;
    if (known_.size() <= kMostKnown) return;
    known_.erase(std::ranges::min_element(known_, {}, [](const auto& each) { return each.second.wanted; }));
}

/// Nothing when there is no file, or it is older than the database or damaged.
std::shared_ptr<const ColumnImage> ColumnImages::OpenFile(const ImageOrder& order) const {
    const std::string path = PathOf(order.subject);
    if (::access(path.c_str(), F_OK) != 0) return nullptr;
    try {
        auto image = ColumnImage::Open(path, order.subject);
        if (image->mark() == order.mark) {
            TouchImage(path);
            return image;
        }
        Log("The column image '" + path + "' is older than its database and is made anew.");
    } catch (const Error& error) {
        Log("'" + path + "': " + error.what() + " It is made anew.");
    }
    return nullptr;
}

std::shared_ptr<const ColumnImage> ColumnImages::Make(const ImageOrder& order) {
    std::error_code failure;
    std::filesystem::create_directories(settings_.folder, failure);
    if (::access(settings_.folder.c_str(), W_OK) != 0) // said before the whole table is read
        throw Error(ErrorNumber::ReadOnly,
                    "'" + settings_.folder + "' can't be written: " + std::strerror(errno) + ".");
    TidyImages(settings_.folder, settings_.mostBytes);
    const std::string path = PathOf(order.subject);
    static std::atomic<unsigned> made = 0;
    const std::string making = path + "." + std::to_string(::getpid()) + "." + std::to_string(++made) + ".making";
    MakeImage(order, making, stop_);
    if (std::filesystem::file_size(making, failure) > settings_.mostBytes) {
        std::filesystem::remove(making, failure);
        throw Error(ErrorNumber::TooLarge, "It takes more room than all images together may.");
    }
    std::filesystem::rename(making, path, failure);
    if (failure) {
        std::filesystem::remove(making, failure);
        throw Error(ErrorNumber::ReadOnly, "'" + path + "' can't be put in place.");
    }
    TidyImages(settings_.folder, settings_.mostBytes);
    return ColumnImage::Open(path, order.subject);
}

} // namespace jet
