#include "jet/columns/ColumnImage.h"

#include "jet/columns/ImageFormat.h"
#include "jet/values/Catalogue.h"
#include "jet/values/Error.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <limits>

namespace jet {

namespace {

[[noreturn]] void Refuse(const std::string& why) {
    throw Error(ErrorNumber::NotADatabase, "The column image " + why + ".");
}

/// Hands out the sections of a mapped file, each within its bounds.
class Sections {
  public:
    Sections(const unsigned char* start, std::size_t bytes) : start_(start), bytes_(bytes) {}

    /// The elements of a section, of which there must be `count`.
    template <class Element> std::span<const Element> exactly(const image::Section& section, std::size_t count) const {
        const auto found = all<Element>(section);
        if (found.size() != count) Refuse("has a column of another length");
        return found;
    }
    template <class Element> std::span<const Element> all(const image::Section& section) const {
        if (section.bytes == 0) return {};
        const bool fits = section.start <= bytes_ && section.bytes <= bytes_ - section.start;
        if (!fits || section.start % image::kAlignment != 0 || section.bytes % sizeof(Element) != 0)
            Refuse("has a section beyond its end");
        return {reinterpret_cast<const Element*>(start_ + section.start), section.bytes / sizeof(Element)};
    }

  private:
    const unsigned char* start_;
    std::size_t bytes_;
};

template <class Code> std::vector<CodeBounds> BoundsOf(const unsigned char* codes, std::size_t rows) {
    std::vector<CodeBounds> bounds;
    for (std::size_t from = 0; from < rows; from += kBlockRows) {
        Code least = std::numeric_limits<Code>::max();
        Code greatest = 0;
        for (std::size_t row = from; row < std::min(from + kBlockRows, rows); ++row) {
            Code code = 0;
            std::memcpy(&code, codes + row * sizeof(Code), sizeof(Code));
            least = std::min(least, code);
            greatest = std::max(greatest, code);
        }
        bounds.push_back({least, greatest});
    }
    return bounds;
}

void ReadCoded(ImageColumn& column, const image::Entry& entry, const Sections& sections, std::size_t rows) {
    column.numbers = sections.all<std::int64_t>(entry.numbers);
    column.counts = sections.exactly<std::uint32_t>(entry.counts, column.numbers.size());
    if (column.width != 1 && column.width != 2 && column.width != 4) Refuse("has codes of an unknown width");
    column.codes = sections.exactly<unsigned char>(entry.codes, rows * column.width).data();
    column.blocks = column.width == 1   ? BoundsOf<std::uint8_t>(column.codes, rows)
                    : column.width == 2 ? BoundsOf<std::uint16_t>(column.codes, rows)
                                        : BoundsOf<std::uint32_t>(column.codes, rows);
    for (const CodeBounds& block : column.blocks)
        if (block.greatest >= column.numbers.size()) Refuse("has a code without a number");
}

void ReadValues(ImageColumn& column, const image::Entry& entry, const Sections& sections, std::size_t rows) {
    constexpr auto kFixed = static_cast<std::uint8_t>(ValueKind::FixedPoint);
    column.values = sections.exactly<double>(entry.values, rows);
    column.kinds = sections.exactly<std::uint8_t>(entry.kinds, rows);
    column.textRows = sections.all<std::uint32_t>(entry.textRows);
    column.textEnds = sections.exactly<std::uint64_t>(entry.textEnds, column.textRows.size());
    column.textBytes = sections.all<char>(entry.textBytes);
    std::size_t next = 0;
    for (std::size_t row = 0; row < rows; ++row) {
        const std::uint8_t kind = column.kinds[row];
        if (kind == static_cast<std::uint8_t>(ValueKind::Null) || kind >= kFixed) continue;
        const bool known = kind <= static_cast<std::uint8_t>(ValueKind::OtherForm);
        if (!known || next >= column.textRows.size() || column.textRows[next++] != row) Refuse("misses a text");
    }
    const bool ordered = std::ranges::is_sorted(column.textEnds);
    if (!ordered || (!column.textEnds.empty() && column.textEnds.back() > column.textBytes.size()))
        Refuse("has a text beyond its end");
}

} // namespace

std::uint64_t ImageSubject::stamp() const {
    const std::string both = file + '\n' + table;
    return image::SumOf(reinterpret_cast<const unsigned char*>(both.data()), both.size());
}

std::shared_ptr<const ColumnImage> ColumnImage::Open(const std::string& path, const ImageSubject& subject) {
    std::shared_ptr<ColumnImage> made(new ColumnImage(path));
    made->CheckHead(subject);
    made->ReadColumns();
    if (!made->isIntact()) Refuse("was changed while it was opened");
    return made;
}

void ColumnImage::CheckHead(const ImageSubject& subject) {
    image::Head head;
    if (file_.bytes() < sizeof(head)) Refuse("is cut");
    std::memcpy(static_cast<void*>(&head), file_.start(), sizeof(head));
    if (head.magic != image::kMagic) Refuse("is of another kind");
    if (head.bytes != file_.bytes()) Refuse("is cut");
    if (head.subject != subject.stamp()) Refuse("is of another table");
    if (head.rows > std::numeric_limits<std::uint32_t>::max() || head.columns > image::kMostColumns ||
        file_.bytes() < sizeof(head) + head.columns * sizeof(image::Entry))
        Refuse("is damaged");
    if (image::SumOfFile(file_.start(), file_.bytes()) != head.sum) Refuse("is damaged");
    mark_ = head.mark;
    rows_ = head.rows;
    columns_.resize(head.columns);
}

void ColumnImage::ReadColumns() {
    const Sections sections(file_.start(), file_.bytes());
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        image::Entry entry;
        std::memcpy(static_cast<void*>(&entry), file_.start() + sizeof(image::Head) + i * sizeof(entry), sizeof(entry));
        ImageColumn& column = columns_[i];
        column.name.assign(entry.name.data(), ::strnlen(entry.name.data(), entry.name.size()));
        column.form = static_cast<ColumnForm>(entry.form);
        column.width = entry.width;
        column.hasNull = entry.hasNull != 0;
        column.first = entry.first;
        if (column.form == ColumnForm::Coded) {
            ReadCoded(column, entry, sections, rows_);
            KeepNumbers(column);
        }
        if (column.form == ColumnForm::Plain) column.plain = sections.exactly<std::int64_t>(entry.plain, rows_);
        if (column.form == ColumnForm::Values) ReadValues(column, entry, sections, rows_);
        if (column.form > ColumnForm::Values) Refuse("is damaged");
    }
}

