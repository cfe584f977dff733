#include "presentation/WizardDraft.h"

#include "wizards/DraftLines.h"

#include <QStringList>

#include <algorithm>
#include <utility>

namespace tessaro {

namespace {

const QChar kPart(QLatin1Char('|'));
constexpr qsizetype kRangeParts = 6;
constexpr qsizetype kPartsOfRange = 3;

DraftLine FieldsLine(const char* name, RowsColumns& arrangement, Placement placement) {
    return OneLine(
        name,
        [&arrangement, placement] {
            QStringList keys;
            for (const PivotField field : placement == Placement::Row ? arrangement.Rows() : arrangement.Columns())
                keys << KeyOf(field);
            return keys.join(kPart);
        },
        [&arrangement, placement](const QString& text) {
            for (const QString& key : text.split(kPart, Qt::SkipEmptyParts)) {
                const auto field = FieldOfKey(key);
                if (!field) return false;
                arrangement.Place(*field, placement);
            }
            return true;
        });
}

QString RecordText(const ColorRanges& record) {
    QStringList parts{PlainLineText(record.IndicatorGId),
                      PlainLineText(record.Indicator),
                      record.MinValue + QLatin1Char(' ') + record.MaxValue,
                      record.Method == RangeMethod::EqualCount ? QStringLiteral("count") : QStringLiteral("size"),
                      record.HighIsGood ? QStringLiteral("high") : QStringLiteral("low"),
                      QString::number(record.Decimals)};
    for (const ValueRange& range : record.Ranges)
        parts << range.From << range.To << QString::number(range.Count);
    return parts.join(kPart);
}

std::optional<ColorRanges> RecordFrom(const QString& text) {
    const QStringList parts = text.split(kPart);
    if (parts.size() != kRangeParts + kPartsOfRange * kRangeCount) return std::nullopt;
    ColorRanges record;
    record.IndicatorGId = FromPlainLineText(parts[0]);
    record.Indicator = FromPlainLineText(parts[1]);
    record.MinValue = parts[2].section(QLatin1Char(' '), 0, 0);
    record.MaxValue = parts[2].section(QLatin1Char(' '), 1);
    record.Method = parts[3] == QLatin1String("size") ? RangeMethod::EqualSize : RangeMethod::EqualCount;
    record.HighIsGood = parts[4] == QLatin1String("high");
    record.Decimals = parts[5].toInt();
    qsizetype at = kRangeParts;
    for (ValueRange& range : record.Ranges) {
        range = {parts[at], parts[at + 1], parts[at + 2].toInt()};
        at += kPartsOfRange;
    }
    return record;
}

/// One line holds all records, parted by blanks, which their texts don't have.
DraftLine RangesLine(const char* name, ValueRanges& ranges) {
    return OneLine(
        name,
        [&ranges] {
            QStringList texts;
            for (const ColorRanges& record : ranges.records)
                texts << QString(RecordText(record)).replace(QLatin1Char(' '), QStringLiteral("%20"));
            return texts.join(QLatin1Char(' '));
        },
        [&ranges](const QString& text) {
            for (const QString& part : text.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
                auto record = RecordFrom(QString(part).replace(QStringLiteral("%20"), QStringLiteral(" ")));
                if (!record) return false;
                ranges.records.push_back(std::move(*record));
            }
            return true;
        });
}

DraftLine ColorsLine(const char* name, ValueRanges& ranges) {
    return OneLine(
        name,
        [&ranges] {
            QStringList names;
            for (const QColor& color : ranges.colors)
                names << color.name();
            return names.join(kPart);
        },
        [&ranges](const QString& text) {
            const QStringList names = text.split(kPart);
            if (names.size() != kRangeCount) return false;
            for (std::size_t i = 0; i < ranges.colors.size(); ++i)
                ranges.colors[i].setNamedColor(names[static_cast<qsizetype>(i)]);
            return std::all_of(ranges.colors.begin(), ranges.colors.end(),
                               [](const QColor& color) { return color.isValid(); });
        });
}

DraftLines LinesOf(TableDraft& draft) {
    TableOptions& options = draft.options;
    return {FieldsLine("rows", draft.arrangement, Placement::Row),
            FieldsLine("columns", draft.arrangement, Placement::Column),
            TextLine("title", options.title),
            TextLine("subtitle", options.subTitle),
            FlagLine("titles typed", draft.titleTyped),
            FontLine("title font", options.titleFont),
            FontLine("subtitle font", options.subTitleFont),
            FontLine("body font", options.bodyFont),
            FlagLine("format", options.formatTable),
            FlagLine("sort", options.sort),
            NumberLine("sort column", options.sortColumn, kMostPivotColumns),
            FlagLine("sort ascending", options.sortAscending),
            FlagLine("color", options.addColor),
            FlagLine("same decimals", options.sameDecimals),
            ColorsLine("colors", options.ranges),
            RangesLine("ranges", options.ranges)};
}

DraftLine KindLine(const char* name, office::ChartKind& kind) {
    return ChoiceLine(
        name, {"column", "bar", "line", "pie", "area", "scatter"}, [&kind] { return static_cast<int>(kind); },
        [&kind](int choice) { kind = static_cast<office::ChartKind>(choice); });
}

DraftLines LinesOf(GraphDraft& draft) {
    GraphOptions& options = draft.options;
    return {FieldsLine("rows", draft.arrangement, Placement::Row),
            FieldsLine("columns", draft.arrangement, Placement::Column),
            KindLine("kind", options.kind),
            FlagLine("kind chosen", draft.kindChosen),
            FlagLine("format", options.formatTable),
            FlagLine("sort", options.sort),
            NumberLine("sort column", options.sortColumn, kMostPivotColumns),
            FlagLine("sort ascending", options.sortAscending)};
}

template <class Draft> QString Written(Draft draft) {
    return WrittenLines(LinesOf(draft));
}

template <class Draft> std::optional<Draft> Read(const QString& text) {
    Draft draft;
    return ReadDraftLines(text, LinesOf(draft)) ? std::optional(std::move(draft)) : std::nullopt;
}

} // namespace

QString DraftText(const TableDraft& draft) {
    return Written(draft);
}

QString DraftText(const GraphDraft& draft) {
    return Written(draft);
}

std::optional<TableDraft> ReadTableDraft(const QString& text) {
    return Read<TableDraft>(text);
}

std::optional<GraphDraft> ReadGraphDraft(const QString& text) {
    return Read<GraphDraft>(text);
}

} // namespace tessaro
