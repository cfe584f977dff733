#include "exchange/ImportCheck.h"

#include "database/Links.h"
#include "database/Schema.h"
#include "exchange/AreaMatcher.h"
#include "exchange/Comparison.h"
#include "exchange/Observations.h"
#include "exchange/OpenSource.h"
#include "formats/ReadError.h"
#include "session/Messages.h"
#include "session/Strings.h"

#include <QFileInfo>

#include <algorithm>
#include <unordered_set>

namespace tessaro {

namespace {

constexpr std::size_t kNearestShown = 5;
constexpr std::size_t kUnknownAreasListed = 2000;
constexpr std::size_t kNamesCompared = 5'000'000;
constexpr int kRowsBetweenProgress = 4096;

/// Reads the file into the stage and notes what can't be taken over.
class Reading final {
  public:
    Reading(CheckedImport& checked, const ImportProgress& progress)
        : checked_(checked), progress_(progress), matcher_(checked.items.areas, checked.draft.areas),
          rules_(checked.draft, checked.items.periods) {}

    void Run() {
        const std::unique_ptr<TableReader> reader = OpenSource(checked_.file, checked_.draft);
        Observations observations(*reader, checked_.draft);
        Observation one;
        for (int count = 0; observations.Next(one); ++count) {
            if (progress_ && count % kRowsBetweenProgress == 0) progress_(reader->Percent() * 6 / 10);
            Take(one);
        }
        checked_.counts.rows = observations.RowsRead();
        ListUnknownAreas();
    }

  private:
    void Refuse(const Observation& one, Refusal why, std::string_view text) {
        ++checked_.counts.refused;
        ++checked_.counts.by[static_cast<std::size_t>(why)];
        if (checked_.refused.size() < CheckedImport::kMostListed)
            checked_.refused.push_back({one.row, one.column, why, ShownText(text)});
    }

    void Take(const Observation& one) {
        const RowRules::Outcome outcome = rules_.Read(one);
        if (outcome == RowRules::Outcome::Refused) return Refuse(one, rules_.Why(), rules_.What());
        if (outcome == RowRules::Outcome::Empty) {
            ++checked_.counts.empty;
            return;
        }
        staged_.row = one.row;
        staged_.value = rules_.Number();
        // Nothing is added to the lists for a value that is refused in the end.
        if (FindArea(one) && TakePeriod(one) && TakeArea(one) && TakeCombination(one) && TakeSource(one))
            checked_.stage->Add(staged_);
    }

    bool TakeNumber(const Observation& one, int number, std::string_view text, int& into) {
        into = number;
        if (number == 0) Refuse(one, Refusal::TooManyNames, text);
        return number != 0;
    }

    bool TakePeriod(const Observation& one) {
        return TakeNumber(one, checked_.items.periods.NumberOf(rules_.Period()), rules_.Period(), staged_.period);
    }

    bool TakeCombination(const Observation& one) {
        TargetItems& items = checked_.items;
        TargetItems::Combination parts;
        const struct {
            Role role;
            ItemNames& names;
            int& number;
        } each[] = {{Role::Indicator, items.indicators, parts.indicator},
                    {Role::Unit, items.units, parts.unit},
                    {Role::Subgroup, items.subgroups, parts.subgroup}};
        for (const auto& part : each) {
            const std::string_view text = one.texts[At(part.role)];
            if (!TakeNumber(one, part.names.NumberOf(text), text, part.number)) return false;
        }
        return TakeNumber(one, items.CombinationOf(parts), {}, staged_.combination);
    }

    bool TakeSource(const Observation& one) {
        const std::string_view source = one.texts[At(Role::Source)];
        if (!TakeNumber(one, checked_.items.sources.NumberOf(source), source, staged_.source)) return false;
        const std::string_view note = one.texts[At(Role::Footnote)];
        staged_.footnote = 0;
        return note.empty() || TakeNumber(one, checked_.items.footnotes.NumberOf(note), note, staged_.footnote);
    }