void ColumnImage::KeepNumbers(ImageColumn& column) {
    column.numbers = numbers_.emplace_back(column.numbers.begin(), column.numbers.end());
    column.counts = counts_.emplace_back(column.counts.begin(), column.counts.end());
}

int ColumnImage::find(std::string_view name) const {
    const auto found =
        std::ranges::find_if(columns_, [&](const ImageColumn& column) { return SameName(column.name, name); });
    return found == columns_.end() ? -1 : static_cast<int>(found - columns_.begin());
}

std::string_view ColumnImage::TextOf(const ImageColumn& column, std::size_t row, std::string& room) const {
    constexpr auto kFixed = static_cast<std::uint8_t>(ValueKind::FixedPoint);
    const std::uint8_t kind = column.kinds[row];
    if (kind >= kFixed) {
        constexpr std::size_t kLongest = 64;
        room.resize(kLongest);
        const auto written = std::to_chars(room.data(), room.data() + room.size(), column.values[row],
                                           std::chars_format::fixed, kind - kFixed);
        return {room.data(), static_cast<std::size_t>(written.ptr - room.data())};
    }
    const auto found = std::ranges::lower_bound(column.textRows, static_cast<std::uint32_t>(row));
    if (found == column.textRows.end() || *found != row) return {};
    const auto place = static_cast<std::size_t>(found - column.textRows.begin());
    const std::uint64_t start = place == 0 ? 0 : column.textEnds[place - 1];
    const std::uint64_t end = column.textEnds[place];
    if (end < start || end > column.textBytes.size()) return {}; // the file was changed a moment ago
    return {column.textBytes.data() + start, static_cast<std::size_t>(end - start)};
}

} // namespace jet
