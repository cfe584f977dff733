#include "exchange/DraftGuess.h"

#include "exchange/CountryKeys.h"
#include "exchange/HeadWords.h"
#include "exchange/ItemNames.h"
#include "exchange/Observations.h"
#include "exchange/OpenSource.h"
#include "exchange/Periods.h"
#include "exchange/SpellingKey.h"
#include "formats/CsvLook.h"
#include "session/Strings.h"

#include <QFileInfo>

#include <algorithm>
#include <map>
#include <span>

namespace tessaro {

namespace {

using Row = std::vector<std::string>;

constexpr qsizetype kSheetsLookedAt = 5;
constexpr qsizetype kLongestLabel = 200; // of a text above the table

/// A number of any form that isn't a year.
bool LooksLikeValue(const std::string& text) {
    if (ReadPeriod(text)) return false;
    for (const NumberForm form :
         {NumberForm{'.', ','}, NumberForm{',', '.'}, NumberForm{',', ' '}, NumberForm{'.', '\''}})
        if (ReadNumberIn(text, form)) return true;
    return false;
}

bool HasValue(const Row& row) {
    return std::ranges::any_of(row, LooksLikeValue);
}

std::size_t FilledFields(const Row& row) {
    return static_cast<std::size_t>(
        std::ranges::count_if(row, [](const std::string& field) { return !field.empty(); }));
}

/// The fields up to the last filled one.
std::span<const std::string> UpToLastFilled(const Row& row) {
    const auto last = std::find_if(row.rbegin(), row.rend(), [](const std::string& field) { return !field.empty(); });
    return {row.begin(), last.base()};
}

/// Blank fields before the last filled one, as merged cells leave them.
bool HasGaps(const Row& row) {
    return std::ranges::any_of(UpToLastFilled(row), [](const std::string& field) { return field.empty(); });
}

/// Whether heads go on in the row below: merged cells leave gaps, or end before that row does.
bool GoesOnBelow(const Row& heads, const Row& below) {
    return !HasValue(below) && (HasGaps(heads) || UpToLastFilled(heads).size() < UpToLastFilled(below).size());
}

/// A row of heads over merged cells: several texts with blanks between them.
bool IsMergedHead(const Row& row) {
    return FilledFields(row) >= 2 && HasGaps(row) && !HasValue(row);
}

std::size_t UsualFields(const FileSample& sample) {
    std::map<std::size_t, int> rowsOf;
    for (const Row& row : sample.rows)
        ++rowsOf[FilledFields(row)];
    std::size_t usual = 0;
    int most = 0;
    for (const auto& [fields, rows] : rowsOf)
        if (rows >= most) {
            most = rows;
            usual = fields;
        }
    return usual;
}

void GuessHeads(const FileSample& sample, ImportDraft& draft) {
    draft.skippedRows = 0;
    draft.headRows = 0;
    const std::size_t enough = std::max<std::size_t>(UsualFields(sample) * 6 / 10, 2);
    std::size_t at = 0;
    while (at + 1 < sample.rows.size() && FilledFields(sample.rows[at]) < enough && at < 50)
        ++at;
    if (at >= sample.rows.size() || FilledFields(sample.rows[at]) < enough) return;
    if (HasValue(sample.rows[at])) {
        draft.skippedRows = static_cast<int>(at);
        return;
    }
    std::size_t first = at;
    while (first > 0 && IsMergedHead(sample.rows[first - 1]))
        --first;
    while (at - first < 3 && at + 1 < sample.rows.size() && GoesOnBelow(sample.rows[at], sample.rows[at + 1]))
        ++at;
    draft.skippedRows = static_cast<int>(first);
    draft.headRows = static_cast<int>(at - first) + 1;
}

/// What is in a column below its heads.
struct ColumnLook {
    int filled = 0;
    int blanks = 0;      ///< between filled places
    int blanksBelow = 0; ///< below the last filled one
    int values = 0;
    int periods = 0;
    std::vector<std::string> texts;

    [[nodiscard]] bool IsMostly(int count) const { return filled > 0 && count * 10 >= filled * 8; }
};

class ColumnGuess final {
  public:
    ColumnGuess(const FileSample& sample, ImportDraft& draft) : draft_(draft), kinds_(sample.kinds) {
        SampleReader reader(sample);
        heads_ = ReadHeads(reader, draft);
        const auto first = static_cast<std::size_t>(draft.skippedRows + draft.headRows);
        std::size_t columns = static_cast<std::size_t>(heads_.texts.size());
        for (std::size_t row = first; row < sample.rows.size(); ++row)
            columns = std::max(columns, draft.headRows == 0 ? sample.rows[row].size() : columns);
        looks_.resize(columns);
        for (std::size_t row = first; row < sample.rows.size(); ++row)
            for (std::size_t column = 0; column < columns && column < sample.rows[row].size(); ++column)
                Look(sample.rows[row][column], looks_[column]);
    }

