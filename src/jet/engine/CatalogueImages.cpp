#include "jet/engine/LiveCatalogue.h"

#include <algorithm>
#include <cstdint>

/// The part of the catalogue that knows which tables have column images.
namespace jet {

namespace {

/// What an image can hold of a table.
std::vector<ImageField> FieldsOf(const TableInfo& table) {
    constexpr std::size_t kMostFields = 32;
    std::vector<ImageField> fields;
    for (const ColumnInfo& column : table.columns) {
        const bool value = KindOfColumn(column.name, column.type) == CompareKind::ValueText;
        const bool whole =
            column.type == ColumnType::Long || column.type == ColumnType::Integer || column.type == ColumnType::Counter;
        if ((value || whole) && fields.size() < kMostFields) fields.push_back({column.name, value});
    }
    return fields;
}

} // namespace

unsigned LiveCatalogue::version() const {
    return version_ + (images_ == nullptr ? 0 : images_->version());
}

void LiveCatalogue::UseImages(std::shared_ptr<ColumnImages> images) {
    images_ = std::move(images);
    ++version_;
}

ImageSubject LiveCatalogue::SubjectOf(const TableInfo& table) const {
    const char* const path = sqlite3_db_filename(database_, table.database.c_str());
    return {path == nullptr ? "" : path, table.sourceTable};
}

// The number of the last row is found at once, and never less than that of the rows. It is asked for once for each
// state of the file: to compile the question takes longer than to see that the file is the same.
std::int64_t LiveCatalogue::LeastRowsOf(const TableInfo& table, const FileMark& mark) const {
    const std::int64_t known = rowsOnRecord(table);
    if (known >= images_->leastRows()) return known;
    const std::string source = QuotedName(table.database) + "." + QuotedName(table.sourceTable);
    Counted& counted = counted_[source];
    if (counted.mark == mark) return counted.rows;
    try {
        counted.rows = Rows(database_, "SELECT max(rowid) FROM " + source)[0][0].toInteger();
    } catch (const Error&) {
        counted.rows = 0; // a table without row numbers
    }
    counted.mark = mark;
    return counted.rows;
}

// The working tables of a file that keeps links change all the time.
std::shared_ptr<const ColumnImage> LiveCatalogue::image(const TableInfo& table) const {
    if (images_ == nullptr || (keepsLinks_ && table.database == "main")) return nullptr;
    const auto mark = FileMark::Of(database_, table.database);
    if (!mark || LeastRowsOf(table, *mark) < images_->leastRows()) return nullptr;
    return images_->Want({SubjectOf(table), *mark, FieldsOf(table)});
}

std::size_t LiveCatalogue::imageStamp(std::string_view name) const {
    const TableInfo* const table = images_ == nullptr ? nullptr : find(name);
    if (table == nullptr) return 0;
    constexpr std::size_t kAskAgain = 1; // the stamp of no image
    const ImageSubject subject = SubjectOf(*table);
    if (images_->isToBeWantedAgain(subject)) return kAskAgain;
    return std::hash<std::shared_ptr<const ColumnImage>>{}(images_->find(subject));
}

void LiveCatalogue::NoteUnfit(const std::string& why, bool stale) {
    images_->CountUnfit();
    if (!stale) return;
    images_->Log(why);
    for (const auto& entry : entries_)
        if (entry->read) images_->Drop(SubjectOf(entry->table));
    ++version_;
}

} // namespace jet