    /// Its number, or 0 for one that is to be made.
    bool FindArea(const Observation& one) {
        const std::string_view id = one.texts[At(Role::AreaId)];
        const std::string_view name = one.texts[At(Role::AreaName)];
        const std::string_view shown = name.empty() ? id : name;
        const AreaMatch match = matcher_.Match(id, name);
        staged_.area = match.number;
        if (match.found == AreaFound::One) return true;
        if (match.found == AreaFound::None && checked_.draft.makesAreas) return true;
        if (match.found == AreaFound::LeftOut) {
            Refuse(one, Refusal::AreaLeftOut, shown);
        } else {
            const bool isShared = match.found == AreaFound::Several;
            Refuse(one, isShared ? Refusal::SharedArea : Refusal::UnknownArea, shown);
            NoteUnknown(shown, isShared);
        }
        return false;
    }

    bool TakeArea(const Observation& one) {
        if (staged_.area != 0) return true;
        const std::string_view id = one.texts[At(Role::AreaId)];
        const std::string_view name = one.texts[At(Role::AreaName)];
        if (IsLongerThan(id, schema::kLongestName) || IsLongerThan(name, schema::kLongestName)) {
            Refuse(one, Refusal::TooLong, name);
            return false;
        }
        const std::string_view key = id.empty() ? name : id;
        if (!TakeNumber(one, checked_.newAreas.NumberOf(key), key, staged_.area)) return false;
        if (static_cast<std::size_t>(-staged_.area) > checked_.newAreaTexts.size())
            checked_.newAreaTexts.push_back({std::string(id), std::string(name), {}, {}});
        return true;
    }

    void NoteUnknown(std::string_view text, bool isShared) {
        auto found = unknown_.find(text);
        if (found == unknown_.end()) {
            if (unknown_.size() >= kUnknownAreasListed) return;
            found = unknown_.emplace(text, checked_.unknownAreas.size()).first;
            checked_.unknownAreas.push_back({ShownText(text), 0, isShared, {}, {}});
        }
        ++checked_.unknownAreas[found->second].values;
    }

    void ListUnknownAreas() {
        // The work goes with both numbers: in a large database fewer are looked for.
        std::size_t left = kNamesCompared / std::max<std::size_t>(matcher_.Names(), 1) + 20;
        for (UnknownArea& unknown : checked_.unknownAreas) {
            if (left-- == 0) return;
            for (const TargetArea* const area : matcher_.Nearest(unknown.text.toStdString(), kNearestShown)) {
                const QString id = QString::fromStdString(area->id);
                unknown.nearestIds << id;
                unknown.nearest << QString::fromStdString(area->names.front()) + QStringLiteral(" (") + id +
                                       QLatin1Char(')');
            }
        }
    }

    CheckedImport& checked_;
    const ImportProgress& progress_;
    AreaMatcher matcher_;
    StagedValue staged_;
    RowRules rules_;
    TextMap<std::size_t> unknown_;
};

/// Compares the staged values, and lists what changes and what the file has twice.
class Comparing final {
  public:
    Comparing(CheckedImport& checked, const ImportProgress& progress) : checked_(checked), progress_(progress) {}

    void Run(std::int64_t staged) {
        Comparison comparison(*checked_.stage);
        ComparedValue one;
        for (std::int64_t count = 0; comparison.Next(one); ++count) {
            if (progress_ && count % kRowsBetweenProgress == 0)
                progress_(static_cast<int>(70 + count * 30 / std::max<std::int64_t>(staged, 1)));
            Count(one);
        }
        std::ranges::stable_sort(checked_.refused, {}, &RefusedValue::row);
        std::ranges::stable_sort(checked_.changed, {}, &ChangedValue::row);
    }

  private:
    void Count(const ComparedValue& one) {
        ImportCounts& counts = checked_.counts;
        switch (one.state) {
        case ValueState::Fresh:
            ++counts.fresh;
            break;
        case ValueState::Same:
            ++counts.same;
            break;
        case ValueState::Changed:
            ++counts.changed;
            if (checked_.changed.size() < CheckedImport::kMostListed) checked_.changed.push_back(Listed(one));
            break;
        case ValueState::Double:
            ++counts.refused;
            ++counts.by[static_cast<std::size_t>(Refusal::Double)];
            if (checked_.refused.size() < CheckedImport::kMostListed)
                checked_.refused.push_back({one.value.row, 0, Refusal::Double,
                                            FilledText(QStringLiteral("TS_DoubleOf"),
                                                       {ShownText(one.value.value), QString::number(one.firstRow),
                                                        ShownText(one.firstValue)})});
            break;
        }
    }

