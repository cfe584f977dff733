#include "layers/RingGroups.h"

#include <algorithm>
#include <map>
#include <numeric>

namespace tessaro {

namespace {

/// Which rings are together: each ring knows another of its group, the first of a group itself.
class Groups final {
  public:
    explicit Groups(std::size_t count) : other_(count) { std::iota(other_.begin(), other_.end(), std::size_t{0}); }

    std::size_t FirstOf(std::size_t ring) {
        while (other_[ring] != ring)
            ring = other_[ring] = other_[other_[ring]];
        return ring;
    }
    void Join(std::size_t a, std::size_t b) { other_[FirstOf(a)] = FirstOf(b); }

  private:
    std::vector<std::size_t> other_;
};

bool Meet(const QRectF& a, const QRectF& b) {
    return a.left() <= b.right() && b.left() <= a.right() && a.top() <= b.bottom() && b.top() <= a.bottom();
}

} // namespace

std::vector<std::vector<std::size_t>> RingGroups(const std::vector<QRectF>& boxes) {
    std::vector<std::size_t> order(boxes.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::sort(order.begin(), order.end(),
              [&](std::size_t a, std::size_t b) { return boxes[a].left() < boxes[b].left(); });
    Groups groups(boxes.size());
    std::vector<std::size_t> open; // rings that reach as far right as the present one begins
    for (const std::size_t ring : order) {
        std::erase_if(open, [&](std::size_t each) { return boxes[each].right() < boxes[ring].left(); });
        for (const std::size_t each : open)
            if (Meet(boxes[each], boxes[ring])) groups.Join(each, ring);
        open.push_back(ring);
    }
    std::map<std::size_t, std::vector<std::size_t>> byFirst;
    for (const std::size_t ring : order)
        byFirst[groups.FirstOf(ring)].push_back(ring);
    std::vector<std::vector<std::size_t>> found;
    for (auto& [first, members] : byFirst)
        found.push_back(std::move(members));
    return found;
}

} // namespace tessaro
