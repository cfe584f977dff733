#include "jet/columns/ImageWriter.h"

#include "jet/columns/ImageFormat.h"
#include "jet/columns/MappedFile.h"
#include "jet/columns/WorkWatch.h"
#include "jet/values/Error.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <limits>
#include <sqlite3.h>
#include <sys/file.h>
#include <unistd.h>

namespace jet {

namespace {

[[noreturn]] void FailWriting(const std::string& path) {
    throw Error(ErrorNumber::ReadOnly, "'" + path + "' can't be written: " + std::strerror(errno) + ".");
}

[[noreturn]] void FailUnfit(const std::string& field) {
    throw Error(ErrorNumber::TypeMismatch, "The field '" + field + "' holds values of another type.");
}

/// A file that is written from front to back, and is gone again unless it is kept. It is locked as long as it is being
/// written, so that another process can tell it from one that was left behind.
class NewFile {
  public:
    NewFile(const std::string& path, const std::atomic<bool>& stop) : path_(path), stop_(stop) {
        file_ = ::open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0600);
        if (file_ < 0) FailWriting(path);
        ::flock(file_, LOCK_EX | LOCK_NB);
    }
    ~NewFile() {
        ::close(file_);
        if (!kept_) std::remove(path_.c_str());
    }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    void Put(const void* bytes, std::size_t count) {
        constexpr std::size_t kAtOnce = 4U << 20U;
        const auto* next = static_cast<const char*>(bytes);
        at_ += count;
        while (count > 0) {
            CheckStop();
            const ssize_t done = ::write(file_, next, std::min(count, kAtOnce));
            if (done < 0 && errno == EINTR) continue;
            if (done <= 0) FailWriting(path_);
            next += done;
            count -= static_cast<std::size_t>(done);
        }
    }
    template <class Element> image::Section PutSection(const std::vector<Element>& elements) {
        return PutSection([&](const auto& put) { put(std::span<const Element>(elements)); });
    }
    template <class Element> image::Section PutSection(const RowStore<Element>& elements) {
        return PutSection([&](const auto& put) { elements.EachBlock(put); });
    }
    /// `write` is called with a function that takes the elements, some at a time.
    template <class Write> image::Section PutSection(const Write& write) {
        image::Section section;
        write([&](const auto& elements) {
            if (elements.empty()) return;
            if (section.bytes == 0) section.start = Align();
            Put(elements.data(), elements.size_bytes());
            section.bytes += elements.size_bytes();
        });
        return section;
    }
    void CheckStop() const {
        if (stop_) FailInterrupted();
    }
    void PutHead(image::Head head, const std::vector<image::Entry>& entries) {
        head.bytes = at_;
        Overwrite(entries.data(), entries.size() * sizeof(image::Entry), sizeof(head));
        Overwrite(&head, sizeof(head), 0);
        const MappedFile written(path_);
        if (written.bytes() != at_) throw Error(ErrorNumber::ReadOnly, "'" + path_ + "' was cut.");
        head.sum = image::SumOfFile(written.start(), at_);
        Overwrite(&head, sizeof(head), 0);
    }
    void Keep() { kept_ = true; }

  private:
    std::size_t Align() {
        static constexpr std::array<char, image::kAlignment> kZeros{};
        Put(kZeros.data(), (image::kAlignment - at_ % image::kAlignment) % image::kAlignment);
        return at_;
    }
    void Overwrite(const void* bytes, std::size_t count, std::size_t at) {
        if (::pwrite(file_, bytes, count, static_cast<off_t>(at)) != static_cast<ssize_t>(count)) FailWriting(path_);
    }

    std::string path_;
    const std::atomic<bool>& stop_;
    int file_ = -1;
    std::size_t at_ = 0;
    bool kept_ = false;
};

image::Entry EntryOf(const std::string& name, ColumnForm form) {
    image::Entry entry;
    std::copy_n(name.data(), std::min(name.size(), entry.name.size()), entry.name.data());
    entry.form = static_cast<std::uint8_t>(form);
    return entry;
}

image::Entry PutNumbers(NewFile& file, const std::string& name, const NumberColumn& column) {
    image::Entry entry = EntryOf(name, column.form());
    entry.width = column.width();
    entry.hasNull = column.hasNull() ? 1 : 0;
    entry.first = column.first();
    if (column.form() == ColumnForm::Coded) {
        entry.numbers = file.PutSection(column.numbers());
        entry.counts = file.PutSection(column.counts());
        entry.codes = file.PutSection([&](const auto& put) { column.EachBlockOfCodes(put); });
    }
    if (column.form() == ColumnForm::Plain) entry.plain = file.PutSection(column.plain());
    return entry;
}

image::Entry PutValues(NewFile& file, const std::string& name, const ValueColumn& column) {
    image::Entry entry = EntryOf(name, ColumnForm::Values);
    entry.values = file.PutSection(column.values());
    entry.kinds = file.PutSection(column.kinds());
    entry.textRows = file.PutSection(column.textRows());
    entry.textEnds = file.PutSection(column.textEnds());
    entry.textBytes = file.PutSection(column.textBytes());
    return entry;
}

} // namespace

ImageWriter::ImageWriter(const std::vector<ImageField>& fields, const std::string& folder) {
    for (const ImageField& field : fields)
        columns_.push_back({field, NumberColumn(folder), ValueColumn(folder)});
}

void ImageWriter::AddRow(sqlite3_stmt* row, int from) {
    if (rows_ == std::numeric_limits<std::uint32_t>::max()) throw Error(ErrorNumber::TooLarge, "Too many rows.");
    for (Column& column : columns_) {
        sqlite3_value* const value = sqlite3_column_value(row, from++);
        const int type = sqlite3_value_type(value);
        const bool null = type == SQLITE_NULL;
        if (!null && type != (column.field.isValue ? SQLITE_TEXT : SQLITE_INTEGER)) FailUnfit(column.field.name);
        if (!column.field.isValue) {
            column.numbers.Add(null ? std::nullopt : std::optional(sqlite3_value_int64(value)));
        } else if (null) {
            column.values.Add(std::nullopt);
        } else {
            const auto* const text = reinterpret_cast<const char*>(sqlite3_value_text(value));
            column.values.Add(std::string_view(text, static_cast<std::size_t>(sqlite3_value_bytes(value))));
        }
    }
    ++rows_;
}

void ImageWriter::Write(const std::string& path, const ImageSubject& subject, const FileMark& mark,
                        const std::atomic<bool>& stop) {
    NewFile file(path, stop);
    std::vector<image::Entry> entries(columns_.size());
    const std::vector<unsigned char> room(sizeof(image::Head) + entries.size() * sizeof(image::Entry));
    file.Put(room.data(), room.size());
    entries.clear();
    for (Column& column : columns_) {
        file.CheckStop();
        column.numbers.Finish();
        if (column.field.isValue)
            entries.push_back(PutValues(file, column.field.name, column.values));
        else if (column.numbers.fits())
            entries.push_back(PutNumbers(file, column.field.name, column.numbers));
    }
    image::Head head;
    head.subject = subject.stamp();
    head.mark = mark;
    head.rows = rows_;
    head.columns = entries.size();
    file.PutHead(head, entries);
    file.Keep();
}

} // namespace jet
