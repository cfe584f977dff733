#pragma once

#include "jet/columns/ImageWriter.h"

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace jet {

/// A table that an image is wanted of.
struct ImageOrder {
    ImageSubject subject;
    FileMark mark; ///< the state of the database now
    std::vector<ImageField> fields;
};

/// The column images of a folder. They are opened, and made when there is none, by a thread of their own; nobody waits
/// for them. Those of a few databases stay open: one that is deleted while it is open takes room on the disk still.
/// Every failure ends in a line for the log and in no image. Can be used from several threads.
class ColumnImages final {
  public:
    struct Settings {
        std::string folder;                          ///< where the files lie; made when it isn't there
        std::int64_t leastRows = 200'000;            ///< a smaller table gets no image
        std::uint64_t mostBytes = 2'000'000'000;     ///< of all files; those used longest ago go
        std::function<void(const std::string&)> log; ///< called on the thread; may be empty
    };
    explicit ColumnImages(Settings settings);
    /// Stops the thread; an image that is being made is given up.
    ~ColumnImages();
    ColumnImages(const ColumnImages&) = delete;
    ColumnImages& operator=(const ColumnImages&) = delete;

    /// The image of a table in this state; nullptr when it isn't there yet, and it is then opened or made from now on.
    [[nodiscard]] std::shared_ptr<const ColumnImage> Want(const ImageOrder& order);
    /// The image that Want would give; never begins to make one.
    [[nodiscard]] std::shared_ptr<const ColumnImage> find(const ImageSubject& subject) const;
    /// True when the image could not be made because the database was written meanwhile, and nobody has wanted it
    /// since.
    [[nodiscard]] bool isToBeWantedAgain(const ImageSubject& subject) const;
    /// Forgets an image that is no longer that of its database.
    void Drop(const ImageSubject& subject);
    /// Rises whenever an image comes or goes.
    [[nodiscard]] unsigned version() const { return version_; }
    [[nodiscard]] std::int64_t leastRows() const { return settings_.leastRows; }
    /// Until nothing is being made any more; for tests and benchmarks.
    void Wait();
    void Log(const std::string& line) const;
    /// Notes that a statement could not be served by an image after all, and was run once more without.
    void CountUnfit() { ++unfit_; }
    [[nodiscard]] unsigned unfit() const { return unfit_; }

  private:
    struct Known {
        std::shared_ptr<const ColumnImage> image; ///< nullptr: it can't be made of this state
        FileMark mark;
        std::uint64_t wanted = 0; ///< number of the last Want for it
    };
    void Work();
    void Serve(const ImageOrder& order);
    void ForgetOldest();
    [[nodiscard]] std::shared_ptr<const ColumnImage> OpenFile(const ImageOrder& order) const;
    [[nodiscard]] std::shared_ptr<const ColumnImage> Make(const ImageOrder& order);
    [[nodiscard]] std::string PathOf(const ImageSubject& subject) const;

    Settings settings_;
    mutable std::mutex mutex_;
    std::condition_variable changed_;
    std::map<std::string, Known> known_; ///< by path of the image
    std::set<std::string> missed_;       ///< paths of those to be wanted again
    std::deque<ImageOrder> orders_;      ///< the first is being worked on
    std::uint64_t wants_ = 0;
    std::atomic<unsigned> version_ = 1;
    std::atomic<unsigned> unfit_ = 0;
    std::atomic<bool> stop_ = false;
    std::thread thread_;
};

/// Makes the image of a table through a connection of its own, a part at a time, so that nobody who wants to write to
/// the database waits long. Throws Error: Busy when the database was written meanwhile, and what else fails; `stop`
/// ends the work as Interrupted.
void MakeImage(const ImageOrder& order, const std::string& target, const std::atomic<bool>& stop);
/// Deletes the files that others left half made, and of the images those used longest ago, until all the others take
/// no more than `mostBytes`.
void TidyImages(const std::string& folder, std::uint64_t mostBytes);
/// Notes that an image is in use.
void TouchImage(const std::string& path);

} // namespace jet
