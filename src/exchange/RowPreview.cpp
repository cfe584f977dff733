#include "exchange/RowPreview.h"

#include "exchange/AreaTree.h"
#include "session/Strings.h"

#include <algorithm>

namespace tessaro {

namespace {

QString WithReason(Refusal why, const QString& what) {
    return what.isEmpty() ? TextOf(why) : TextOf(why) + QStringLiteral(": ") + what;
}

} // namespace

RowPreview::RowPreview(const QString& base, const QString& suffix, const QString& areaTree)
    : items_(ReadTargetItems(base, suffix)) {
    if (!areaTree.isEmpty()) AddTreeAreas(ReadAreaTree(areaTree), items_);
    matcher_ = std::make_unique<AreaMatcher>(items_.areas, choices_);
}

void RowPreview::UseChoices(const std::vector<AreaChoice>& choices) {
    if (choices == choices_) return;
    choices_ = choices;
    matcher_ = std::make_unique<AreaMatcher>(items_.areas, choices_);
}

void RowPreview::FindArea(const Observation& one, bool makesAreas, PreviewedValue& value) {
    const std::string_view id = one.texts[At(Role::AreaId)];
    const std::string_view name = one.texts[At(Role::AreaName)];
    const AreaMatch match = matcher_->Match(id, name);
    if (match.found == AreaFound::One) {
        const auto area = std::ranges::find(items_.areas, match.number, &TargetArea::number);
        value.texts[At(Role::AreaId)] = QString::fromStdString(area->id);
        value.texts[At(Role::AreaName)] = QString::fromStdString(area->names.front());
        return;
    }
    value.isRefused = match.found != AreaFound::None || !makesAreas;
    const Refusal why = match.found == AreaFound::None      ? Refusal::UnknownArea
                        : match.found == AreaFound::LeftOut ? Refusal::AreaLeftOut
                                                            : Refusal::SharedArea;
    value.remark = value.isRefused ? WithReason(why, ShownText(name.empty() ? id : name))
                                   : PlainText(QStringLiteral("TS_PreviewNewArea"));
}

std::vector<PreviewedValue> RowPreview::Of(const FileSample& sample, const ImportDraft& draft) {
    SampleReader reader(sample);
    Observations observations(reader, draft);
    UseChoices(draft.areas);
    RowRules rules(draft, items_.periods);
    std::vector<PreviewedValue> values;
    for (Observation one; values.size() < kMost && observations.Next(one);) {
        const RowRules::Outcome outcome = rules.Read(one);
        if (outcome == RowRules::Outcome::Empty) continue;
        PreviewedValue& value = values.emplace_back();
        value.row = one.row;
        const bool hasTexts = one.fault == RowFault::None && !one.isRagged;
        for (std::size_t role = 0; role < kRoles && hasTexts; ++role)
            value.texts[role] = ShownText(one.texts[role]);
        if (outcome == RowRules::Outcome::Refused) {
            value.isRefused = true;
            value.remark = WithReason(rules.Why(), QString::fromStdString(rules.What()));
            continue;
        }
        value.texts[At(Role::Time)] = QString::fromStdString(rules.Period());
        value.texts[At(Role::Value)] = QString::fromStdString(rules.Number());
        FindArea(one, draft.makesAreas, value);
    }
    return values;
}

} // namespace tessaro
