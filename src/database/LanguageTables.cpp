#include "database/LanguageTables.h"

#include "database/Schema.h"
#include "jet/engine/BulkLoad.h"
#include "jet/values/Collation.h"
#include "session/ErrorSink.h"
#include "session/Session.h"

#include <algorithm>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace tessaro {

namespace {

using Row = std::vector<jet::Value>;

/// A table that stands once for each language: the column that tells its items apart in all of them, and the columns
/// whose texts are of the language.
struct LanguageTable {
    std::string name;
    std::string key;
    std::vector<std::string> texts;
};

const std::vector<LanguageTable>& LanguageTables() {
    static const std::vector<LanguageTable> tables = {
        {"Area", "AreaID", {"AreaName"}},
        {"CF", "CFGId", {"CFLabel1", "Info"}},
        {"ConventionLabel1", "ConventionLabel1GId", {"ConventionLabel1"}},
        {"ConventionLabel2", "ConventionLabel2GId", {"ConventionLabel2"}},
        {"ConventionLabel3", "ConventionLabel3GId", {"ConventionLabel3", "Info"}},
        {"Footnote", "FootNoteNId", {"FootNote"}},
        {"GoalLabel1", "GoalLabel1GId", {"GoalLabel1"}},
        {"GoalLabel2", "GoalLabel2GId", {"GoalLabel2"}},
        {"GoalLabel3", "GoalLabel3GId", {"GoalLabel3", "Info"}},
        {"Indicator", "IndicatorGId", {"Indicator", "Info"}},
        {"InstitutionLabel1", "InstitutionLabel1GId", {"InstitutionLabel1"}},
        {"InstitutionLabel2", "InstitutionLabel2GId", {"InstitutionLabel2"}},
        {"SectorLabel1", "SectorLabel1GId", {"SectorLabel1"}},
        {"SectorLabel2", "SectorLabel2GId", {"SectorLabel2"}},
        {"Source", "SourceGId", {"Source", "Info"}},
        {"Subpop", "SubpopGId", {"Subpop"}},
        {"Theme", "ThemeGId", {"ThemeLabel1", "Info"}},
        {"Unit", "UnitGId", {"Unit"}},
    };
    return tables;
}

/// Codes become parts of table names.
bool IsLanguageCode(const QString& code) {
    return !code.isEmpty() && code.size() <= 10 && std::ranges::all_of(code, [](QChar c) {
        return (c.unicode() < 128 && c.isLetterOrNumber()) || c == QLatin1Char('-') || c == QLatin1Char('_');
    });
}

bool IsSessionLanguage(const TargetDatabase& target, const QString& code) {
    return target.suffix().mid(1).compare(code, Qt::CaseInsensitive) == 0;
}

std::string NameIn(const LanguageTable& table, const QString& code) {
    return table.name + "_" + code.toStdString();
}

std::string ColumnList(const std::vector<std::string>& columns) {
    std::string list;
    for (const std::string& column : columns)
        list += (list.empty() ? "[" : ", [") + column + "]";
    return list;
}

std::vector<Row> RowsOf(jet::Connection& connection, const std::string& table,
                        const std::vector<std::string>& columns) {
    return connection.OpenRecordset("SELECT " + ColumnList(columns) + " FROM [" + table + "]").GetRows();
}

/// The texts that a database has in one language, by the folded key of the item. None when it lacks the table.
std::unordered_map<std::string, Row> TextsOf(jet::Connection& connection, const LanguageTable& table,
                                             const QString& code) {
    std::vector<std::string> columns{table.key};
    columns.insert(columns.end(), table.texts.begin(), table.texts.end());
    std::unordered_map<std::string, Row> texts;
    ErrorTrap("CopyLanguageTables").Try([&] {
        for (Row& row : RowsOf(connection, NameIn(table, code), columns)) {
            const std::string key = jet::Folded(row[0].toText());
            row.erase(row.begin());
            texts.try_emplace(key, std::move(row));
        }
    });
    return texts;
}

std::vector<std::string> ColumnsOf(jet::Connection& connection, const std::string& table) {
    std::vector<std::string> names;
    if (const jet::TableInfo* const found = connection.catalogue().find(table))
        for (const jet::ColumnInfo& column : found->columns)
            names.push_back(column.name);
    return names;
}

std::size_t PlaceOf(const std::vector<std::string>& columns, const std::string& name) {
    const auto found =
        std::ranges::find_if(columns, [&](const std::string& column) { return jet::SameName(column, name); });
    return static_cast<std::size_t>(found - columns.begin());
}

/// The column of a table's own numbers; empty when it has none.
std::string NumberColumn(jet::Connection& connection, const std::string& table) {
    for (const jet::ColumnInfo& column : connection.catalogue().find(table)->columns)
        if (column.type == jet::ColumnType::Counter) return column.name;
    return {};
}

/// The items that a table has, by their keys and by their numbers.
class Items final {
  public:
    Items(const std::vector<std::string>& columns, const std::string& key, const std::string& number)
        : key_(PlaceOf(columns, key)), number_(PlaceOf(columns, number)) {}

