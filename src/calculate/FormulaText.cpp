#include "calculate/FormulaText.h"

#include "calculate/FormulaParser.h"
#include "calculate/LogParts.h"
#include "calculate/Numbers.h"
#include "jet/values/Collation.h"
#include "session/DisplayValue.h"
#include "session/Messages.h"
#include "session/Query.h"
#include "session/Strings.h"

#include <array>

namespace tessaro {

namespace {

using Braces = ParsedFormula::Braces;

/// The values of the references in each area.
using ValuesOfAreas = QHash<QString, std::vector<std::optional<double>>>;

QString PairsOf(const std::vector<CalculationItem>& items) {
    QStringList pairs;
    for (const CalculationItem& item : items)
        pairs << PairKey(item.indicator, item.subpop);
    return BracketedList(pairs);
}

FormulaCheck Refused(const FormulaFault& fault) {
    return {QStringLiteral("109"), fault.reason, fault.position, fault.length, {}};
}

/// Reads with and without braces as brackets: a formula must be one both ways.
std::optional<ParsedFormula> Parsed(const QString& text, const FormulaSubject& subject, Braces wanted,
                                    FormulaFault& fault) {
    std::optional<ParsedFormula> formulas[2];
    for (const Braces braces : {Braces::AreBrackets, Braces::ArePassedOver}) {
        formulas[braces == wanted ? 0 : 1] = ParsedFormula::Parse(text, subject.items, braces, fault);
        if (!formulas[braces == wanted ? 0 : 1]) return std::nullopt;
    }
    if (formulas[0]->References().empty()) {
        fault = {PlainText(QStringLiteral("TS_FormulaNoReference")), 0, static_cast<int>(text.size())};
        return std::nullopt;
    }
    return std::move(formulas[0]);
}

int PlaceOf(const std::vector<CalculationItem>& items, const QString& indicator, const QString& subpop) {
    const auto found =
        std::ranges::find_if(items, [&](const CalculationItem& item) { return IsOfItem(item, indicator, subpop); });
    return found == items.end() ? -1 : static_cast<int>(found - items.begin());
}

/// The first value that `_Data` has of each; `unreadable` gets a sentence about one that is no number.
ValuesOfAreas FirstValues(const std::vector<CalculationItem>& references, QString& unreadable) {
    ValuesOfAreas values;
    Records rows = Select(QStringLiteral("Select AreaId, [Indicator], Subpop, Datavalue From _Data Where [Indicator] + "
                                         "'{}' + Subpop In ") +
                              PairsOf(references),
                          jet::CursorType::ForwardOnly);
    for (; !rows.atEnd(); rows.MoveNext()) {
        auto& own = values[AreaKey(rows.Text(std::size_t{0}))];
        own.resize(references.size());
        const int place = PlaceOf(references, rows.Text(std::size_t{1}), rows.Text(std::size_t{2}));
        if (place < 0 || own[static_cast<std::size_t>(place)]) continue;
        const auto number = NumberOf(ToDotDecimal(rows.Text(std::size_t{3})));
        if (!number && unreadable.isEmpty())
            unreadable = ReasonOfFailure(QStringLiteral("_Data"),
                                         QStringLiteral("Where [Indicator] + '{}' + Subpop In ") + PairsOf(references));
        own[static_cast<std::size_t>(place)] = number;
    }
    return values;
}

/// The number as people read it.
QString Shown(double number) {
    return QString::fromStdString(jet::DecimalText(number));
}

QString ReasonOf(const FormulaValue& value, const std::vector<CalculationItem>& references) {
    const QString missing = value.missing < 0 ? QString() : NameOf(references[static_cast<std::size_t>(value.missing)]);
    return FilledText(QLatin1String(value.reasonKey), {missing});
}

/// Fills in an area's result or reason. False when there is none although no value is missing.
bool Compute(FormulaArea& area, const ParsedFormula& formula, const ValuesOfAreas& values) {
    const std::size_t count = formula.References().size();
    const auto found = values.find(AreaKey(area.id));
    const FormulaValue value =
        formula.Evaluate(found == values.end() ? std::vector<std::optional<double>>(count) : *found);
    if (value.number)
        area.result = Shown(*value.number);
    else
        area.reason = ReasonOf(value, formula.References());
    return value.number || value.missing >= 0;
}

/// The rank of a row in the rule that picks one record: time, source, unit.
using Rank = std::array<std::string, 3>;

bool IsHigher(const Rank& a, const Rank& b) {
    for (std::size_t i = 0; i < a.size(); ++i)
        if (const int order = jet::CompareText(a[i], b[i]); order != 0) return order > 0;
    return false;
}

/// The values that the one-record rule picks in some areas; rows of the same rank add up, as in the calculation.
ValuesOfAreas PickedValues(const std::vector<CalculationItem>& references, const QStringList& areaIds) {
    ValuesOfAreas values;
    QHash<QString, Rank> ranks;
    Records rows =
        Select(QStringLiteral("Select AreaId, [Indicator], Subpop, Datavalue, TimePeriod, [Source], [Unit] From "
                              "_Data Where AreaId In %1 And [Indicator] + '{}' + Subpop In %2")
                   .arg(BracketedList(areaIds), PairsOf(references)),
               jet::CursorType::ForwardOnly);
    for (; !rows.atEnd(); rows.MoveNext()) {
        const QString key = AreaKey(rows.Text(std::size_t{0}));
        auto& own = values[key];
        own.resize(references.size());
        const int place = PlaceOf(references, rows.Text(std::size_t{1}), rows.Text(std::size_t{2}));
        if (place < 0) continue;
        Rank rank;
        for (std::size_t i = 0; i < rank.size(); ++i)
            rank[i] = rows.Text(4 + i).toStdString();
        const QString rankKey = PairKey(key, QString::number(place));
        const auto held = ranks.find(rankKey);
        if (held != ranks.end() && IsHigher(*held, rank)) continue;
        auto& value = own[static_cast<std::size_t>(place)];
        const auto number = NumberOf(rows.Text(std::size_t{3}));
        const bool same = held != ranks.end() && !IsHigher(rank, *held);
        value = same && value && number ? *value + *number : number;
        ranks.insert(rankKey, rank);
    }
    return values;
}

} // namespace

QString FormulaReference(const QString& indicator, const QString& subpop) {
    return QLatin1Char('{') + indicator + QLatin1String(kReferenceJoiner) + subpop + QLatin1Char('}');
}

FormulaSubject ReadFormulaSubject() {
    FormulaSubject subject;
    Records items =
        Select(QStringLiteral("Select Distinct [Indicator], Subpop From _Data Order By [Indicator], Subpop"));
    for (; !items.atEnd(); items.MoveNext())
        subject.items.push_back({items.Text(std::size_t{0}).trimmed(), items.Text(std::size_t{1}).trimmed()});
    Records areas = Select(QStringLiteral("Select distinct AreaId,AreaName From _Data;"));
    for (; !areas.atEnd(); areas.MoveNext())
        subject.areas.push_back({areas.Text(std::size_t{0}).trimmed(), areas.Text(std::size_t{1}).trimmed(), {}, {}});
    return subject;
}

FormulaCheck Validate(const QString& text, const FormulaSubject& subject) {
    FormulaFault fault;
    const auto formula = Parsed(text, subject, Braces::ArePassedOver, fault);
    if (!formula) return Refused(fault);
    FormulaCheck check{QStringLiteral("108"), {}, -1, 0, subject.areas};
    const ValuesOfAreas values = FirstValues(formula->References(), check.reason);
    for (FormulaArea& area : check.areas) {
        if (!Compute(area, *formula, values) && check.reason.isEmpty())
            check.reason = FilledText(QStringLiteral("TS_FormulaArea"), {area.name, area.reason});
        if (area.result == QLatin1String("0")) area.result.clear();
    }
    if (!check.reason.isEmpty()) check.key = QStringLiteral("109");
    return check;
}

FormulaCheck PreviewFormula(const QString& text, const FormulaSubject& subject, int areas) {
    FormulaFault fault;
    const auto formula = Parsed(text, subject, Braces::AreBrackets, fault);
    if (!formula) return Refused(fault);
    FormulaCheck check{QStringLiteral("108"), {}, -1, 0, subject.areas};
    check.areas.resize(std::min(check.areas.size(), static_cast<std::size_t>(std::max(areas, 0))));
    QStringList ids;
    for (const FormulaArea& area : check.areas)
        ids << area.id;
    if (ids.isEmpty()) return check;
    const ValuesOfAreas values = PickedValues(formula->References(), ids);
    for (FormulaArea& area : check.areas)
        static_cast<void>(Compute(area, *formula, values));
    return check;
}

} // namespace tessaro
