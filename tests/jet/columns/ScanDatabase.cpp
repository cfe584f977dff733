#include "jet/columns/ScanDatabase.h"

#include "jet/values/Collation.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <sstream>

namespace jet::test {

namespace {

constexpr const char* kSelectionTables[] = {
    "CREATE TABLE Sel (IUSNId LONG, SourceNId LONG, Indicator TEXT(60), UnitGId TEXT(60), Deleted YESNO, RowNId LONG)",
    "CREATE TABLE SelArea (AreaNId LONG, AreaID TEXT(60), AreaName TEXT(60), AreaLevel INTEGER)",
    "CREATE TABLE SelTime (TimePeriodNId LONG, TimePeriod TEXT(60))",
    "CREATE TABLE Kinds (UnitGId TEXT(60), KindNId LONG)",
    "CREATE TABLE Latest (IUSNId LONG, AreaNId LONG, TimePeriod TEXT(60))"};

std::string Cell(const Value& value) {
    if (value.isNull()) return "Null";
    if (value.type() != Value::Type::Double) return LowerCased(value.toText());
    std::array<char, 64> digits{};
    std::snprintf(digits.data(), digits.size(), "%.10g", value.toDouble());
    return digits.data();
}

/// Cells that are both numbers, up to the last of the digits that they were rounded to.
bool SameCell(const std::string& a, const std::string& b) {
    if (a == b) return true;
    char* endOfA = nullptr;
    char* endOfB = nullptr;
    const double x = std::strtod(a.c_str(), &endOfA);
    const double y = std::strtod(b.c_str(), &endOfB);
    const bool numbers = !a.empty() && !b.empty() && *endOfA == 0 && *endOfB == 0;
    return numbers && std::abs(x - y) <= 1e-9 * std::max({1.0, std::abs(x), std::abs(y)});
}

bool SameRow(const std::string& a, const std::string& b) {
    std::istringstream cellsOfA(a);
    std::istringstream cellsOfB(b);
    std::string x;
    std::string y;
    bool more = true;
    while (more) {
        more = static_cast<bool>(std::getline(cellsOfA, x, '|'));
        if (static_cast<bool>(std::getline(cellsOfB, y, '|')) != more || (more && !SameCell(x, y))) return false;
    }
    return true;
}

} // namespace

ScanDatabase::ScanDatabase(std::uint64_t seed, int rows, bool unreadable) : random_(seed) {
    Fill(rows, unreadable);
    OpenImages(imageFolder());
}

std::string ScanDatabase::Value(bool unreadable) {
    constexpr const char* kOdd[] = {"1.0", " 5", "1e3", "-0", "0", "5", "5.00", "+7", "-12.5", "000", ".5", "3."};
    const std::uint64_t kind = random_() % 100;
    if (kind < 5) return "Null";
    if (kind < 15) return "'" + std::string(kOdd[random_() % std::size(kOdd)]) + "'";
    if (kind < 17 && unreadable) return std::array{"'n/a'", "'N/A'", "'  '"}[random_() % 3];
    const auto whole = std::to_string(static_cast<int>(random_() % 200) - 50);
    return "'" + whole + (kind < 60 ? "" : "." + std::to_string(random_() % 90 + 10)) + "'";
}

void ScanDatabase::Fill(int rows, bool unreadable) {
    const auto below = [&](int count) { return std::to_string(random_() % static_cast<unsigned>(count) + 1); };
    // now and then a number below zero, which nothing forbids
    const auto around = [&](int count) { return (random_() % 12 == 0 ? "-" : "") + below(count); };
    const auto data = folder_.Make("data.mdb");
    data->Execute("CREATE TABLE Data (RowNId COUNTER PRIMARY KEY, TimePeriodNId LONG, IUSNId LONG, AreaNId LONG, "
                  "SourceNId LONG, FootnoteNId LONG, Datavalue TEXT(60))");
    data->Begin();
    for (int row = 0; row < rows; ++row)
        data->Execute("INSERT INTO Data (TimePeriodNId, IUSNId, AreaNId, SourceNId, FootnoteNId, Datavalue) VALUES (" +
                      below(9) + ", " + (random_() % 50 == 0 ? "Null" : around(8)) + ", " + around(12) + ", " +
                      around(3) + ", " + (random_() % 9 == 0 ? below(4) : "0") + ", " + Value(unreadable) + ")");
    data->Commit();
    const auto working = folder_.MakeWorking("working.mdb");
    working->CreateLink("Data", dataFile(), "secret", "Data");
    for (const char* table : kSelectionTables)
        working->Execute(table);
    // most of the databases have each key once and in one spelling, as the program does; others run the plain way
    const bool tidy = random_() % 4 != 0;
    for (int row = 0; row < 14; ++row)
        working->Execute("INSERT INTO Sel VALUES (" +
                         (tidy ? std::to_string(row % 8 + 1) + ", " +
                                     std::to_string(row < 8    ? 1
                                                    : row < 12 ? 2
                                                               : -1)
                               : around(9) + ", " + around(3)) +
                         ", 'Indicator " + below(4) + "', '" + (tidy || random_() % 2 == 0 ? "u" : "U") + below(2) +
                         "', " + (random_() % 4 == 0 ? "True" : "False") + ", " + std::to_string(row) + ")");
    working->Execute("INSERT INTO Kinds VALUES ('u1', 1)");
    working->Execute("INSERT INTO Kinds VALUES ('U2', 2)");
    // some of these come twice
    for (int row = 0; row < 40; ++row)
        working->Execute("INSERT INTO Latest VALUES (" + below(9) + ", " + below(12) + ", '200" + below(8) + "')");
    for (int area = 1; area <= 11; ++area)
        working->Execute("INSERT INTO SelArea VALUES (" + (area == 11 && !tidy ? below(11) : std::to_string(area)) +
                         ", 'A" + below(3) + "', 'Area " + std::to_string(area) + "', " + below(3) + ")");
    for (int period = 1; period <= 8; ++period)
        working->Execute("INSERT INTO SelTime VALUES (" + std::to_string(period) + ", '" +
                         (period % 3 == 0 ? "1999-200" : "200") + std::to_string(9 - period) + "')");
    if (!tidy && random_() % 4 == 0) working->Execute("INSERT INTO SelTime VALUES (" + below(9) + ", '2005A')");
    if (!tidy && random_() % 4 == 0) working->Execute("INSERT INTO SelTime VALUES (9, '2005a')");
    if (random_() % 4 == 0) working->Execute("INSERT INTO SelTime VALUES (Null, '2010')");
}

void ScanDatabase::OpenImages(const std::string& folder, std::uint64_t mostBytes) {
    withImages_ = plain_ = nullptr;
    images_ = nullptr;
    ColumnImages::Settings settings;
    settings.folder = folder;
    settings.leastRows = 1;
    settings.mostBytes = mostBytes;
    settings.log = [this](const std::string& line) { log_.push_back(line); };
    images_ = std::make_shared<ColumnImages>(std::move(settings));
    withImages_ = Connection::Open(folder_.path("working.mdb"), "secret", Use::Working);
    withImages_->UseColumnImages(images_);
    plain_ = Connection::Open(folder_.path("working.mdb"), "secret", Use::Working);
    plain_->LeaveOutStep("column-scans");
}

std::string ScanDatabase::imageFile() const {
    std::error_code failure;
    for (const auto& each : std::filesystem::directory_iterator(imageFolder(), failure))
        if (each.path().extension() == ".columns") return each.path().string();
    return {};
}

bool ScanDatabase::Scans(const std::string& sql) {
    static_cast<void>(withImages_->Explain(sql));
    images_->Wait();
    const std::vector<std::string> steps = withImages_->Explain(sql).steps;
    return std::ranges::find(steps, "column-scans") != steps.end();
}

std::vector<std::string> ScanDatabase::Outcome(Connection& connection, const std::string& sql) {
    std::vector<std::string> rows;
    try {
        const bool makes = sql.find(" INTO Made ") != std::string::npos;
        if (makes) connection.Execute(sql);
        Recordset all = connection.OpenRecordset(makes ? "SELECT * FROM Made" : sql);
        for (; !all.atEnd(); all.MoveNext()) {
            std::string& row = rows.emplace_back();
            for (std::size_t i = 0; i < all.FieldCount(); ++i)
                row += Cell(all.Get(i)) + "|";
        }
        if (makes) connection.Execute("DROP TABLE Made");
    } catch (const Error& error) {
        return {"error " + std::to_string(static_cast<unsigned>(error.number()))};
    }
    std::ranges::sort(rows);
    return rows;
}

std::string ScanDatabase::Difference(const std::vector<std::string>& some, const std::vector<std::string>& others) {
    for (std::size_t row = 0; row < std::max(some.size(), others.size()); ++row) {
        const std::string a = row < some.size() ? some[row] : "no row";
        const std::string b = row < others.size() ? others[row] : "no row";
        if (!SameRow(a, b)) return a + " and " + b;
    }
    return {};
}

} // namespace jet::test
