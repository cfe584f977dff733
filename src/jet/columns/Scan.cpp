#include "jet/columns/Scan.h"

#include "jet/columns/RowOrder.h"
#include "jet/columns/ScanFigures.h"
#include "jet/columns/ScanFilter.h"
#include "jet/columns/ScanFunctions.h"
#include "jet/columns/ScanPlaces.h"
#include "jet/values/Error.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <future>
#include <numeric>
#include <system_error>
#include <thread>

namespace jet {

namespace {

/// More different groups than this part of the rows are not worth the detour, when they must be put together again.
constexpr std::size_t kRowsAGroup = 4;

/// Each piece that is looked at stands so many further on than the one before.
constexpr std::size_t kFarApart = 633;

/// Of a file that was cut zeros are read, which are no rows of the table.
void CheckIntact(const ColumnImage& image) {
    if (!image.isIntact()) throw Error(ErrorNumber::ColumnsUnfit, std::string(kStaleImage));
}

/// How far the threads of a scan are, and whether they are to stop.
class Progress final {
  public:
    explicit Progress(WorkWatch& watch) : watch_(watch), own_(std::this_thread::get_id()) {}

    /// To be called by each thread for each block. Throws Error (Interrupted).
    void Check(std::size_t done, std::size_t all) {
        if (std::this_thread::get_id() == own_) return Ask(done * 100 / std::max<std::size_t>(all, 1));
        if (stopped_.load(std::memory_order_relaxed)) FailInterrupted();
    }
    /// Until another thread has ended.
    void Wait(const std::future<void>& thread) {
        constexpr auto kBetweenLooks = std::chrono::milliseconds(10);
        while (thread.wait_for(kBetweenLooks) != std::future_status::ready)
            Ask(100);
    }
    [[nodiscard]] WorkWatch& watch() { return watch_; }
    void Stop() { stopped_ = true; }

  private:
    void Ask(std::size_t percent) {
        if (watch_.GoesOn(static_cast<int>(percent))) return;
        Stop();
        FailInterrupted();
    }

    WorkWatch& watch_;
    std::thread::id own_;
    std::atomic<bool> stopped_ = false;
};

/// Goes through some of the rows.
class Scanner final {
  public:
    Scanner(const ColumnImage& image, const ScanPlan& plan, const ScanInput& input, const ScanFilter& filter,
            Progress& progress)
        : image_(image), plan_(plan), input_(input), progress_(progress), filter_(filter),
          places_(image, plan, input, &progress.watch()), figures_(image, plan, input, *groups_),
          sides_(plan.sides.size()) {
        if (!places_.growing()) figures_.Grow(places_.count());
    }

    /// Groups that are met one by one have other places in each thread.
    [[nodiscard]] bool canBeShared() const { return !places_.growing(); }
    /// Several threads pay when there is much to read, and the groups of each are soon put together.
    [[nodiscard]] bool paysToShare() const {
        constexpr std::size_t kManyRows = 1'000'000;
        constexpr std::size_t kFewPlaces = 200'000;
        constexpr std::size_t kRowsAPlace = 16;
        const bool few = places_.count() <= std::max(kFewPlaces, image_.rows() / kRowsAPlace);
        return few && image_.rows() >= kManyRows && std::thread::hardware_concurrency() > 1;
    }

    /// `from` and `to` are multiples of the rows of a block, or the end.
    void Run(std::size_t from, std::size_t to) {
        left_ = (to - from) * (places_.wantsMarks() ? 2 : 1);
        all_ = left_;
        if (places_.wantsMarks()) Walk(from, to, [this] { places_.Mark(block_, sides_); });
        if (places_.allAreAlone()) return;
        Walk(from, to, [this] { Take(); });
    }

    /// Looks for each group among rows from all over the table, as long as only their existence is asked for; False
    /// when one wasn't met.
    bool MeetsAllSoon() {
        constexpr std::size_t kMostPieces = 1024;
        constexpr std::size_t kRowsAPiece = 128;
        constexpr std::size_t kPiecesBetweenLooks = 16;
        constexpr std::size_t kPieceOfRows = 4; ///< at most so much of the table is looked at
        constexpr std::uint32_t kMostPlaces = 5000;
        if (!plan_.existence || places_.growing() || places_.count() > kMostPlaces) return false;
        const std::size_t pieces = std::min(kMostPieces, image_.rows() / kRowsAPiece / kPieceOfRows);
        for (std::size_t piece = 0; piece < pieces; ++piece) {
            const std::size_t from = image_.rows() / pieces * (piece * kFarApart % pieces);
            FillBlock(from, from + kRowsAPiece);
            if (block_.count > 0) Take();
            if (piece % kPiecesBetweenLooks == 0 && HasMetAll()) return true;
        }
        return pieces > 0 && HasMetAll();
    }

    void Join(const Scanner& later) {
        std::vector<std::uint32_t>& rows = groups_->filled;
        if (plan_.byRow) rows.insert(rows.end(), later.groups_->filled.begin(), later.groups_->filled.end());
        if (!plan_.byRow) figures_.Join(*later.groups_);
    }

