#include "presentation/ValueRanges.h"

#include "jet/values/Format.h"
#include "session/DisplayValue.h"
#include "session/ErrorSink.h"
#include "session/Query.h"
#include "session/Session.h"
#include "sheets/PaletteSlots.h"
#include "sheets/ValueCells.h"
#include "view/InView.h"

#include <algorithm>
#include <cmath>

namespace tessaro {

namespace {

QString OfIndicator(const QString& gid) {
    return QStringLiteral(" WHERE IUS.IndicatorGId = ") + Quoted(gid) + QLatin1Char(' ');
}

bool Number(const QString& text, double& number) {
    const auto found = NumberOf(text);
    number = found.value_or(0);
    return found.has_value();
}

double ToNumber(const QString& text) {
    return NumberOf(text).value_or(0);
}

/// The step between the end of a range and the start of the next one.
double StepOf(int decimals) {
    return std::pow(10.0, -std::max(decimals, 0));
}

/// Lowest and highest of an indicator's values that read as numbers; for data in which some don't.
void ReadLimits(ColorRanges& record) {
    double lowest = 0;
    double highest = 0;
    bool any = false;
    for (Records values = Select(QStringLiteral("SELECT D.Datavalue ") + QLatin1String(joins::kValueRanges.from) +
                                 OfIndicator(record.IndicatorGId) + AndInView());
         !values.atEnd(); values.MoveNext()) {
        double value = 0;
        if (!Number(values.Text(std::size_t{0}), value)) continue;
        lowest = any ? std::min(lowest, value) : value;
        highest = any ? std::max(highest, value) : value;
        any = true;
    }
    record.MinValue = any ? QString::fromStdString(jet::ShortestText(lowest)) : QString();
    record.MaxValue = any ? QString::fromStdString(jet::ShortestText(highest)) : QString();
}

/// The indicator's values between its limits, rounded to its decimals. In no order: numbers are sorted faster here than
/// in the engine, a million of them in a tenth of the time.
std::vector<double> RoundedValues(const ColorRanges& record, const QString& mask) {
    std::vector<double> found;
    for (Records values = Select(
             QStringLiteral("SELECT iif(D.Datavalue=0,0,cdbl(format(D.Datavalue,'") + mask +
             QStringLiteral("'))) as DataValue ") + QLatin1String(joins::kValueRanges.from) +
             OfIndicator(record.IndicatorGId) + QStringLiteral(" AND  (D.DataValue between cdbl('") + record.MinValue +
             QStringLiteral("') AND cdbl('") + record.MaxValue + QStringLiteral("')) ") + AndInView());
         !values.atEnd(); values.MoveNext())
        found.push_back(values.rows().Get(std::size_t{0}).toDouble());
    return found;
}

} // namespace

QString ValueRange::Text() const {
    return From.isEmpty() && To.isEmpty() ? QString()
                                          : DisplayedValue(From) + QStringLiteral(" - ") + DisplayedValue(To);
}

std::array<QColor, kRangeCount> ValueRanges::DefaultColors() {
    // The file format's own colours of these slots; they are kept exactly.
    return {QColor(0xCC, 0xFF, 0xCC), QColor(0xFF, 0xFF, 0x99), QColor(0xFF, 0xB3, 0xA7)};
}

const ColorRanges* ValueRanges::Find(const QString& indicator) const {
    if (records.size() == 1) return &records.front();
    const auto found = std::find_if(records.begin(), records.end(), [&](const ColorRanges& record) {
        return record.Indicator.compare(indicator, Qt::CaseInsensitive) == 0;
    });
    return found == records.end() ? nullptr : &*found;
}

int ColorRanges::SlotOfRange(int range) const {
    return kFirstRangeSlot + (HighIsGood ? kRangeCount - 1 - range : range);
}

int ColorRanges::SlotOf(double value) const {
    double lowest = 0;
    double highest = 0;
    if (Number(Ranges.front().From, lowest) && value < lowest) return -1;
    if (Number(Ranges.back().To, highest) && value > highest) return -1;
    for (int i = 0; i < kRangeCount; ++i) {
        const ValueRange& range = Ranges[static_cast<std::size_t>(i)];
        double from = 0;
        double to = 0;
        if (Number(range.From, from) && Number(range.To, to) && from <= value && value <= to) return SlotOfRange(i);
    }
    return -1;
}

std::vector<ColorRanges> InitColorRanges() {
    const ErrorTrap trap("InitColorRanges");
    std::vector<ColorRanges> made;
    for (Records rows =
             Select(QStringLiteral("SELECT IUS.[Indicator],IUS.IndicatorGId, Min(D.Datavalue) AS "
                                   "MinOfDatavalue, Max(D.Datavalue) AS MaxOfDatavalue  ") +
                    InView(joins::kValueRanges) + QStringLiteral(" GROUP BY IUS.[Indicator],IUS.IndicatorGId "));
         !rows.atEnd(); rows.MoveNext()) {
        ColorRanges record;
        record.Indicator = rows.Text("Indicator");
        record.IndicatorGId = rows.Text("IndicatorGId");
        record.MinValue = rows.Text("MinOfDatavalue").trimmed();
        record.MaxValue = rows.Text("MaxOfDatavalue").trimmed();
        double number = 0;
        if (!Number(record.MinValue, number) || !Number(record.MaxValue, number)) ReadLimits(record);
        record.Decimals = MaxOfDecimals(record.IndicatorGId);
        GetEqualCountIntervals(record);
        made.push_back(std::move(record));
    }
    return made;
}

void CutRanges(ColorRanges& record) {
    if (record.Method == RangeMethod::EqualCount)
        GetEqualCountIntervals(record);
    else
        GetEqualSizeIntervals(record);
}

std::array<ValueCut, kRangeCount> CutByCount(const std::vector<double>& ascending) {
    std::array<ValueCut, kRangeCount> cuts;
    const int n = static_cast<int>(ascending.size());
    int start = 0;
    for (int i = 0; i < kRangeCount && start < n; ++i) {
        const int left = n - start;
        int end = start + std::max(1, left / (kRangeCount - i));
        while (end < n && ascending[static_cast<std::size_t>(end)] == ascending[static_cast<std::size_t>(end - 1)])
            ++end;
        cuts[static_cast<std::size_t>(i)] = {ascending[static_cast<std::size_t>(start)],
                                             ascending[static_cast<std::size_t>(end - 1)], end - start};
        start = end;
    }
    return cuts;
}

void GetEqualCountIntervals(ColorRanges& record) {
    record.Ranges = {};
    double lowest = 0;
    double highest = 0;
    if (!Number(record.MinValue, lowest) || !Number(record.MaxValue, highest)) return;
    std::vector<double> values =
        RoundedValues(record, record.Decimals == 0 ? QStringLiteral("#") : GetFormatString(record.Decimals));
    // The mask "#" turns a fraction below a half into an empty text, which can't be read as a number.
    if (values.empty() && record.Decimals == 0) values = RoundedValues(record, QStringLiteral("#0"));
    std::sort(values.begin(), values.end());
    const auto cuts = CutByCount(values);
    for (std::size_t i = 0; i < cuts.size(); ++i) {
        if (cuts[i].count == 0) break;
        record.Ranges[i] = {WithDecimals(cuts[i].from, record.Decimals), WithDecimals(cuts[i].to, record.Decimals),
                            cuts[i].count};
        if (i + 1 == cuts.size()) record.Ranges[i].To = WithDecimals(highest, record.Decimals);
    }
}

void GetEqualSizeIntervals(ColorRanges& record) {
    record.Ranges = {};
    double lowest = 0;
    double highest = 0;
    if (!Number(record.MinValue, lowest) || !Number(record.MaxValue, highest)) return;
    const int d = record.Decimals;
    const auto rounded = [d](double value) { return ToNumber(WithDecimals(value, d)); };
    const double min = rounded(lowest);
    const double max = rounded(highest);
    const double r = rounded((max - min) / kRangeCount);
    double from = min;
    double last = min;
    for (int i = 0; i < kRangeCount; ++i) {
        if (i > 0) from = std::min(rounded(last + StepOf(d)), max);
        last = i + 1 == kRangeCount ? max : std::min(rounded(from + r), max);
        ValueRange& range = record.Ranges[static_cast<std::size_t>(i)];
        range.From = WithDecimals(from, d);
        range.To = WithDecimals(last, d);
        // A range with the same limits as the one before it gets no values: they are counted there.
        const bool collapsed = i > 0 && from <= ToNumber(record.Ranges[static_cast<std::size_t>(i - 1)].To);
        range.Count = collapsed ? 0 : GetRangeCount(record, range.From, range.To);
    }
}

int GetRangeCount(const ColorRanges& record, const QString& from, const QString& to) {
    double number = 0;
    if (!Number(from, number) || !Number(to, number)) return 0;
    const Records counts =
        Select(QStringLiteral(" SELECT Count(IUS.IndicatorGId) AS CoutField") + QLatin1String(joins::kRangeCount.from) +
               QStringLiteral(" WHERE (((IUS.IndicatorGId)=") + Quoted(record.IndicatorGId) +
               QStringLiteral(" AND ((D.Datavalue) Between cdbl('") + from.trimmed() +
               QStringLiteral("')  And cdbl('") + to.trimmed() + QStringLiteral("')) AND ((") +
               QLatin1String(kNotTakenOut) + QStringLiteral(") ") + RowFilter + QStringLiteral(")))"));
    return counts.atEnd() ? 0 : static_cast<int>(counts.Number(std::size_t{0}));
}

QString GetFormatString(int decimals) {
    return decimals < 0 ? QStringLiteral("#.0")
                        : QStringLiteral("#0.") + QString(std::min(decimals, kMostDecimals), QLatin1Char('0'));
}

int MaxOfDecimals(const QString& indicatorGId) {
    qsizetype most = 0;
    for (Records values = Select(QStringLiteral("SELECT DISTINCT D.Datavalue ") +
                                 QLatin1String(joins::kValueRanges.from) + OfIndicator(indicatorGId) + AndInView());
         !values.atEnd(); values.MoveNext()) {
        const QString value = values.Text(std::size_t{0}).trimmed();
        const qsizetype point = value.indexOf(QLatin1Char('.'));
        if (point < 0 || !ReadsAsNumber(value)) continue;
        qsizetype end = point + 1;
        while (end < value.size() && value[end].isDigit())
            ++end;
        most = std::max(most, end - point - 1);
    }
    return static_cast<int>(std::min<qsizetype>(most, kMostDecimals));
}

void GetRGB(long colourValue, int& red, int& green, int& blue) {
    blue = static_cast<int>(colourValue / 65536);
    green = static_cast<int>((colourValue - 65536L * blue) / 256);
    red = static_cast<int>(colourValue - 65536L * blue - 256L * green);
}

} // namespace tessaro
