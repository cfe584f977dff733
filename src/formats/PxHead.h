#pragma once

#include "formats/TextFile.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace tessaro {

/// Reads a text sign by sign.
class SignReader final {
  public:
    explicit SignReader(std::unique_ptr<TextSource> text) : text_(std::move(text)) {}
    /// The next sign; '\0' at the end.
    [[nodiscard]] char Peek();
    char Take();
    void SkipBlanks();
    /// What stands up to the closing quotation mark; the opening one was taken. Throws ReadError beyond kLongestField.
    void TakeQuoted(std::string& text);
    [[nodiscard]] std::int64_t Line() const { return line_; }
    [[nodiscard]] int Percent() const { return text_->Percent(); }

  private:
    std::unique_ptr<TextSource> text_;
    std::string piece_;
    std::size_t at_ = 0;
    std::int64_t line_ = 1;
};

/// A variable of a PX file with its values, and their codes where it has them.
struct PxVariable {
    std::string name;
    std::vector<std::string> values;
    std::vector<std::string> codes;
    bool isTime = false;
    bool isArea = false;
    bool isContents = false; ///< its values are what is counted
    bool isKey = false;      ///< its values stand in the data before the numbers
};

/// What a PX file says before its data.
struct PxHead {
    std::vector<PxVariable> variables; ///< those of the rows, then those of the columns
    std::size_t rowVariables = 0;
    std::string contents;
    std::string units;
    std::map<std::string, std::string> unitsOf; ///< of values of the variable of contents
    std::string source;
    std::map<std::vector<std::string>, std::string> cellNotes; ///< by the values of all variables in their order

    [[nodiscard]] bool IsKeyed() const;
};

/// Reads up to the data. Texts in other languages than the file's first are left out. Throws ReadError.
[[nodiscard]] PxHead ReadPxHead(SignReader& signs, const QString& path);
/// The encoding that a PX file names, or else looks like.
[[nodiscard]] QByteArray EncodingOfPx(const QString& path);

} // namespace tessaro