    [[nodiscard]] ChangedValue Listed(const ComparedValue& one) {
        return {one.value.row, WhatOf(one.value), ShownText(one.existingValue), ShownText(one.value.value)};
    }

    QString WhatOf(const StagedValue& value) {
        if (areaNames_.empty())
            for (const TargetArea& area : checked_.items.areas)
                areaNames_.emplace(area.number, area.names.front());
        const TargetItems& items = checked_.items;
        const TargetItems::Combination parts = items.PartsOf(value.combination);
        QStringList texts;
        for (const std::string& text : {areaNames_[value.area], items.periods.NameOf(value.period),
                                        items.indicators.NameOf(parts.indicator), items.units.NameOf(parts.unit),
                                        items.subgroups.NameOf(parts.subgroup), items.sources.NameOf(value.source)})
            texts << QString::fromStdString(text);
        return texts.join(QStringLiteral("; "));
    }

    CheckedImport& checked_;
    const ImportProgress& progress_;
    std::unordered_map<int, std::string> areaNames_;
};

/// The areas of a tree are found like those of a database, with the numbers of areas that are to be made.
void TakeTree(CheckedImport& checked) {
    if (checked.target.into != ImportInto::Template || checked.draft.areaTree.isEmpty()) return;
    checked.tree = ReadAreaTree(checked.draft.areaTree);
    AddTreeAreas(checked.tree, checked.items);
    for (const TreeArea& area : checked.tree.areas) {
        static_cast<void>(checked.newAreas.NumberOf(area.id));
        checked.newAreaTexts.push_back({area.id, area.name, area.code, area.mapFile});
    }
}

void CheckParent(const CheckedImport& checked) {
    const std::string parent = checked.draft.parentArea.toStdString();
    if (!checked.draft.makesAreas || parent.empty()) return;
    if (std::ranges::find(checked.items.areas, parent, &TargetArea::id) == checked.items.areas.end())
        throw ReadError(QStringLiteral("TS_ImportNoParent"), {checked.draft.parentArea});
}

QStringList Texts(const std::vector<std::string>& names) {
    QStringList texts;
    for (const std::string& name : names)
        texts << QString::fromStdString(name);
    return texts;
}

} // namespace

QString ImportTarget::Suffix() const {
    return SuffixOfLanguage(language);
}

CheckedImport::Mark CheckedImport::MarkOf(const QString& path) {
    const QFileInfo info(path);
    return {info.exists() ? info.size() : -1, info.lastModified()};
}

bool CheckedImport::IsUpToDate() const {
    return fileMark == MarkOf(file) && baseMark == MarkOf(target.base);
}

ImportAdditions CheckedImport::Additions() const {
    ImportAdditions additions{Texts(items.indicators.Made()),
                              Texts(items.units.Made()),
                              Texts(items.subgroups.Made()),
                              Texts(items.sources.Made()),
                              Texts(items.periods.Made()),
                              Texts(newAreas.Made()),
                              static_cast<std::int64_t>(items.footnotes.Made().size())};
    for (std::size_t i = 0; i < newAreaTexts.size(); ++i)
        if (!newAreaTexts[i].name.empty())
            additions.areas[static_cast<qsizetype>(i)] = QString::fromStdString(newAreaTexts[i].name);
    return additions;
}

std::unique_ptr<CheckedImport> CheckImport(const QString& file, const ImportDraft& draft, const ImportTarget& target,
                                           const ImportProgress& progress) {
    auto checked = std::make_unique<CheckedImport>();
    checked->file = file;
    checked->draft = draft;
    checked->target = target;
    checked->fileMark = CheckedImport::MarkOf(file);
    checked->baseMark = CheckedImport::MarkOf(target.base);
    checked->items = ReadTargetItems(target.base, target.Suffix());
    TakeTree(*checked);
    CheckParent(*checked);
    checked->stage = std::make_unique<ImportStage>(target.ComparesValues() ? target.base : QString());
    Reading(*checked, progress).Run();
    checked->stage->Finish();
    if (progress) progress(70);
    Comparing(*checked, progress).Run(checked->counts.rows * std::max(draft.ValueColumns(), 1));
    return checked;
}

} // namespace tessaro
