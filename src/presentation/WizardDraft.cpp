#include "presentation/WizardDraft.h"

#include <QStringList>
#include <QUrl>

#include <algorithm>
#include <functional>

namespace tessaro {

namespace {

const QChar kPart(QLatin1Char('|'));
constexpr qsizetype kRangeParts = 6;
constexpr qsizetype kPartsOfRange = 3;

QString Plain(const QString& text) {
    return QString::fromLatin1(QUrl::toPercentEncoding(text, " "));
}

QString FromPlain(const QString& text) {
    return QUrl::fromPercentEncoding(text.toLatin1());
}

/// Writes a value as text, and reads it back; False when the text is none.
struct Line {
    const char* name;
    std::function<QString()> write;
    std::function<bool(const QString&)> read;
};
using Lines = std::vector<Line>;

Line TextLine(const char* name, QString& value) {
    return {name, [&value] { return Plain(value); },
            [&value](const QString& text) {
                value = FromPlain(text);
                return true;
            }};
}

Line FlagLine(const char* name, bool& value) {
    return {name, [&value] { return value ? QStringLiteral("yes") : QStringLiteral("no"); },
            [&value](const QString& text) {
                value = text == QLatin1String("yes");
                return value || text == QLatin1String("no");
            }};
}

Line NumberLine(const char* name, int& value, int most) {
    return {name, [&value] { return QString::number(value); },
            [&value, most](const QString& text) {
                bool good = false;
                value = text.toInt(&good);
                return good && value >= 0 && value <= most;
            }};
}

QString FontText(const SheetFont& font) {
    return QStringList{Plain(font.name), QString::number(font.size), font.bold ? QStringLiteral("bold") : QString(),
                       font.italic ? QStringLiteral("italic") : QString()}
        .join(kPart);
}

Line FontLine(const char* name, SheetFont& font) {
    return {name, [&font] { return FontText(font); },
            [&font](const QString& text) {
                const QStringList parts = text.split(kPart);
                bool good = false;
                font = {FromPlain(parts.value(0)), parts.value(1).toDouble(&good), !parts.value(2).isEmpty(),
                        !parts.value(3).isEmpty()};
                return good && parts.size() == 4;
            }};
}

Line FieldsLine(const char* name, RowsColumns& arrangement, Placement placement) {
    return {name,
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
            }};
}

QString RecordText(const ColorRanges& record) {
    QStringList parts{Plain(record.IndicatorGId),
                      Plain(record.Indicator),
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
    if (parts.size() != kRangeParts + kPartsOfRange * RangeCount) return std::nullopt;
    ColorRanges record;
    record.IndicatorGId = FromPlain(parts[0]);
    record.Indicator = FromPlain(parts[1]);
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
Line RangesLine(const char* name, ValueRanges& ranges) {
    return {name,
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
            }};
}

Line ColorsLine(const char* name, ValueRanges& ranges) {
    return {name,
            [&ranges] {
                QStringList names;
                for (const QColor& color : ranges.colors)
                    names << color.name();
                return names.join(kPart);
            },
            [&ranges](const QString& text) {
                const QStringList names = text.split(kPart);
                if (names.size() != RangeCount) return false;
                for (std::size_t i = 0; i < ranges.colors.size(); ++i)
                    ranges.colors[i].setNamedColor(names[static_cast<qsizetype>(i)]);
                return std::all_of(ranges.colors.begin(), ranges.colors.end(),
                                   [](const QColor& color) { return color.isValid(); });
            }};
}

Lines LinesOf(TableDraft& draft) {
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
            NumberLine("sort column", options.sortColumn, MostPivotColumns),
            FlagLine("sort ascending", options.sortAscending),
            FlagLine("color", options.addColor),
            FlagLine("same decimals", options.sameDecimals),
            ColorsLine("colors", options.ranges),
            RangesLine("ranges", options.ranges)};
}

constexpr const char* kKinds[] = {"column", "bar", "line", "pie", "area", "scatter"};

Line KindLine(const char* name, office::ChartKind& kind) {
    return {name, [&kind] { return QString::fromLatin1(kKinds[static_cast<std::size_t>(kind)]); },
            [&kind](const QString& text) {
                for (std::size_t i = 0; i < std::size(kKinds); ++i) {
                    kind = static_cast<office::ChartKind>(i);
                    if (text == QLatin1String(kKinds[i])) return true;
                }
                return false;
            }};
}

Lines LinesOf(GraphDraft& draft) {
    GraphOptions& options = draft.options;
    return {FieldsLine("rows", draft.arrangement, Placement::Row),
            FieldsLine("columns", draft.arrangement, Placement::Column),
            KindLine("kind", options.kind),
            FlagLine("kind chosen", draft.kindChosen),
            FlagLine("format", options.formatTable),
            FlagLine("sort", options.sort),
            NumberLine("sort column", options.sortColumn, MostPivotColumns),
            FlagLine("sort ascending", options.sortAscending)};
}

template <class Draft> QString Written(Draft draft) {
    QString text;
    for (const Line& line : LinesOf(draft))
        text += QLatin1String(line.name) + QLatin1Char('=') + line.write() + QLatin1Char('\n');
    return text;
}

template <class Draft> std::optional<Draft> Read(const QString& text) {
    Draft draft;
    const Lines known = LinesOf(draft);
    for (const QString& line : text.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        const qsizetype at = line.indexOf(QLatin1Char('='));
        if (at < 1) return std::nullopt;
        for (const Line& one : known)
            if (line.left(at) == QLatin1String(one.name) && !one.read(line.mid(at + 1))) return std::nullopt;
    }
    return draft;
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
