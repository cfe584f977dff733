#include "exchange/ValueSorter.h"

#include "formats/ReadError.h"

#include <QFileInfo>

#include <algorithm>
#include <cstring>
#include <tuple>

namespace tessaro {

namespace {

constexpr qint64 kReadAtOnce = 4 * 1024 * 1024; // of all parts together
constexpr qint64 kSmallestPiece = 4096;

/// How a value stands in the file; its text follows.
struct Record {
    std::int64_t row;
    int combination;
    int source;
    int area;
    int period;
    int footnote;
    std::uint32_t length;
};

/// Two numbers of either sign as one that compares like the pair.
std::uint64_t Joined(int first, int second) {
    const auto lifted = [](int number) { return std::uint64_t{static_cast<std::uint32_t>(number) ^ 0x80000000U}; };
    return lifted(first) << 32U | lifted(second);
}

int FirstOf(std::uint64_t joined) {
    return static_cast<int>(static_cast<std::uint32_t>(joined >> 32U) ^ 0x80000000U);
}

int SecondOf(std::uint64_t joined) {
    return static_cast<int>(static_cast<std::uint32_t>(joined) ^ 0x80000000U);
}

[[noreturn]] void Fail(const QFile& file) {
    throw ReadError(QStringLiteral("TS_NewDatabaseFailed"), {QFileInfo(file.fileName()).absolutePath()});
}

} // namespace

ValueSorter::ValueSorter(const QString& path, std::size_t most) : file_(path), most_(most) {
    if (!file_.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered)) Fail(file_);
}

ValueSorter::~ValueSorter() {
    file_.remove();
}

void ValueSorter::Add(const StagedValue& value) {
    entries_.push_back({Joined(value.combination, value.source), Joined(value.area, value.period), value.row,
                        value.footnote, static_cast<std::uint32_t>(texts_.size())});
    texts_.append(static_cast<char>(value.value.size()));
    texts_.append(value.value.data(), static_cast<qsizetype>(value.value.size()));
    if (entries_.size() >= most_) WritePart();
}

void ValueSorter::Finish() {
    if (!entries_.empty()) WritePart();
    entries_ = {};
    texts_ = {};
    file_.close();
}

void ValueSorter::WritePart() {
    std::ranges::stable_sort(entries_, {}, [](const Entry& entry) { return std::tie(entry.upper, entry.lower); });
    QByteArray bytes;
    bytes.reserve(static_cast<qsizetype>(entries_.size() * sizeof(Record)) + texts_.size());
    for (const Entry& entry : entries_) {
        const auto text = static_cast<qsizetype>(entry.text);
        const auto length = static_cast<unsigned char>(texts_.at(text));
        const Record record{entry.row,
                            FirstOf(entry.upper),
                            SecondOf(entry.upper),
                            FirstOf(entry.lower),
                            SecondOf(entry.lower),
                            entry.footnote,
                            length};
        bytes.append(reinterpret_cast<const char*>(&record), sizeof record);
        bytes.append(texts_.constData() + text + 1, length);
    }
    if (file_.write(bytes) != bytes.size()) Fail(file_);
    ends_.push_back(file_.pos());
    entries_.clear();
    texts_.clear();
}

ValueSorter::Reader::Reader(const ValueSorter& values)
    : file_(values.file_.fileName()),
      piece_(std::max(kReadAtOnce / std::max<qint64>(qint64(values.ends_.size()), 1), kSmallestPiece)) {
    if (!file_.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) Fail(file_);
    qint64 begin = 0;
    for (const qint64 end : values.ends_) {
        parts_.push_back({begin, end, {}, 0, {}});
        begin = end;
    }
    for (std::size_t i = 0; i < parts_.size(); ++i)
        if (ReadNext(parts_[i])) waiting_.push_back(i);
    std::ranges::make_heap(waiting_, [this](std::size_t a, std::size_t b) { return ComesLater(a, b); });
}

bool ValueSorter::Reader::ComesLater(std::size_t a, std::size_t b) const {
    const auto key = [this](std::size_t part) {
        const StagedValue& value = parts_[part].value;
        return std::tuple(value.combination, value.source, value.area, value.period, part);
    };
    return key(b) < key(a);
}

/// Has so many bytes of the part ready; false at its end.
bool ValueSorter::Reader::Holds(Part& part, qsizetype bytes) {
    if (part.bytes.size() - part.used >= bytes) return true;
    part.bytes.remove(0, part.used);
    part.used = 0;
    const qint64 wanted = std::min(piece_, part.end - part.at);
    if (wanted > 0 && !file_.seek(part.at)) Fail(file_);
    const QByteArray read = wanted > 0 ? file_.read(wanted) : QByteArray();
    if (read.size() != wanted) Fail(file_);
    part.at += wanted;
    part.bytes += read;
    return part.bytes.size() >= bytes;
}

bool ValueSorter::Reader::ReadNext(Part& part) {
    Record record{};
    if (!Holds(part, sizeof record)) return false;
    std::memcpy(&record, part.bytes.constData() + part.used, sizeof record);
    part.used += sizeof record;
    if (!Holds(part, record.length)) Fail(file_);
    part.value.row = record.row;
    part.value.combination = record.combination;
    part.value.source = record.source;
    part.value.area = record.area;
    part.value.period = record.period;
    part.value.footnote = record.footnote;
    part.value.value.assign(part.bytes.constData() + part.used, record.length);
    part.used += record.length;
    return true;
}

bool ValueSorter::Reader::Next(StagedValue& next) {
    if (waiting_.empty()) return false;
    const auto later = [this](std::size_t a, std::size_t b) { return ComesLater(a, b); };
    std::ranges::pop_heap(waiting_, later);
    Part& part = parts_[waiting_.back()];
    std::swap(next, part.value);
    if (ReadNext(part))
        std::ranges::push_heap(waiting_, later);
    else
        waiting_.pop_back();
    return true;
}

} // namespace tessaro
