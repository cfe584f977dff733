#include "calculate/CalculationDraft.h"

#include "wizards/DraftLines.h"

#include <QStringList>

#include <utility>

namespace tessaro {

namespace {

const QChar kPart(QLatin1Char('|'));

QString TwoParts(const QString& first, const QString& second) {
    return PlainLineText(first) + kPart + PlainLineText(second);
}

/// Both parts of a text; nothing when it has more or less.
std::optional<std::pair<QString, QString>> FromTwoParts(const QString& text) {
    const QStringList parts = text.split(kPart);
    if (parts.size() != 2) return std::nullopt;
    return std::pair(FromPlainLineText(parts[0]), FromPlainLineText(parts[1]));
}

QString ItemText(const CalculationItem& item) {
    return TwoParts(item.indicator, item.subpop);
}

std::optional<CalculationItem> ItemFrom(const QString& text) {
    const auto parts = FromTwoParts(text);
    if (!parts) return std::nullopt;
    return CalculationItem{parts->first, parts->second};
}

QString WeightText(const IndexWeight& weight) {
    return TwoParts(weight.weight, weight.highIsGood ? QStringLiteral("high") : QStringLiteral("low"));
}

std::optional<IndexWeight> WeightFrom(const QString& text) {
    const auto parts = FromTwoParts(text);
    if (!parts || (parts->second != QLatin1String("high") && parts->second != QLatin1String("low")))
        return std::nullopt;
    return IndexWeight{parts->first, parts->second == QLatin1String("high")};
}

QString FactorText(const ConversionFactor& factor) {
    return TwoParts(factor.unit, factor.factor);
}

std::optional<ConversionFactor> FactorFrom(const QString& text) {
    const auto parts = FromTwoParts(text);
    if (!parts) return std::nullopt;
    return ConversionFactor{parts->first, parts->second};
}

/// The wanted levels by their numbers: "1|3".
DraftLine LevelsLine(const char* name, std::array<bool, kAreaLevels>& levels) {
    return OneLine(
        name,
        [&levels] {
            QStringList wanted;
            for (std::size_t i = 0; i < levels.size(); ++i)
                if (levels[i]) wanted << QString::number(i + 1);
            return wanted.join(kPart);
        },
        [&levels](const QString& text) {
            for (const QString& part : text.split(kPart, Qt::SkipEmptyParts)) {
                const int level = part.toInt();
                if (level < 1 || level > kAreaLevels) return false;
                levels[static_cast<std::size_t>(level - 1)] = true;
            }
            return true;
        });
}

DraftLine TypeLine(const char* name, CalcType& type) {
    return ChoiceLine(
        name, {"per cent", "100 minus", "formula", "composite index", "transform unit", "sub-total"},
        [&type] { return static_cast<int>(type); }, [&type](int choice) { type = static_cast<CalcType>(choice); });
}

DraftLines LinesOf(CalculationDraft& draft) {
    return {TypeLine("calculation", draft.type),
            FlagLine("subgroups shown", draft.showSubpop),
            ListLine("item", draft.items, ItemText, ItemFrom),
            ListLine("denominator", draft.denominators, ItemText, ItemFrom),
            ListLine("weight", draft.weights, WeightText, WeightFrom),
            ListLine("factor", draft.factors, FactorText, FactorFrom),
            TextLine("target unit", draft.targetUnit),
            LevelsLine("levels", draft.levels),
            TextLine("formula", draft.formula),
            TextLine("sector", draft.sector),
            TextLine("class", draft.indicatorClass),
            TextLine("indicator", draft.indicator),
            TextLine("unit", draft.unit),
            TextLine("subgroup", draft.subpop),
            TextLine("decimals", draft.decimals),
            TextLine("scale minimum", draft.scaleMin),
            TextLine("scale maximum", draft.scaleMax),
            FlagLine("with data view", draft.saveWithDataView)};
}

} // namespace

QString DraftText(CalculationDraft draft) {
    return WrittenLines(LinesOf(draft));
}

std::optional<CalculationDraft> ReadCalculationDraft(const QString& text) {
    CalculationDraft draft;
    return ReadDraftLines(text, LinesOf(draft)) ? std::optional(std::move(draft)) : std::nullopt;
}

} // namespace tessaro
