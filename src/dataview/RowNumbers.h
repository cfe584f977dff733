#pragma once

#include <QString>
#include <QtGlobal>

#include <unordered_set>
#include <vector>

namespace tessaro {

/// A set of row numbers in the order in which they were added, with a fast look-up for long lists.
class RowNumbers final {
  public:
    void Append(const std::vector<qint64>& numbers);
    void Remove(const std::vector<qint64>& numbers);
    void Clear();
    [[nodiscard]] bool isEmpty() const { return order_.empty(); }
    [[nodiscard]] bool Contains(qint64 number) const { return known_.contains(number); }
    [[nodiscard]] const std::vector<qint64>& Numbers() const { return order_; }
    /// "3,17,5,"
    [[nodiscard]] QString Text() const;

    /// Numbers as a list for an In clause: "3,17,5".
    [[nodiscard]] static QString Joined(const std::vector<qint64>& numbers);

  private:
    std::vector<qint64> order_; ///< as they were appended
    std::unordered_set<qint64> known_;
};

} // namespace tessaro
