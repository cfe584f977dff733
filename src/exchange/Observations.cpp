#include "exchange/Observations.h"

#include "exchange/ItemNames.h"
#include "exchange/Periods.h"

#include <algorithm>

namespace tessaro {

namespace {

/// Texts of a head row over merged cells stand in the first of them.
void RepeatMerged(std::vector<std::string>& row) {
    for (std::size_t i = 1; i < row.size(); ++i)
        if (row[i].empty()) row[i] = row[i - 1];
}

QString JoinedHead(const TableHeads& heads, std::size_t column) {
    QStringList parts;
    for (const std::vector<std::string>& row : heads.rows)
        if (column < row.size() && !row[column].empty()) parts << QString::fromStdString(row[column]);
    parts.removeDuplicates();
    return parts.isEmpty() ? QString::number(column + 1) : parts.join(QStringLiteral(" / "));
}

/// A text without the apostrophe by which files tell spreadsheets that it is no formula.
std::string_view Unmarked(std::string_view text) {
    const bool isMarked =
        text.size() > 1 && text[0] == '\'' && std::string_view("=+-@").find(text[1]) != std::string_view::npos;
    return isMarked ? text.substr(1) : text;
}

bool HasPeriodAbove(const TableHeads& heads, const ImportDraft& draft, std::size_t column) {
    for (std::size_t row = 0; row < heads.rows.size() && row < draft.headTells.size(); ++row)
        if (draft.headTells[row] == Role::Time && column < heads.rows[row].size() &&
            ReadPeriod(heads.rows[row][column]))
            return true;
    return false;
}

} // namespace

TableHeads ReadHeads(TableReader& reader, const ImportDraft& draft) {
    TableHeads heads;
    TableRow row;
    for (int i = 0; i < draft.skippedRows; ++i)
        if (!reader.Next(row)) return heads;
    std::size_t columns = 0;
    for (int i = 0; i < draft.headRows && reader.Next(row); ++i) {
        std::vector<std::string> texts;
        for (std::size_t field = 0; field < row.count; ++field)
            texts.emplace_back(WithoutBlanks(row.fields[field]));
        columns = std::max(columns, texts.size());
        heads.rows.push_back(std::move(texts));
    }
    for (std::size_t i = 0; i + 1 < heads.rows.size(); ++i) {
        heads.rows[i].resize(columns);
        RepeatMerged(heads.rows[i]);
    }
    for (std::size_t column = 0; column < columns; ++column)
        heads.texts << JoinedHead(heads, column);
    return heads;
}

std::vector<Role> RolesOf(const TableHeads& heads, const ImportDraft& draft) {
    std::vector<Role> roles;
    std::vector<bool> taken(draft.columns.size(), false);
    const bool isWide = draft.ValueColumns() > 1;
    for (qsizetype column = 0; column < heads.texts.size(); ++column) {
        Role role = Role::LeftOut;
        bool known = false;
        for (std::size_t i = 0; i < draft.columns.size() && !known; ++i) {
            if (taken[i] || draft.columns[i].head != heads.texts[column]) continue;
            taken[i] = known = true;
            role = draft.columns[i].role;
        }
        if (!known && isWide && HasPeriodAbove(heads, draft, static_cast<std::size_t>(column))) role = Role::Value;
        roles.push_back(role);
    }
    // Without heads there is nothing to find columns by but their places.
    if (draft.headRows == 0)
        for (const ColumnRole& column : draft.columns)
            roles.push_back(column.role);
    return roles;
}

Observations::Observations(TableReader& reader, const ImportDraft& draft)
    : reader_(reader), lastRow_(draft.lastRow), repeatsAbove_(draft.repeatsAbove) {
    const TableHeads heads = ReadHeads(reader, draft);
    const std::vector<Role> roles = RolesOf(heads, draft);
    columns_ = roles.size();
    for (std::size_t column = 0; column < roles.size(); ++column) {
        if (roles[column] == Role::LeftOut) continue;
        lastUsed_ = column + 1;
        if (roles[column] != Role::Value) {
            tellers_.push_back({column, roles[column], {}});
            continue;
        }
        ValueColumn value{column, {}};
        for (std::size_t row = 0; row < heads.rows.size() && row < draft.headTells.size(); ++row)
            if (column < heads.rows[row].size() && draft.headTells[row] != Role::LeftOut)
                value.heads[At(draft.headTells[row])] = heads.rows[row][column];
        values_.push_back(std::move(value));
    }
    for (std::size_t i = 0; i < kRoles; ++i)
        constants_[i] = draft.constants[i].trimmed().toStdString();
    nextValue_ = values_.size();
}

/// Fewer fields than are needed, or something behind the last head.
bool Observations::IsRagged() const {
    if (row_.count < lastUsed_) return true;
    for (std::size_t field = columns_; field < row_.count; ++field)
        if (!WithoutBlanks(row_.fields[field]).empty()) return true;
    return false;
}

bool Observations::ReadRow(Observation& next) {
    if (values_.empty() || !reader_.Next(row_) || (lastRow_ > 0 && row_.number > lastRow_)) return false;
    ++rows_;
    next.row = row_.number;
    next.column = 0;
    next.fault = row_.fault;
    next.isRagged = row_.fault == RowFault::None && IsRagged();
    nextValue_ = next.fault != RowFault::None || next.isRagged ? values_.size() : 0;
    if (nextValue_ == 0) TellRow();
    return true;
}

/// What a column tells of the row; with merged cells, what the last filled one above does.
std::string_view Observations::Told(Teller& teller) const {
    const std::string_view text = Unmarked(WithoutBlanks(row_.fields[teller.column]));
    if (!repeatsAbove_ || teller.role == Role::Footnote) return text;
    if (!text.empty()) teller.above = text;
    return teller.above;
}

/// Texts of several columns of one role stand behind each other.
void Observations::TellRow() {
    std::array<bool, kRoles> told{};
    for (std::size_t i = 0; i < kRoles; ++i)
        rowTexts_[i] = constants_[i];
    for (Teller& teller : tellers_) {
        const std::string_view text = Told(teller);
        const Role role = teller.role;
        if (text.empty()) continue;
        std::string_view& all = rowTexts_[At(role)];
        if (told[At(role)]) {
            std::string& joined = joined_[At(role)];
            if (all.data() != joined.data()) joined.assign(all);
            joined.append(role == Role::Time ? " " : ", ").append(text);
            all = joined;
        } else {
            all = text;
        }
        told[At(role)] = true;
    }
}

bool Observations::Next(Observation& next) {
    if (nextValue_ == values_.size()) {
        if (!ReadRow(next)) return false;
        if (nextValue_ == values_.size()) return true;
    }
    const ValueColumn& value = values_[nextValue_++];
    next.row = row_.number;
    next.column = value.column;
    next.fault = RowFault::None;
    next.isRagged = false;
    next.texts = rowTexts_;
    for (std::size_t i = 0; i < kRoles; ++i)
        if (!value.heads[i].empty()) next.texts[i] = value.heads[i];
    next.texts[At(Role::Value)] = WithoutBlanks(row_.fields[value.column]);
    return true;
}

} // namespace tessaro
