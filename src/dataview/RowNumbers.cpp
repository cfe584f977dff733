#include "dataview/RowNumbers.h"

namespace tessaro {

void RowNumbers::Append(const std::vector<qint64>& numbers) {
    for (const qint64 number : numbers)
        if (known_.insert(number).second) order_.push_back(number);
}

void RowNumbers::Remove(const std::vector<qint64>& numbers) {
    std::size_t removed = 0;
    for (const qint64 number : numbers)
        removed += known_.erase(number);
    if (removed > 0) std::erase_if(order_, [this](qint64 number) { return !known_.contains(number); });
}

void RowNumbers::Clear() {
    order_.clear();
    known_.clear();
}

QString RowNumbers::Text() const {
    return order_.empty() ? QString() : Joined(order_) + QLatin1Char(',');
}

QString RowNumbers::Joined(const std::vector<qint64>& numbers) {
    QString list;
    list.reserve(static_cast<qsizetype>(numbers.size()) * 8);
    for (const qint64 number : numbers) {
        if (!list.isEmpty()) list += QLatin1Char(',');
        list += QString::number(number);
    }
    return list;
}

} // namespace tessaro
