#include "database/JetFile.h"

#include "jet/values/Catalogue.h"

#include <algorithm>
#include <clocale>
#include <mdbtools.h>

namespace tessaro {

namespace {

constexpr std::size_t kLongestText = 4096; // 255 characters in UTF-8, and room
constexpr std::size_t kLongestMemo = 1024 * 1024;

struct TableCloser {
    void operator()(MdbTableDef* table) const { mdb_free_tabledef(table); }
};
using Table = std::unique_ptr<MdbTableDef, TableCloser>;

MdbColumn* ColumnAt(const MdbTableDef& table, unsigned position) {
    return static_cast<MdbColumn*>(g_ptr_array_index(table.columns, position));
}

bool HasMemo(const MdbTableDef& table) {
    for (unsigned i = 0; i < table.num_cols; ++i)
        if (ColumnAt(table, i)->col_type == MDB_MEMO) return true;
    return false;
}

/// A column as it is read: where the library puts its text.
struct BoundColumn {
    int type = MDB_TEXT;
    std::vector<char> buffer;
    int length = 0;
    bool exists = false;
    std::string rewritten; ///< the text where it differs from the library's
};

JetFile::Field FieldOf(BoundColumn& column) {
    const std::string_view text(column.buffer.data(), static_cast<std::size_t>(std::max(column.length, 0)));
    if (!column.exists || column.type == MDB_OLE || column.type == MDB_BINARY) return {};
    if (column.type == MDB_BOOL) return {text == "0" ? "0" : "-1", false};
    if (text.empty()) return {};
    if (column.type == MDB_REPID) {
        column.rewritten = "{" + std::string(text) + "}";
        return {column.rewritten, false};
    }
    return {text, false};
}

std::vector<BoundColumn> BindColumns(MdbHandle* file, MdbTableDef& table, const std::vector<std::string>& names) {
    const std::size_t size = HasMemo(table) ? kLongestMemo : kLongestText;
    mdb_set_bind_size(file, size);
    std::vector<BoundColumn> bound(names.size());
    for (std::size_t n = 0; n < names.size(); ++n) {
        for (unsigned i = 0; i < table.num_cols && !bound[n].exists; ++i) {
            const MdbColumn* column = ColumnAt(table, i);
            if (!jet::SameName(column->name, names[n])) continue;
            bound[n].type = column->col_type;
            bound[n].buffer.resize(size);
            bound[n].exists = true;
            mdb_bind_column(&table, static_cast<int>(i) + 1, bound[n].buffer.data(), &bound[n].length);
        }
    }
    return bound;
}

/// The library prints numbers as the thread's locale has them; the copy wants them with a point.
class PlainNumbers final {
  public:
    PlainNumbers() : plain_(::newlocale(LC_NUMERIC_MASK, "C", ::duplocale(LC_GLOBAL_LOCALE))) {
        before_ = ::uselocale(plain_);
    }
    ~PlainNumbers() {
        ::uselocale(before_);
        ::freelocale(plain_);
    }
    PlainNumbers(const PlainNumbers&) = delete;
    PlainNumbers& operator=(const PlainNumbers&) = delete;

  private:
    locale_t plain_;
    locale_t before_;
};

} // namespace

struct JetFile::Impl {
    MdbHandle* file = nullptr;

    [[nodiscard]] MdbCatalogEntry* Find(std::string_view name) const {
        for (unsigned i = 0; file != nullptr && i < file->num_catalog; ++i) {
            auto* entry = static_cast<MdbCatalogEntry*>(g_ptr_array_index(file->catalog, i));
            if (entry->object_type == MDB_TABLE && mdb_is_user_table(entry) && jet::SameName(entry->object_name, name))
                return entry;
        }
        return nullptr;
    }
    /// The definition of a table with its columns; nothing when there is none, or it can't be read.
    [[nodiscard]] Table Read(std::string_view name) const {
        MdbCatalogEntry* entry = Find(name);
        Table table(entry == nullptr ? nullptr : mdb_read_table(entry));
        if (table && mdb_read_columns(table.get()) == nullptr) table.reset();
        return table;
    }
};

JetFile::JetFile(const std::string& path) : impl_(std::make_unique<Impl>()) {
    impl_->file = mdb_open(path.c_str(), MDB_NOFLAGS);
    if (impl_->file == nullptr) return;
    mdb_set_date_fmt(impl_->file, "%Y-%m-%d %H:%M:%S");
    mdb_set_shortdate_fmt(impl_->file, "%Y-%m-%d %H:%M:%S");
    mdb_set_boolean_fmt_numbers(impl_->file);
    mdb_set_repid_fmt(impl_->file, MDB_NOBRACES_4_2_2_2_6);
    if (mdb_read_catalog(impl_->file, MDB_TABLE) == nullptr) {
        mdb_close(impl_->file);
        impl_->file = nullptr;
    }
}

JetFile::~JetFile() {
    if (impl_->file != nullptr) mdb_close(impl_->file);
}

bool JetFile::isOpen() const {
    return impl_->file != nullptr;
}

bool JetFile::HasTable(std::string_view name) const {
    return impl_->Find(name) != nullptr;
}

std::vector<JetFile::TextColumn> JetFile::TextColumns(std::string_view name) const {
    std::vector<TextColumn> columns;
    const Table table = impl_->Read(name);
    const int bytes = impl_->file != nullptr && IS_JET3(impl_->file) ? 1 : 2; // of a character
    for (unsigned i = 0; table && i < table->num_cols; ++i) {
        const MdbColumn* column = ColumnAt(*table, i);
        if (column->col_type == MDB_TEXT) columns.push_back({column->name, std::max(column->col_size / bytes, 1)});
        if (column->col_type == MDB_MEMO) columns.push_back({column->name, 0});
    }
    return columns;
}

std::vector<std::string> JetFile::Columns(std::string_view name) const {
    std::vector<std::string> names;
    const Table table = impl_->Read(name);
    for (unsigned i = 0; table && i < table->num_cols; ++i)
        names.emplace_back(ColumnAt(*table, i)->name);
    return names;
}

std::int64_t JetFile::RowCount(std::string_view name) const {
    const Table table = impl_->Read(name);
    return table ? static_cast<std::int64_t>(table->num_rows) : 0;
}

bool JetFile::ReadRows(std::string_view name, const std::vector<std::string>& columns,
                       const std::function<bool(const std::vector<Field>&)>& take) const {
    const PlainNumbers numbers;
    const Table table = impl_->Read(name);
    if (!table) return false;
    mdb_rewind_table(table.get());
    std::vector<BoundColumn> bound = BindColumns(impl_->file, *table, columns);
    std::vector<Field> row(columns.size());
    while (mdb_fetch_row(table.get()) != 0) {
        for (std::size_t i = 0; i < bound.size(); ++i)
            row[i] = FieldOf(bound[i]);
        if (!take(row)) return false;
    }
    return true;
}

} // namespace tessaro