    void Run() {
        draft_.columns.clear();
        draft_.headTells.assign(static_cast<std::size_t>(draft_.headRows), Role::LeftOut);
        for (std::size_t column = 0; column < looks_.size(); ++column)
            draft_.columns.push_back({HeadOf(column), Role::LeftOut});
        TakeKinds();
        TakeHeads();
        GuessPeriods();
        GuessValues();
        GuessNames();
        GuessSubgroups();
        GuessAreasAcross();
        GuessDates();
        draft_.repeatsAbove = HasMergedNames();
        std::vector<std::string> numbers;
        for (std::size_t column = 0; column < looks_.size(); ++column)
            if (draft_.columns[column].role == Role::Value)
                numbers.insert(numbers.end(), looks_[column].texts.begin(), looks_[column].texts.end());
        draft_.numbers = FindNumberForm(numbers);
    }

  private:
    static void Look(const std::string& text, ColumnLook& look) {
        if (MeansNoValue(text)) {
            look.blanksBelow += look.filled > 0 && text.empty() ? 1 : 0;
            return;
        }
        look.blanks += look.blanksBelow;
        look.blanksBelow = 0;
        ++look.filled;
        if (ReadPeriod(text))
            ++look.periods;
        else if (LooksLikeValue(text))
            ++look.values;
        if (look.texts.size() < 100) look.texts.push_back(text);
    }

    [[nodiscard]] QString HeadOf(std::size_t column) const {
        const auto place = static_cast<qsizetype>(column);
        return place < heads_.texts.size() ? heads_.texts[place] : QString::number(column + 1);
    }
    [[nodiscard]] bool Has(Role role) const {
        return std::ranges::find(draft_.columns, role, &ColumnRole::role) != draft_.columns.end();
    }
    bool IsFree(std::size_t column) const { return draft_.columns[column].role == Role::LeftOut; }

    [[nodiscard]] bool IsDimension(std::size_t column) const {
        return column < kinds_.size() && kinds_[column] == ColumnKind::Dimension && !IsFrequency(column);
    }
    /// How often values are taken: no text of use.
    [[nodiscard]] bool IsFrequency(std::size_t column) const {
        const QString head = HeadOf(column).toLower();
        return head == QLatin1String("freq") || head == QLatin1String("frequency");
    }

    void TakeKinds() {
        for (std::size_t column = 0; column < std::min(looks_.size(), kinds_.size()); ++column) {
            static constexpr std::array<Role, 6> roles{Role::LeftOut, Role::Time,      Role::AreaName,
                                                       Role::AreaId,  Role::Indicator, Role::LeftOut};
            const Role role = roles[static_cast<std::size_t>(kinds_[column])];
            if (!Has(role)) draft_.columns[column].role = role;
        }
    }

    /// Several columns may tell the subgroup, as sex and age do.
    void TakeHeads() {
        for (std::size_t column = 0; column < looks_.size(); ++column) {
            const Role role = RoleOfHead(draft_.columns[column].head);
            const bool isBlank = role == Role::Value && looks_[column].filled == 0;
            if (IsFree(column) && !isBlank && (!Has(role) || role == Role::Subgroup))
                draft_.columns[column].role = role;
        }
    }

    /// What else a file calls a dimension, unless all it says is "total".
    void GuessSubgroups() {
        for (std::size_t column = 0; column < looks_.size(); ++column) {
            const std::vector<std::string>& texts = looks_[column].texts;
            if (!IsDimension(column) || !IsFree(column) || texts.empty()) continue;
            const bool isOne = std::ranges::count(texts, texts.front()) == std::ssize(texts);
            if (!isOne || !IsTotal(QString::fromStdString(texts.front()))) draft_.columns[column].role = Role::Subgroup;
        }
    }

    void GuessPeriods() {
        // Periods above several columns tell those of their values.
        std::size_t above = 0;
        for (std::size_t column = 0; column < looks_.size(); ++column)
            above += IsFree(column) && PeriodRow(column) > 0 ? 1 : 0;
        if (above > 1) return;
        for (std::size_t column = 0; column < looks_.size() && !Has(Role::Time); ++column)
            if (IsFree(column) && looks_[column].IsMostly(looks_[column].periods) && !PeriodRow(column))
                draft_.columns[column].role = Role::Time;
    }

    /// The head row that has a period above the column, from 1; 0 for none.
    [[nodiscard]] std::size_t PeriodRow(std::size_t column) const {
        for (std::size_t row = 0; row < heads_.rows.size(); ++row)
            if (column < heads_.rows[row].size() && ReadPeriod(heads_.rows[row][column])) return row + 1;
        return 0;
    }