    void Add(const Row& row) {
        keys_.insert(Key(row));
        if (number_ < row.size()) numbers_.insert(row[number_].toInteger());
    }
    /// Also true for a row whose number belongs to another item: a damaged list stays as it is.
    [[nodiscard]] bool Has(const Row& row) const {
        return keys_.contains(Key(row)) || (number_ < row.size() && numbers_.contains(row[number_].toInteger()));
    }

  private:
    [[nodiscard]] std::string Key(const Row& row) const { return jet::Folded(row[key_].toText()); }

    std::size_t key_;
    std::size_t number_;
    std::unordered_set<std::string> keys_;
    std::unordered_set<std::int64_t> numbers_;
};

/// Completes the tables of one language.
class Completion final {
  public:
    /// `source` has the texts; nullptr when there are none to be had.
    Completion(TargetDatabase& target, jet::Connection* source, QString code)
        : target_(target), source_(source), code_(std::move(code)) {}

    void Run() {
        for (const LanguageTable& table : LanguageTables())
            if (!Find(table)) LogNote(QStringLiteral("the new database lacks the table %1").arg(NameOf(table)));
        if (missing_.empty()) return;
        jet::BulkLoad load(target_.connection().path());
        for (const Missing& each : missing_) {
            load.Into(each.table, each.columns);
            for (const Row& row : each.rows)
                load.Add(row);
        }
        load.Finish();
    }

  private:
    struct Missing {
        std::string table;
        std::vector<std::string> columns;
        std::vector<Row> rows;
    };

    [[nodiscard]] QString NameOf(const LanguageTable& table) const {
        return QString::fromStdString(NameIn(table, code_));
    }

    /// Finds the rows that the language lacks. False when one of the two tables isn't there.
    bool Find(const LanguageTable& table) {
        jet::Connection& target = target_.connection();
        Missing missing{NameIn(table, code_), ColumnsOf(target, NameIn(table, code_)), {}};
        const std::string own = NameIn(table, target_.suffix().mid(1));
        if (missing.columns.empty() || ColumnsOf(target, own).empty()) return false;
        Items there(missing.columns, table.key, NumberColumn(target, missing.table));
        for (const Row& row : RowsOf(target, missing.table, missing.columns))
            there.Add(row);
        for (Row& row : RowsOf(target, own, missing.columns))
            if (!there.Has(row)) missing.rows.push_back(std::move(row));
        if (missing.rows.empty()) return true;
        Translate(table, missing);
        missing_.push_back(std::move(missing));
        return true;
    }

    /// Puts the language's own texts into the rows of the session's language.
    void Translate(const LanguageTable& table, Missing& missing) {
        if (source_ == nullptr) return;
        const auto texts = TextsOf(*source_, table, code_);
        const std::size_t key = PlaceOf(missing.columns, table.key);
        for (Row& row : missing.rows) {
            const auto found = texts.find(jet::Folded(row[key].toText()));
            if (found == texts.end()) continue;
            for (std::size_t text = 0; text < table.texts.size(); ++text)
                row[PlaceOf(missing.columns, table.texts[text])] = found->second[text];
        }
    }

    TargetDatabase& target_;
    jet::Connection* source_;
    QString code_;
    std::vector<Missing> missing_;
};

} // namespace

void AddLanguage(TargetDatabase& target, const QString& name, const QString& code, bool isDefault) {
    jet::Connection& connection = target.connection();
    if (connection.catalogue().find("Area_" + code.toStdString()) == nullptr)
        schema::CreateLanguageTables(connection, code.toStdString());
    target.Run(QStringLiteral("INSERT INTO [Language] (LanguageName, LanguageCode, LanguageDefault) VALUES(") +
               QuotedList({name, code}) + (isDefault ? QStringLiteral(",True)") : QStringLiteral(",False)")));
}

void CopyLanguageTables(TargetDatabase& target) {
    AddLanguage(target, Language, target.suffix().mid(1), true);
    Records rows(Connection->OpenRecordset("SELECT LanguageName, LanguageCode FROM [Language]"));
    for (; !rows.atEnd(); rows.MoveNext()) {
        const QString code = rows.Text("LanguageCode");
        if (IsSessionLanguage(target, code)) continue;
        if (IsLanguageCode(code))
            AddLanguage(target, rows.Text("LanguageName"), code, false);
        else
            LogNote(QLatin1String("a language was left out, since its code can't be part of a name: ") + code);
    }
}

void CompleteLanguages(TargetDatabase& target, const QString& source) {
    std::shared_ptr<jet::Connection> texts;
    if (!source.isEmpty()) texts = jet::Connection::Open(source.toStdString(), DatabasePassword());
    for (const QString& code : target.LanguageCodes())
        if (!IsSessionLanguage(target, code)) Completion(target, texts.get(), code).Run();
}

} // namespace tessaro
