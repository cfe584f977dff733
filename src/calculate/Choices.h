#pragma once

#include "calculate/CalculationDraft.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace tessaro {

/// What the pages of the calculation wizards offer, from the data in view (`_Data`). A statement that fails is reported
/// and offers nothing.

/// The indicators, or each with its subgroups, in the order of their names.
[[nodiscard]] std::vector<CalculationItem> ItemsToChoose(bool withSubpops);
/// The units that an indicator has values in.
[[nodiscard]] QStringList UnitsOf(const QString& indicator);
/// The number of area levels down to the areas of an indicator's values; 0 without values.
[[nodiscard]] int LevelCountOf(const QString& indicator);
/// The areas of one level, counted from 1, that lie above the areas of an indicator's values or are among them.
[[nodiscard]] int AreasOfLevel(const QString& indicator, int level);

/// What the names of a result are chosen from: those that an item has in the database. The result goes by any others
/// as well.
struct NameChoices {
    QStringList sectors;
    QStringList classes;
    QStringList subpops;
    QStringList units;
};
[[nodiscard]] NameChoices NamesFor(const CalculationItem& item);

/// The names of a result.
struct ResultNames {
    QString sector;
    QString indicatorClass;
    QString indicator;
    QString unit;
    QString subpop;
};
/// What a result is called unless the user says otherwise.
[[nodiscard]] ResultNames SuggestNames(const CalculationDraft& draft, const NameChoices& choices);
/// Puts suggested names where the draft has none, or still the ones that were suggested before.
void TakeSuggestions(CalculationDraft& draft, const ResultNames& before, const ResultNames& now);

/// The items with their subgroups, where one without stands for all of `pairs`; or without them, each indicator once.
[[nodiscard]] std::vector<CalculationItem> WithSubpops(const std::vector<CalculationItem>& items, bool withSubpops,
                                                       const std::vector<CalculationItem>& pairs);
/// Gives each of the draft's items a weight: the one that it had among the items of before, or a blank one.
void KeepWeights(CalculationDraft& draft, const std::vector<CalculationItem>& before);
/// Gives each of the units a factor in the same way.
void KeepFactors(CalculationDraft& draft, const QStringList& units);

} // namespace tessaro