    /// Columns of values: the one that is called so, or those with periods above them, or all with numbers.
    void GuessValues() {
        if (Has(Role::Value)) return;
        std::size_t periodRow = 0;
        for (std::size_t column = 0; column < looks_.size(); ++column)
            if (const std::size_t row = PeriodRow(column); row > 0 && IsFree(column)) {
                draft_.columns[column].role = Role::Value;
                periodRow = row;
            }
        if (periodRow > 0) {
            draft_.headTells[periodRow - 1] = Role::Time;
        } else {
            for (std::size_t column = 0; column < looks_.size(); ++column)
                if (IsFree(column) && looks_[column].IsMostly(looks_[column].values + looks_[column].periods))
                    draft_.columns[column].role = Role::Value;
        }
        TellByHeads(periodRow);
    }

    /// Head rows without periods over columns of values tell the indicator when no column does.
    void TellByHeads(std::size_t periodRow) {
        if (draft_.ValueColumns() == 0 || Has(Role::Indicator)) return;
        for (std::size_t row = 0; row < draft_.headTells.size(); ++row)
            if (row + 1 != periodRow && draft_.headTells[row] == Role::LeftOut)
                draft_.headTells[row] = RoleOfHeadRow(row);
    }

    /// Units and groups of people are known by their words; the first row of others are indicators.
    [[nodiscard]] Role RoleOfHeadRow(std::size_t row) const {
        QStringList texts;
        for (std::size_t column = 0; column < heads_.rows[row].size() && column < draft_.columns.size(); ++column)
            if (draft_.columns[column].role == Role::Value && !heads_.rows[row][column].empty())
                texts << QString::fromStdString(heads_.rows[row][column]);
        if (texts.isEmpty()) return Role::LeftOut;
        for (const Role role : {Role::Unit, Role::Subgroup})
            if (std::ranges::find(draft_.headTells, role) == draft_.headTells.end() &&
                std::ranges::all_of(texts, [role](const QString& text) { return IsWordOf(role, text); }))
                return role;
        const bool hasIndicator = std::ranges::find(draft_.headTells, Role::Indicator) != draft_.headTells.end();
        return hasIndicator ? Role::LeftOut : Role::Indicator;
    }

    /// The first columns of texts are areas, then indicators, when nothing else is.
    void GuessNames() {
        for (const Role role : {Role::AreaName, Role::Indicator}) {
            if (role == Role::AreaName && Has(Role::AreaId)) continue;
            if (Has(role) || std::ranges::find(draft_.headTells, role) != draft_.headTells.end()) continue;
            for (std::size_t column = 0; column < looks_.size(); ++column) {
                const ColumnLook& look = looks_[column];
                if (!IsFree(column) || IsFrequency(column) || look.filled == 0 ||
                    look.IsMostly(look.values + look.periods) ||
                    HeadOf(column).contains(QLatin1String("code"), Qt::CaseInsensitive))
                    continue;
                draft_.columns[column].role = role;
                break;
            }
        }
    }

    /// Every value has an area: when no column tells it, the heads do, if they are countries or if something else
    /// tells the indicator.
    void GuessAreasAcross() {
        if (Has(Role::AreaId) || Has(Role::AreaName) || draft_.ValueColumns() < 2) return;
        for (std::size_t row = 0; row < draft_.headTells.size(); ++row) {
            Role& tells = draft_.headTells[row];
            const bool isFree = tells == Role::Indicator || (tells == Role::LeftOut && Has(Role::Indicator));
            if (!isFree || !(Has(Role::Indicator) || NamesCountry(row))) continue;
            tells = Role::AreaName;
            return;
        }
    }

    [[nodiscard]] bool NamesCountry(std::size_t row) const {
        for (std::size_t column = 0; column < heads_.rows[row].size() && column < draft_.columns.size(); ++column)
            if (draft_.columns[column].role == Role::Value &&
                CountryKeys().contains(SpellingKey(QString::fromStdString(heads_.rows[row][column]))))
                return true;
        return false;
    }

    void GuessDates() {
        std::vector<std::string> texts;
        for (std::size_t column = 0; column < looks_.size(); ++column)
            if (draft_.columns[column].role == Role::Time)
                texts.insert(texts.end(), looks_[column].texts.begin(), looks_[column].texts.end());
        for (std::size_t row = 0; row < draft_.headTells.size(); ++row)
            if (draft_.headTells[row] == Role::Time)
                texts.insert(texts.end(), heads_.rows[row].begin(), heads_.rows[row].end());
        draft_.dates = FindDateTells(texts);
    }

