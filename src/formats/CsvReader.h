#pragma once

#include "formats/TableReader.h"
#include "formats/TextFile.h"

#include <memory>

namespace tessaro {

/// How a text file stands for a table.
struct CsvForm {
    QByteArray encoding = "UTF-8";
    char delimiter = ',';

    bool operator==(const CsvForm&) const = default;
};

/// Reads separated values: fields between quotation marks may hold delimiters, line ends and doubled marks; a mark
/// within a field that doesn't begin with one is a sign like any other. Lines end as any system ends them.
class CsvReader final : public TableReader {
  public:
    CsvReader(std::unique_ptr<TextSource> text, char delimiter) : text_(std::move(text)), delimiter_(delimiter) {}
    bool Next(TableRow& row) override;
    [[nodiscard]] int Percent() const override { return text_->Percent(); }

  private:
    enum class After { Field, Row, End };

    bool Fill();
    bool ReadRow(TableRow& row);
    After ReadField(TableRow& row);
    bool ReadQuoted(std::string& field, TableRow& row);
    After ReadPlain(std::string& field);
    After EndLine(char end);

    std::unique_ptr<TextSource> text_;
    char delimiter_;
    std::string piece_;
    std::size_t at_ = 0;
    bool isPieceBad_ = false; ///< the piece has signs that stand for unreadable bytes
    bool mayBeBad_ = false;   ///< one of the pieces that the row lies in has
    std::int64_t line_ = 1;
    bool stopped_ = false;
    bool passesNewline_ = false; ///< the "\n" of "\r\n" is still to come
    std::string left_;           ///< takes what a row has beyond kMostFields
};

} // namespace tessaro
