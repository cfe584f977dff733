#pragma once

#include <QColor>
#include <QString>
#include <QStringList>

#include <array>
#include <vector>

/// Cuts an indicator's values into three ranges, each with a colour.
namespace tessaro {

constexpr int kRangeCount = 3;

enum class RangeMethod { EqualCount, EqualSize };

/// One range of values. Limits are texts with "." as decimal point; empty when the range holds nothing.
struct ValueRange {
    QString From;
    QString To;
    int Count = 0;

    /// "from - to", as it is displayed.
    [[nodiscard]] QString Text() const;
    bool operator==(const ValueRange&) const = default;
};

/// The three ranges of one indicator.
struct ColorRanges {
    QString IndicatorGId;
    QString Indicator;
    QString MinValue;
    QString MaxValue;
    RangeMethod Method = RangeMethod::EqualCount;
    bool HighIsGood = true;
    int Decimals = 0;
    std::array<ValueRange, kRangeCount> Ranges;

    /// The palette slot of a value, from FirstRangeSlot on, by the range that holds it (turned round when high values
    /// are good); -1 outside them all.
    [[nodiscard]] int SlotOf(double value) const;
    /// The slot of a range, counted from 0.
    [[nodiscard]] int SlotOfRange(int range) const;
    bool operator==(const ColorRanges&) const = default;
};

/// The ranges of all indicators, and the colours of their slots.
struct ValueRanges {
    std::vector<ColorRanges> records;
    std::array<QColor, kRangeCount> colors = DefaultColors();

    [[nodiscard]] static std::array<QColor, kRangeCount> DefaultColors();
    /// The record of an indicator's name; the only one whatever the name, when there is just one. nullptr for none.
    [[nodiscard]] const ColorRanges* Find(const QString& indicator) const;
    bool operator==(const ValueRanges&) const = default;
};

/// A record for each indicator of the selection, cut by equal count. Empty when the selection has no values.
[[nodiscard]] std::vector<ColorRanges> InitColorRanges();
void GetEqualCountIntervals(ColorRanges& record);
void GetEqualSizeIntervals(ColorRanges& record);
/// One of the two, by the record's method.
void CutRanges(ColorRanges& record);
/// The number of values from one limit to the other, both included; 0 when a limit is no number.
[[nodiscard]] int GetRangeCount(const ColorRanges& record, const QString& from, const QString& to);

/// "#0." and that many "0"; "#.0" for a negative number.
[[nodiscard]] QString GetFormatString(int decimals);
/// The most decimal places that the indicator's values have, at most MostDecimals.
[[nodiscard]] int MaxOfDecimals(const QString& indicatorGId);
/// Red, green and blue of a colour number (blue high).
void GetRGB(long colourValue, int& red, int& green, int& blue);

/// Where ascending values are cut into three ranges of equal count: first and last value and number of values of each.
/// Equal values are never parted, so a range may take more than its share and later ones may stay without any.
struct ValueCut {
    double from = 0;
    double to = 0;
    int count = 0;
};
[[nodiscard]] std::array<ValueCut, kRangeCount> CutByCount(const std::vector<double>& ascending);

} // namespace tessaro