    /// Names of areas, indicators or periods that stand once for the rows below them.
    [[nodiscard]] bool HasMergedNames() const {
        for (std::size_t column = 0; column < looks_.size(); ++column) {
            const Role role = draft_.columns[column].role;
            const bool isName =
                role == Role::AreaId || role == Role::AreaName || role == Role::Indicator || role == Role::Time;
            if (isName && looks_[column].blanks * 3 > looks_[column].filled) return true;
        }
        return false;
    }

    ImportDraft& draft_;
    std::vector<ColumnKind> kinds_;
    TableHeads heads_;
    std::vector<ColumnLook> looks_;
};

/// A name and its text, in two fields or as "Source: Office" in one; nothing in other rows.
std::pair<QString, QString> LabelIn(const Row& row) {
    QStringList texts;
    for (const std::string& field : row)
        if (!field.empty()) texts << QString::fromStdString(field);
    if (texts.isEmpty() || row[0].empty()) return {};
    if (texts.size() == 2) return {texts[0], texts[1]};
    const qsizetype colon = texts.size() == 1 ? texts[0].indexOf(QLatin1Char(':')) : -1;
    if (colon < 1) return {};
    return {texts[0].left(colon).trimmed(), texts[0].mid(colon + 1).trimmed().left(kLongestLabel)};
}

/// Lines above the heads that name a thing and its text, as the program's own data-entry sheet has them.
void TakeLabels(const FileSample& sample, ImportDraft& draft) {
    for (std::size_t row = 0; row < static_cast<std::size_t>(draft.skippedRows) && row < sample.rows.size(); ++row) {
        const auto [label, text] = LabelIn(sample.rows[row]);
        if (label.isEmpty() || text.isEmpty()) continue;
        const Role role = RoleOfHead(label);
        if (role != Role::LeftOut && role != Role::Value && !draft.Has(role)) draft.constants[At(role)] = text;
        if (label == PlainText(QStringLiteral("Comm_Sector"))) draft.sector = text;
        if (label == PlainText(QStringLiteral("Comm_Class"))) draft.indicatorClass = text;
    }
}

/// True when something tells the role in the first rows.
bool IsTold(const FileSample& sample, const ImportDraft& draft, Role role) {
    if (std::ranges::find(draft.headTells, role) != draft.headTells.end()) return true;
    if (!draft.constants[At(role)].isEmpty()) return true;
    const auto first = static_cast<std::size_t>(draft.skippedRows + draft.headRows);
    for (std::size_t column = 0; column < draft.columns.size(); ++column)
        for (std::size_t row = first; row < sample.rows.size() && draft.columns[column].role == role; ++row)
            if (column < sample.rows[row].size() && !sample.rows[row][column].empty()) return true;
    return false;
}

void FillConstants(const QString& file, const FileSample& sample, ImportDraft& draft) {
    const QString name = QFileInfo(file).completeBaseName();
    const auto fill = [&](Role role, const QString& text) {
        if (!IsTold(sample, draft, role)) draft.constants[At(role)] = text;
    };
    fill(Role::Unit, PlainText(QStringLiteral("TS_ImportNumber")));
    fill(Role::Subgroup, PlainText(QStringLiteral("TS_ImportTotal")));
    fill(Role::Source, name);
    if (draft.ValueColumns() > 0) fill(Role::Indicator, name);
    if (draft.sector.isEmpty()) draft.sector = PlainText(QStringLiteral("TS_ImportSector"));
    if (draft.indicatorClass.isEmpty()) draft.indicatorClass = name;
}

} // namespace

void GuessColumns(const FileSample& sample, ImportDraft& draft) {
    if (draft.kind == FileKind::Csv || draft.kind == FileKind::Workbook) GuessHeads(sample, draft);
    GuessHeadedColumns(sample, draft);
}

void GuessHeadedColumns(const FileSample& sample, ImportDraft& draft) {
    ColumnGuess(sample, draft).Run();
}

ImportDraft GuessDraft(const QString& file, const QString& sheet) {
    ImportDraft draft;
    draft.kind = KindOf(file);
    draft.sheet = sheet;
    if (draft.kind == FileKind::Csv) draft.csv = FindCsvForm(file);
    const FileSample sample = SampleOf(*OpenSource(file, draft));
    GuessColumns(sample, draft);
    TakeLabels(sample, draft);
    FillConstants(file, sample, draft);
    return draft;
}

ImportDraft GuessDraftOfSheets(const QString& file, const QStringList& sheets) {
    ImportDraft first = GuessDraft(file);
    if (first.ValueColumns() > 0) return first;
    for (const QString& sheet : sheets.mid(1, kSheetsLookedAt - 1))
        if (ImportDraft draft = GuessDraft(file, sheet); draft.ValueColumns() > 0) return draft;
    return first;
}

} // namespace tessaro
