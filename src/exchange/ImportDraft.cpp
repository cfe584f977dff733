#include "exchange/ImportDraft.h"

#include "session/Messages.h"
#include "session/Strings.h"

#include <algorithm>

namespace tessaro {

namespace {

const std::vector<const char*> kKindNames{"csv", "workbook", "px", "json-stat"};
const std::vector<const char*> kDateNames{"day", "month", "year"};
constexpr std::array<const char*, kRoles> kRoleNames{"left-out", "time",     "area-id", "area-name", "indicator",
                                                     "unit",     "subgroup", "source",  "value",     "footnote"};
constexpr std::array<const char*, kRoles> kRoleCaptions{
    "TS_RoleLeftOut", "Comm_Time", "Comm_Area Id", "Comm_Area Name", "Comm_Indicator",
    "Comm_Unit",      "Subpop",    "Comm_Source",  "Comm_Datavalue", "TS_RoleFootnote"};

std::optional<Role> RoleNamed(const QString& name) {
    for (int i = 0; i < kRoles; ++i)
        if (name == QLatin1String(kRoleNames[static_cast<std::size_t>(i)])) return static_cast<Role>(i);
    return std::nullopt;
}

QString NameOf(const Role& role) {
    return QLatin1String(kRoleNames[At(role)]);
}

// "time=Year": neither part can hold the sign between them.
QString ColumnText(const ColumnRole& column) {
    return NameOf(column.role) + QLatin1Char(';') + PlainLineText(column.head);
}

std::optional<ColumnRole> ColumnFrom(const QString& text) {
    const std::optional<Role> role = RoleNamed(text.section(QLatin1Char(';'), 0, 0));
    if (!role || !text.contains(QLatin1Char(';'))) return std::nullopt;
    return ColumnRole{FromPlainLineText(text.section(QLatin1Char(';'), 1)), *role};
}

QString ChoiceText(const AreaChoice& choice) {
    return PlainLineText(choice.areaId) + QLatin1Char(';') + PlainLineText(choice.text);
}

std::optional<AreaChoice> ChoiceFrom(const QString& text) {
    if (!text.contains(QLatin1Char(';'))) return std::nullopt;
    return AreaChoice{FromPlainLineText(text.section(QLatin1Char(';'), 1)),
                      FromPlainLineText(text.section(QLatin1Char(';'), 0, 0))};
}

/// A single sign, or none; of the plain ones, as files have them between fields and within numbers.
DraftLine SignLine(const char* name, char& sign) {
    return OneLine(
        name, [&sign] { return sign == '\0' ? QString() : PlainLineText(QString(QLatin1Char(sign))); },
        [&sign](const QString& text) {
            const QString read = FromPlainLineText(text);
            sign = read.isEmpty() ? '\0' : read.front().toLatin1();
            return read.size() <= 1 && (read.isEmpty() || (sign > 0 && sign != '"' && sign != '\n' && sign != '\r'));
        });
}

DraftLine BytesLine(const char* name, QByteArray& bytes) {
    return OneLine(
        name, [&bytes] { return QString::fromLatin1(bytes); },
        [&bytes](const QString& text) {
            bytes = text.toLatin1();
            return true;
        });
}

DraftLines LinesOf(ImportDraft& draft) {
    DraftLines lines{
        ChoiceLine(
            "kind", kKindNames, [&draft] { return static_cast<int>(draft.kind); },
            [&draft](int kind) { draft.kind = static_cast<FileKind>(kind); }),
        BytesLine("encoding", draft.csv.encoding),
        SignLine("delimiter", draft.csv.delimiter),
        SignLine("decimal", draft.numbers.decimal),
        SignLine("thousands", draft.numbers.thousands),
        TextLine("sheet", draft.sheet),
        NumberLine("skipped-rows", draft.skippedRows, kMostRows),
        NumberLine("head-rows", draft.headRows, 100),
        NumberLine("last-row", draft.lastRow, kMostRows),
        ListLine<Role>("head-tells", draft.headTells, NameOf, RoleNamed),
        ListLine<ColumnRole>("column", draft.columns, ColumnText, ColumnFrom),
        ChoiceLine(
            "dates", kDateNames, [&draft] { return static_cast<int>(draft.dates); },
            [&draft](int dates) { draft.dates = static_cast<DateTells>(dates); }),
        FlagLine("repeats-above", draft.repeatsAbove),
        TextLine("sector", draft.sector),
        TextLine("class", draft.indicatorClass),
        FlagLine("makes-areas", draft.makesAreas),
        TextLine("parent-area", draft.parentArea),
        TextLine("area-tree", draft.areaTree),
        ListLine<AreaChoice>("area", draft.areas, ChoiceText, ChoiceFrom),
    };
    static constexpr std::array<const char*, kRoles> constants{
        nullptr,    "all-time",     "all-area-id", "all-area-name", "all-indicator",
        "all-unit", "all-subgroup", "all-source",  nullptr,         "all-footnote"};
    for (std::size_t i = 0; i < kRoles; ++i)
        if (constants[i] != nullptr) lines.push_back(TextLine(constants[i], draft.constants[i]));
    return lines;
}

} // namespace

QString CaptionOf(Role role) {
    return PlainText(QLatin1String(kRoleCaptions[At(role)]));
}

int ImportDraft::ValueColumns() const {
    return static_cast<int>(std::ranges::count(columns, Role::Value, &ColumnRole::role));
}

bool ImportDraft::Has(Role role) const {
    return std::ranges::find(columns, role, &ColumnRole::role) != columns.end() ||
           std::ranges::find(headTells, role) != headTells.end() || !constants[At(role)].trimmed().isEmpty();
}

QString WrittenDraft(const ImportDraft& draft) {
    ImportDraft copy = draft;
    return WrittenLines(LinesOf(copy));
}

bool ReadDraft(const QString& text, ImportDraft& draft) {
    ImportDraft read;
    if (!text.contains(QLatin1String("kind=")) || !ReadDraftLines(text, LinesOf(read))) return false;
    draft = std::move(read);
    return true;
}

QString ProblemOf(const ImportDraft& draft) {
    for (const Role role : {Role::Value, Role::Time, Role::Indicator, Role::Unit, Role::Subgroup, Role::Source})
        if (!draft.Has(role)) return FilledText(QStringLiteral("TS_ImportLacks"), {CaptionOf(role)});
    if (!draft.Has(Role::AreaId) && !draft.Has(Role::AreaName))
        return FilledText(QStringLiteral("TS_ImportLacks"), {CaptionOf(Role::AreaName)});
    return {};
}

} // namespace tessaro
