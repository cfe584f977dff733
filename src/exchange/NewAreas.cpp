#include "exchange/NewAreas.h"

#include "database/AreaIds.h"
#include "exchange/AreaTree.h"
#include "jet/values/Collation.h"

#include <algorithm>
#include <unordered_set>

namespace tessaro {

namespace {

constexpr std::size_t kLevelWidth = schema::kCharactersPerLevel;

class Planner final {
  public:
    explicit Planner(const CheckedImport& checked)
        : checked_(checked), parent_(checked.draft.parentArea.toStdString()) {
        for (const TargetArea& area : checked.items.areas)
            used_.insert(jet::Folded(area.id));
        for (const NewAreaTexts& texts : checked.newAreaTexts)
            if (IsTreeId(texts.id)) told_.emplace(jet::Folded(texts.id), texts.name);
    }

    std::vector<NewArea> Plan() {
        std::vector<int> later;
        for (std::size_t i = 0; i < checked_.newAreaTexts.size(); ++i) {
            const int number = -static_cast<int>(i) - 1;
            const NewAreaTexts& texts = checked_.newAreaTexts[i];
            if (IsTreeId(texts.id))
                Add(number, texts.id, texts.name);
            else
                later.push_back(number);
        }
        for (const int number : later) {
            const NewAreaTexts& texts = checked_.newAreaTexts[static_cast<std::size_t>(-number) - 1];
            Add(number, NextFreeId(), texts.name.empty() ? texts.id : texts.name);
        }
        std::ranges::stable_sort(areas_, {}, [](const NewArea& area) { return area.id.size(); });
        return std::move(areas_);
    }

  private:
    /// An area with the parents that it lacks.
    void Add(int number, const std::string& id, const std::string& name) {
        if (id.size() > kLevelWidth) {
            const std::string parent = id.substr(0, id.size() - kLevelWidth);
            // A parent that the file names as well comes by itself.
            if (!used_.contains(jet::Folded(parent)) && !told_.contains(jet::Folded(parent))) Add(0, parent, parent);
        }
        used_.insert(jet::Folded(id));
        areas_.push_back({number, id, name.empty() ? id : name});
    }

    std::string NextFreeId() {
        static constexpr std::string_view signs = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";
        for (;;) {
            std::string id = parent_;
            std::string end(kLevelWidth, '0');
            int rest = ++lastId_;
            for (std::size_t place = kLevelWidth; place-- > 0; rest /= 36)
                end[place] = signs[static_cast<std::size_t>(rest % 36)];
            id += end;
            if (rest > 0) { // the level is full: a level below the last one goes on
                parent_ += "ZZZ";
                lastId_ = 0;
                continue;
            }
            const std::string folded = jet::Folded(id);
            if (!used_.contains(folded) && !told_.contains(folded)) return id;
        }
    }

    const CheckedImport& checked_;
    std::string parent_;
    int lastId_ = 0;
    std::unordered_set<std::string> used_;
    TextMap<std::string> told_;
    std::vector<NewArea> areas_;
};

} // namespace

int NewArea::Level() const {
    return static_cast<int>(id.size() / kLevelWidth);
}

std::vector<NewArea> PlanNewAreas(const CheckedImport& checked) {
    return Planner(checked).Plan();
}

} // namespace tessaro