    std::shared_ptr<ScanGroups> Finish() {
        if (plan_.byRow) {
            SortRows(groups_->filled, image_, plan_, input_, progress_.watch());
            return groups_;
        }
        for (std::uint32_t place = 0; place < places_.count(); ++place) {
            progress_.watch().Step();
            if (groups_->rows[place] > plan_.moreThan && Differs(place)) groups_->filled.push_back(place);
        }
        CheckCount(groups_->filled.size());
        places_.Describe(*groups_);
        if (places_.growing() && !plan_.codes.empty())
            std::ranges::sort(groups_->filled, [&](std::uint32_t a, std::uint32_t b) {
                progress_.watch().Step();
                return groups_->keys[a] < groups_->keys[b];
            });
        return groups_;
    }

  private:
    /// Calls `use` with each block of rows that pass.
    template <class Use> void Walk(std::size_t from, std::size_t to, const Use& use) {
        for (std::size_t at = from; at < to; at += kBlockRows) {
            if (at % (64 * kBlockRows) == 0) CheckIntact(image_);
            progress_.Check(all_ - left_, all_);
            if (!filter_.MayPass(at / kBlockRows)) {
                left_ -= std::min(kBlockRows, to - at);
                continue;
            }
            FillBlock(at, std::min(at + kBlockRows, to));
            left_ -= std::min(kBlockRows, to - at);
            if (block_.count > 0) use();
        }
    }

    void FillBlock(std::size_t from, std::size_t to) {
        block_.count = to - from;
        std::iota(block_.rows.begin(), block_.rows.begin() + static_cast<std::ptrdiff_t>(block_.count),
                  static_cast<std::uint32_t>(from));
        filter_.Apply(block_);
        FindSides();
    }

    void FindSides() {
        for (std::size_t i = 0; i < sides_.size(); ++i)
            if (IsRead(i)) FindSideKeys(image_, plan_.sides[i], input_.sides[i], block_, sides_[i]);
    }

    /// False for a side that only says which rows pass: all of these are of one class then.
    [[nodiscard]] bool IsRead(std::size_t side) const {
        return !plan_.byRow && (input_.sides[side].classes > 1 || !input_.sides[side].ranked.empty());
    }

    void Take() {
        if (plan_.byRow) {
            const auto end = block_.rows.begin() + static_cast<std::ptrdiff_t>(block_.count);
            groups_->filled.insert(groups_->filled.end(), block_.rows.begin(), end);
            return;
        }
        places_.Find(block_, sides_);
        if (places_.wantsMarks()) LeaveOutThoseAlone();
        if (places_.growing()) {
            CheckCount(places_.count());
            figures_.Grow(places_.count());
        }
        figures_.Take(block_, sides_);
    }

    void LeaveOutThoseAlone() {
        std::size_t kept = 0;
        for (std::size_t i = 0; i < block_.count; ++i) {
            block_.rows[kept] = block_.rows[i];
            block_.places[kept] = block_.places[i];
            kept += block_.places[i] != kNoPlace ? 1U : 0U;
        }
        block_.count = kept;
        FindSides();
    }

    [[nodiscard]] bool HasMetAll() const { return std::ranges::find(groups_->rows, 0U) == groups_->rows.end(); }

    [[nodiscard]] bool Differs(std::uint32_t place) const {
        if (!plan_.differing) return true;
        const std::int32_t one = groups_->ranks[plan_.differing->first][place];
        const std::int32_t other = groups_->ranks[plan_.differing->second][place];
        return one >= 0 && other >= 0 && one != other;
    }

    void CheckCount(std::size_t groups) const {
        if (!plan_.whole && groups > image_.rows() / kRowsAGroup + kRowsAGroup)
            throw Error(ErrorNumber::ColumnsUnfit, "There are too many groups.");
    }

    const ColumnImage& image_;
    const ScanPlan& plan_;
    const ScanInput& input_;
    Progress& progress_;
    std::size_t all_ = 0;  ///< rows to go through
    std::size_t left_ = 0; ///< of these
    std::shared_ptr<ScanGroups> groups_ = std::make_shared<ScanGroups>();
    const ScanFilter& filter_;
    ScanPlaces places_;
    ScanFigures figures_;
    std::vector<SideKeys> sides_;
    ScanBlock block_;
};

/// The later half of the rows is read by a thread of its own; by this one when there can be none.
void RunTogether(Scanner& first, Scanner& second, std::size_t rows, Progress& progress) {
    const std::size_t half = rows / kBlockRows / 2 * kBlockRows;
    std::future<void> later;
    try {
        later = std::async(std::launch::async, [&] { second.Run(half, rows); });
    } catch (const std::system_error&) {
        return first.Run(0, rows);
    }
    try {
        first.Run(0, half);
        progress.Wait(later);
    } catch (...) {
        progress.Stop(); // the future waits for the other thread as it goes
        throw;
    }
    later.get();
    first.Join(second);
}

} // namespace

std::shared_ptr<const ScanGroups> ScanRows(const ColumnImage& image, const ScanPlan& plan, const ScanInput& input,
                                           WorkWatch& watch, ScanThreads threads) {
    Progress progress(watch);
    const ScanFilter filter(image, plan, input);
    const auto make = [&] { return std::make_unique<Scanner>(image, plan, input, filter, progress); };
    const auto scanner = make();
    if (!scanner->MeetsAllSoon()) {
        const bool shared = threads == ScanThreads::Two || (threads == ScanThreads::AsPays && scanner->paysToShare());
        if (shared && scanner->canBeShared())
            RunTogether(*scanner, *make(), image.rows(), progress);
        else
            scanner->Run(0, image.rows());
    }
    auto groups = scanner->Finish();
    CheckIntact(image); // what was read since the last look
    return groups;
}

} // namespace jet
