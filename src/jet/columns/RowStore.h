#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

/// Room for a few bytes a row of tables of millions of rows.
namespace jet {

/// A file without a name, which is gone when it is closed, also with the process.
class NamelessFile final {
  public:
    explicit NamelessFile(std::string folder) : folder_(std::move(folder)) {}
    ~NamelessFile();
    NamelessFile(NamelessFile&& other) noexcept;
    NamelessFile& operator=(NamelessFile&& other) noexcept;

    /// Throws Error (ReadOnly) when the folder can't take it.
    void Append(const void* bytes, std::size_t count);
    void Read(std::size_t from, void* bytes, std::size_t count) const;
    [[nodiscard]] std::size_t size() const { return size_; }

  private:
    void Open();

    std::string folder_;
    int file_ = -1; ///< made with the first bytes
    std::size_t size_ = 0;
};

/// Elements that are added one by one and then read from front to back: the last ones stand in memory, all before in a
/// file.
template <class Element> class RowStore final {
  public:
    /// `folder` is where the file is made.
    explicit RowStore(const std::string& folder) : file_(folder) {}

    void Add(Element element) {
        latest_.push_back(element);
        if (latest_.size() == kAtOnce) Spill();
    }
    void Add(std::span<const Element> elements) {
        for (const Element element : elements)
            Add(element);
    }
    [[nodiscard]] std::size_t size() const { return file_.size() / sizeof(Element) + latest_.size(); }
    /// Calls `use` with all elements in their order, some at a time.
    template <class Use> void EachBlock(const Use& use) const {
        std::vector<Element> block(std::min(kAtOnce, file_.size() / sizeof(Element)));
        for (std::size_t at = 0; at < file_.size(); at += block.size() * sizeof(Element)) {
            file_.Read(at, block.data(), block.size() * sizeof(Element)); // it holds whole blocks
            use(std::span<const Element>(block));
        }
        if (!latest_.empty()) use(std::span<const Element>(latest_));
    }

  private:
    static constexpr std::size_t kAtOnce = 65536;

    void Spill() {
        file_.Append(latest_.data(), latest_.size() * sizeof(Element));
        latest_.clear();
    }

    NamelessFile file_;
    std::vector<Element> latest_;
};

} // namespace jet
