#pragma once

#include "exchange/StagedValue.h"

#include <QByteArray>
#include <QFile>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace tessaro {

/// Sorts any number of values by what they belong to (combination, source, area, period), those of one key in the order
/// in which they came. Parts of a fixed size are sorted in memory and written one behind the other to a file, which
/// goes with the object; reading merges them. Throws ReadError when the disk is full.
class ValueSorter final {
  public:
    /// `most`: values that are sorted at once.
    explicit ValueSorter(const QString& path, std::size_t most = 250'000);
    ~ValueSorter();
    ValueSorter(const ValueSorter&) = delete;
    ValueSorter& operator=(const ValueSorter&) = delete;

    void Add(const StagedValue& value);
    /// Ends the adding.
    void Finish();

    /// Goes over the values in their order. Several may stand side by side.
    class Reader final {
      public:
        explicit Reader(const ValueSorter& values);
        bool Next(StagedValue& next);

      private:
        struct Part {
            qint64 at = 0; ///< in the file
            qint64 end = 0;
            QByteArray bytes;
            qsizetype used = 0;
            StagedValue value;
        };
        [[nodiscard]] bool Holds(Part& part, qsizetype bytes);
        [[nodiscard]] bool ReadNext(Part& part);
        [[nodiscard]] bool ComesLater(std::size_t a, std::size_t b) const;

        QFile file_;
        qint64 piece_;
        std::vector<Part> parts_;
        std::vector<std::size_t> waiting_; ///< a heap of parts, the one whose value comes next in front
    };

  private:
    /// A value while it is sorted; its text lies in texts_.
    struct Entry {
        std::uint64_t upper; ///< combination and source, so that they compare as one number
        std::uint64_t lower; ///< area and period
        std::int64_t row;
        int footnote;
        std::uint32_t text;
    };
    void WritePart();

    QFile file_;
    std::size_t most_;
    std::vector<Entry> entries_;
    QByteArray texts_; ///< each with its length before it
    std::vector<qint64> ends_;
};

} // namespace tessaro
