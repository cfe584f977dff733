#include "calculate/Choices.h"

#include "calculate/CalculationSteps.h"
#include "session/Query.h"
#include "session/Strings.h"

#include <algorithm>

namespace tessaro {

namespace {

constexpr int kLevelLength = 3; ///< characters of an area's ID for each level

void AddOnce(QStringList& list, const QString& text) {
    if (!text.isEmpty() && !list.contains(text, Qt::CaseInsensitive)) list << text;
}

/// The texts of the first column.
QStringList TextsOf(Records rows) {
    QStringList texts;
    for (; !rows.atEnd(); rows.MoveNext())
        AddOnce(texts, rows.Text(std::size_t{0}));
    return texts;
}

} // namespace

std::vector<CalculationItem> ItemsToChoose(bool withSubpops) {
    std::vector<CalculationItem> items;
    const QString columns = withSubpops ? QStringLiteral("[Indicator], Subpop") : QStringLiteral("[Indicator]");
    for (Records rows = Select(QStringLiteral("SELECT DISTINCT %1 FROM _Data ORDER BY %1").arg(columns)); !rows.atEnd();
         rows.MoveNext())
        items.push_back({rows.Text(std::size_t{0}), withSubpops ? rows.Text(std::size_t{1}) : QString()});
    return items;
}

QStringList UnitsOf(const QString& indicator) {
    return TextsOf(
        Select(QStringLiteral("SELECT Distinct [Unit] From _Data Where [Indicator] = %1").arg(Quoted(indicator))));
}

int LevelCountOf(const QString& indicator) {
    const Records rows =
        Select(QStringLiteral("Select len(AreaId)  From _Data  where [Indicator] = %1").arg(Quoted(indicator)));
    return rows.atEnd() ? 0 : std::min(static_cast<int>(rows.Number(std::size_t{0})) / kLevelLength, kAreaLevels);
}

int AreasOfLevel(const QString& indicator, int level) {
    int count = 0;
    for (Records rows = Select(QStringLiteral("SELECT DISTINCT Mid(AreaId, 1, %1) FROM _Data WHERE [Indicator] = %2 "
                                              "AND Len(AreaId) >= %1")
                                   .arg(level * kLevelLength)
                                   .arg(Quoted(indicator)));
         !rows.atEnd(); rows.MoveNext())
        ++count;
    return count;
}

NameChoices NamesFor(const CalculationItem& item) {
    NameChoices names;
    QString where = QStringLiteral(" WHERE D.[Indicator] = ") + Quoted(item.indicator);
    if (!item.subpop.isEmpty()) where += QStringLiteral(" AND D.Subpop = ") + Quoted(item.subpop);
    for (Records rows = Select(
             QStringLiteral("SELECT DISTINCT S1.SectorLabel1, S2.SectorLabel2  FROM _Data AS D INNER JOIN "
                            "((Indicator_Sector AS I_S INNER JOIN SectorLabel2 AS S2  ON I_S.SectorLabel2GId = "
                            "S2.SectorLabel2GId) INNER JOIN (Sector AS S INNER JOIN SectorLabel1  AS S1 ON "
                            "S.SectorLabel1GId = S1.SectorLabel1GId) ON S2.SectorLabel2GId = S.SectorLabel2GId)  ON "
                            "D.IndicatorGId = I_S.IndicatorGId") +
             where);
         !rows.atEnd(); rows.MoveNext()) {
        AddOnce(names.sectors, rows.Text(std::size_t{0}));
        AddOnce(names.classes, rows.Text(std::size_t{1}));
    }
    names.subpops = TextsOf(Select(QStringLiteral("SELECT DISTINCT D.Subpop FROM _Data AS D") + where));
    names.units = TextsOf(Select(QStringLiteral("SELECT DISTINCT D.Unit FROM _Data AS D") + where));
    return names;
}

namespace {

/// The name that an indicator's result has unless the user gives it another one.
QString SuggestedIndicator(const CalculationDraft& draft) {
    switch (draft.type) {
    case CalcType::PerCent:
        return PlainText(QStringLiteral("PERCENT"));
    case CalcType::CompositeIndex:
        return PlainText(QStringLiteral("LOG_INDEX"));
    case CalcType::TransformUnit:
    case CalcType::Subtotal:
        return draft.items.empty() ? QString() : draft.items.front().indicator;
    case CalcType::HundredMinus:
    case CalcType::Formula:
        break;
    }
    return {};
}

QString SuggestedUnit(const CalculationDraft& draft, const NameChoices& choices) {
    if (draft.type == CalcType::PerCent || draft.type == CalcType::CompositeIndex) return SuggestedIndicator(draft);
    return draft.type == CalcType::TransformUnit ? QString() : choices.units.value(0);
}

} // namespace

ResultNames SuggestNames(const CalculationDraft& draft, const NameChoices& choices) {
    return {choices.sectors.value(0), choices.classes.value(0), SuggestedIndicator(draft),
            SuggestedUnit(draft, choices), AsksForSubpop(draft.type) ? choices.subpops.value(0) : QString()};
}

void TakeSuggestions(CalculationDraft& draft, const ResultNames& before, const ResultNames& now) {
    const auto take = [](QString& name, const QString& suggestedBefore, const QString& suggested) {
        if (name.trimmed().isEmpty() || name == suggestedBefore) name = suggested;
    };
    take(draft.sector, before.sector, now.sector);
    take(draft.indicatorClass, before.indicatorClass, now.indicatorClass);
    take(draft.indicator, before.indicator, now.indicator);
    take(draft.unit, before.unit, now.unit);
    take(draft.subpop, before.subpop, now.subpop);
}

std::vector<CalculationItem> WithSubpops(const std::vector<CalculationItem>& items, bool withSubpops,
                                         const std::vector<CalculationItem>& pairs) {
    std::vector<CalculationItem> changed;
    const auto add = [&](const CalculationItem& item) {
        if (std::find(changed.begin(), changed.end(), item) == changed.end()) changed.push_back(item);
    };
    for (const CalculationItem& item : items) {
        if (!withSubpops)
            add({item.indicator, {}});
        else if (!item.subpop.isEmpty())
            add(item);
        else
            for (const CalculationItem& pair : pairs)
                if (pair.indicator == item.indicator) add(pair);
    }
    return changed;
}

void KeepWeights(CalculationDraft& draft, const std::vector<CalculationItem>& before) {
    std::vector<IndexWeight> weights(draft.items.size());
    for (std::size_t i = 0; i < draft.items.size(); ++i) {
        const auto known = std::find(before.begin(), before.end(), draft.items[i]) - before.begin();
        if (known < static_cast<std::ptrdiff_t>(draft.weights.size()))
            weights[i] = draft.weights[static_cast<std::size_t>(known)];
    }
    draft.weights = std::move(weights);
}

void KeepFactors(CalculationDraft& draft, const QStringList& units) {
    std::vector<ConversionFactor> factors;
    for (const QString& unit : units) {
        const auto known = std::find_if(draft.factors.begin(), draft.factors.end(),
                                        [&](const ConversionFactor& one) { return one.unit == unit; });
        factors.push_back({unit, known == draft.factors.end() ? QString() : known->factor});
    }
    draft.factors = std::move(factors);
}

} // namespace tessaro
