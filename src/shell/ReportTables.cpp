#include "shell/ReportTables.h"

#include "platform/Paths.h"
#include "session/Query.h"
#include "session/Session.h"
#include "session/Settings.h"
#include "session/Strings.h"

#include <QDateTime>
#include <QHash>
#include <QSet>

#include <cmath>

namespace tessaro {

namespace {

using office::Cell;

QString Text(const char* key) {
    return PlainText(QLatin1String(key));
}

/// A table in the language of the session: "[Area_en]".
QString Localized(const char* table) {
    return QLatin1Char('[') + QLatin1String(table) + LanguageSuffix + QLatin1Char(']');
}

Cell CellOf(const jet::Value& value) {
    if (value.isNull()) return {};
    if (value.type() == jet::Value::Type::Text) return QString::fromStdString(value.toText());
    return value.toDouble();
}

/// All rows of a statement, its first `columns` fields.
office::Block Rows(jet::Connection& database, const QString& sql, std::size_t columns) {
    office::Block block;
    Records rows = Select(sql, jet::CursorType::ForwardOnly, &database);
    for (; !rows.atEnd(); rows.MoveNext()) {
        std::vector<Cell> cells;
        for (std::size_t field = 0; field < columns; ++field)
            cells.push_back(CellOf(rows.rows().Get(field)));
        block.push_back(std::move(cells));
    }
    return block;
}

QString FirstText(jet::Connection& database, const QString& sql) {
    const Records rows = Select(sql, jet::CursorType::Static, &database);
    return rows.atEnd() ? QString() : rows.Text(std::size_t{0});
}

/// "2026.11.24 - 15~04"
QString Stamp(const QString& text) {
    QDateTime time = QDateTime::fromString(text, Qt::ISODate);
    if (!time.isValid()) time = QDateTime::fromString(text, QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    return time.isValid() ? time.toString(QStringLiteral("yyyy.MM.dd - H~m")) : text;
}

ReportTable Summary(jet::Connection& database) {
    ReportTable table{Text("Summary"), {Text("DbSumRep"), QString(), QString()}, {}};
    const auto add = [&](const QString& name, const Cell& value, const Cell& more = {}) {
        table.rows.push_back({name, value, more});
    };
    const auto count = [&](const char* caption, const QString& sql) {
        const Records rows = Select(sql, jet::CursorType::Static, &database);
        if (!rows.atEnd()) add(Text(caption), static_cast<double>(rows.Number(std::size_t{0})));
    };
    add(Text("PROP DB TAB"), FileNameOf(CurrentDatabase));
    add(Text("Created On"),
        Stamp(FirstText(database,
                        QStringLiteral("SELECT Top 1 [TimeStamp] from Database_Log order by Databaseid desc"))));
    add(Text("Template"),
        FirstText(database,
                  QStringLiteral("SELECT Top 1 TemplateFileName from Template_Log order by templateid desc")));
    count("Count", QStringLiteral("SELECT count(*) as DataCount from [Data]"));
    const auto classified = [&](const char* caption, const char* column, const char* name, const char* from) {
        count(caption, QStringLiteral("SELECT count(%1) as %2 from %3")
                           .arg(QLatin1String(column), QLatin1String(name), Localized(from)));
    };
    classified("Comm_Source", "Source", "SourceCount", "source");
    classified("CF", "CFLabel1", "CFCount", "CF");
    classified("Institution", "InstitutionLabel1", "InstitutionCount", "InstitutionLabel1");
    classified("Theme", "ThemeLabel1", "ThemeCount", "Theme");
    classified("Right", "ConventionLabel1", "ConventionCount", "ConventionLabel1");
    const Records times = Select(
        QStringLiteral(
            "SELECT max(Timeperiod) as TPMax, min(timeperiod) as TPMin, count(timeperiod) as TPCount FROM TimePeriod"),
        jet::CursorType::Static, &database);
    if (!times.atEnd())
        add(Text("Comm_Time"), times.Text("TPMin") + QStringLiteral(" - ") + times.Text("TPMax"),
            static_cast<double>(times.Number("TPCount")));
    Records levels =
        Select(QStringLiteral("SELECT count(areaID) as AreaCount, Arealevel from %1 group by arealevel order by "
                              "arealevel asc")
                   .arg(Localized("area")),
               jet::CursorType::Static, &database);
    for (; !levels.atEnd(); levels.MoveNext())
        add(Text("AREA") + QStringLiteral(" - ") + Text("Area Level") + QLatin1Char(' ') + levels.Text("Arealevel"),
            static_cast<double>(levels.Number("AreaCount")));
    for (const auto& row : Rows(database, QStringLiteral("SELECT Distinct LanguageName from [Language]"), 1))
        add(Text("PROP GENERAL LANGUAGE"), row.front());
    for (const auto& row :
         Rows(database, QStringLiteral("SELECT Distinct GoalLabel1 from ") + Localized("GoalLabel1"), 1))
        add(Text("Goal"), row.front());
    return table;
}

ReportTable Indicators(jet::Connection& database) {
    ReportTable table{Text("Comm_Indicator"),
                      {Text("Comm_Sector"), Text("Comm_Class"), Text("Comm_Indicator"), Text("Home Information")},
                      {}};
    table.rows = Rows(
        database,
        QStringLiteral("SELECT SL1.SectorLabel1, SL2.SectorLabel2, I.[Indicator], I.Info   FROM (((Indicator_Sector AS "
                       "I_S INNER JOIN %1 AS I ON I_S.IndicatorGId = I.IndicatorGId) INNER JOIN Sector AS S ON "
                       "I_S.SectorLabel2GId = S.SectorLabel2GId) INNER JOIN %2 AS SL1 ON S.SectorLabel1GId = "
                       "SL1.SectorLabel1GId) INNER JOIN %3 AS SL2 ON S.SectorLabel2GId = SL2.SectorLabel2GId ORDER BY "
                       "SL1.SectorLabel1, SL2.SectorLabel2, I.[Indicator]")
            .arg(Localized("Indicator"), Localized("SectorLabel1"), Localized("SectorLabel2")),
        4);
    for (auto& row : table.rows) {
        const auto* info = std::get_if<QString>(&row[3]);
        row[3] = info && !info->trimmed().isEmpty() ? Cell(Text("Yes")) : Cell();
    }
    return table;
}

ReportTable OneColumn(jet::Connection& database, const QString& name, const char* head, const QString& sql) {
    return {name, {Text(head)}, Rows(database, sql, 1)};
}

/// The GIds of the goals of level 1 by combination. Read once, since a query for each cell takes minutes.
QHash<qint64, QSet<QString>> GoalsOfCombinations(jet::Connection& database) {
    QHash<qint64, QSet<QString>> goals;
    Records rows =
        Select(QStringLiteral(" SELECT distinct Goal.GoalLabel1GId, Indicator_Goal.IUSNId ") +
                   QStringLiteral(
                       " FROM Goal INNER JOIN Indicator_Goal ON Goal.GoalLabel3GId = Indicator_Goal.GoalLabel3GId "),
               jet::CursorType::ForwardOnly, &database);
    for (; !rows.atEnd(); rows.MoveNext())
        goals[rows.Number("IUSNId")].insert(rows.Text("GoalLabel1GId").toLower());
    return goals;
}

ReportTable Combinations(jet::Connection& database) {
    ReportTable table{
        Text("IUS"),
        {Text("Comm_Indicator"), Text("Comm_Unit"), Text("Subpop"), Text("Comm_Min"), Text("Comm_Max"), Text("Count")},
        {}};
    QStringList goalIds;
    Records goals = Select(QStringLiteral("Select GoalLabel1, GoalLabel1Gid from ") + Localized("GoalLabel1"),
                           jet::CursorType::Static, &database);
    for (; !goals.atEnd() && table.heads.size() < 256; goals.MoveNext()) {
        table.heads << goals.Text("GoalLabel1");
        goalIds << goals.Text("GoalLabel1Gid").toLower();
    }
    const QHash<qint64, QSet<QString>> goalsOf = GoalsOfCombinations(database);
    Records rows = Select(
        QStringLiteral(
            "SELECT DISTINCT I.[Indicator], U.Unit, S.Subpop, Indicator_Unit_Subpop.Min_Value, "
            "Indicator_Unit_Subpop.Max_Value, 0 as rCount, IUSNid FROM ((Indicator_Unit_Subpop INNER JOIN %1 AS I "
            "ON Indicator_Unit_Subpop.IndicatorGId = I.IndicatorGId) INNER JOIN %2 AS U ON "
            "Indicator_Unit_Subpop.UnitGId = U.UnitGId) INNER JOIN %3 AS S ON Indicator_Unit_Subpop.SubpopGId = "
            "S.SubpopGId ORDER BY I.[Indicator], U.Unit, S.Subpop")
            .arg(Localized("Indicator"), Localized("Unit"), Localized("Subpop")),
        jet::CursorType::ForwardOnly, &database);
    for (; !rows.atEnd(); rows.MoveNext()) {
        std::vector<Cell> cells;
        for (std::size_t field = 0; field < 5; ++field)
            cells.push_back(CellOf(rows.rows().Get(field)));
        const QSet<QString> mine = goalsOf.value(rows.Number(std::size_t{6}));
        std::vector<Cell> marks;
        int count = 0;
        for (const QString& goal : std::as_const(goalIds)) {
            const bool has = mine.contains(goal);
            count += has ? 1 : 0;
            marks.push_back(has ? Cell(Text("Yes")) : Cell());
        }
        cells.emplace_back(static_cast<double>(count));
        cells.insert(cells.end(), marks.begin(), marks.end());
        table.rows.push_back(std::move(cells));
    }
    return table;
}

/// Whether a map file exists in the folder of map pictures or in that of the layers, under its name or with ".shp".
bool MapExists(const QString& name) {
    const QString pictures = Setting(QStringLiteral("Maps Image Folder"));
    const QString maps = QStringLiteral("Maps");
    for (const QString& folder : {JoinPath({AppPath, pictures, maps}), JoinPath({AppPath, maps})})
        for (const QString& file : {name, QString(name + QStringLiteral(".shp"))})
            if (FileExists(JoinPath({folder, file}))) return true;
    return false;
}

ReportTable MapFiles(jet::Connection& database) {
    ReportTable table{Text("GALLERY Map"), {Text("Map File"), Text("Available")}, {}};
    for (const auto& row : Rows(database, QStringLiteral("SELECT Distinct MapFile from ") + Localized("Area"), 1)) {
        const auto* name = std::get_if<QString>(&row.front());
        if (!name || name->isEmpty()) continue;
        table.rows.push_back({*name, MapExists(*name) ? Cell(Text("Yes")) : Cell()});
    }
    return table;
}

/// The parts of the statement of a classification's sheet.
struct Tree {
    const char* nameKey;
    std::initializer_list<const char*> heads;
    const char* select;
    const char* tree; ///< the classification's own joins; "%1", "%2", "%3" are its label tables
    std::initializer_list<const char*> labels;
    const char* link; ///< LEFT JOIN to the combinations
    const char* order;
};

const Tree kTrees[] = {
    {"Goal",
     {"PRINT_GOAL", "PRINT_PLAN", "PRINT_CATEGORY"},
     "SELECT GL1.GoalLabel1, GL2.GoalLabel2, GL3.GoalLabel3, I.[Indicator], U.Unit, S.Subpop ",
     "((Goal AS G INNER JOIN %1 AS GL1 ON G.GoalLabel1GId = GL1.GoalLabel1GId) INNER JOIN %2 AS GL2 ON G.GoalLabel2GId "
     "= "
     "GL2.GoalLabel2GId) INNER JOIN %3 AS GL3 ON G.GoalLabel3GId = GL3.GoalLabel3GId",
     {"GoalLabel1", "GoalLabel2", "GoalLabel3"},
     " LEFT JOIN Indicator_Goal AS L ON G.GoalLabel3GId = L.GoalLabel3GId",
     "Order by GoalLabel1, GoalLabel2, GoalLabel3"},
    {"CF",
     {"CF"},
     "SELECT C.CFLabel1, I.[Indicator], U.Unit, S.Subpop ",
     "%1 AS C",
     {"CF"},
     " LEFT JOIN Indicator_CF AS L ON C.CFGId = L.CFGId",
     "Order by CFLabel1"},
    {"Institution",
     {"PRINT_AGENCY", "PRINT_PROGRAM"},
     "SELECT IL1.InstitutionLabel1, IL2.InstitutionLabel2, I.[Indicator], U.Unit, S.Subpop ",
     "(Institution AS T INNER JOIN %1 AS IL1 ON T.InstitutionLabel1GId = IL1.InstitutionLabel1GId) INNER JOIN %2 AS "
     "IL2 ON "
     "T.InstitutionLabel2GId = IL2.InstitutionLabel2GId",
     {"InstitutionLabel1", "InstitutionLabel2"},
     " LEFT JOIN Indicator_Institution AS L ON T.InstitutionLabel2GId = L.InstitutionLabel2GId",
     "Order by  InstitutionLabel1, InstitutionLabel2"},
    {"Theme",
     {"Theme"},
     "SELECT TH.ThemeLabel1, I.[Indicator], U.Unit, S.Subpop ",
     "%1 AS TH",
     {"Theme"},
     " LEFT JOIN Indicator_Theme AS L ON TH.ThemeGId = L.ThemeGId",
     "Order by ThemeLabel1"},
    {"Right",
     {"Right", "PRINT_CLUSTER", "PRINT_ARTICLE"},
     "SELECT CL1.ConventionLabel1, CL2.ConventionLabel2, CL3.ConventionLabel3, I.[Indicator], U.Unit, S.Subpop ",
     "((Convention AS V INNER JOIN %1 AS CL1 ON V.ConventionLabel1GId = CL1.ConventionLabel1GId) INNER JOIN %2 AS CL2 "
     "ON "
     "V.ConventionLabel2GId = CL2.ConventionLabel2GId) INNER JOIN %3 AS CL3 ON V.ConventionLabel3GId = "
     "CL3.ConventionLabel3GId",
     {"ConventionLabel1", "ConventionLabel2", "ConventionLabel3"},
     " LEFT JOIN Indicator_Convention AS L ON V.ConventionLabel3GId = L.ConventionLabel3GId",
     "Order by ConventionLabel1, ConventionLabel2, ConventionLabel3"},
};

ReportTable Classified(jet::Connection& database, const Tree& tree) {
    ReportTable table{Text(tree.nameKey), {}, {}};
    for (const char* head : tree.heads)
        table.heads << Text(head);
    table.heads << Text("Comm_Indicator") << Text("Comm_Unit") << Text("Subpop");
    QString from = QLatin1String(tree.tree);
    for (const char* label : tree.labels)
        from = from.arg(Localized(label));
    from = QLatin1Char('(') + from + QLatin1Char(')') + QLatin1String(tree.link);
    // LEFT JOIN, so that classifications without a combination are listed too.
    const auto join = [&from](const QString& tableAs, const char* condition) {
        from = QLatin1Char('(') + from + QStringLiteral(") LEFT JOIN ") + tableAs + QStringLiteral(" ON ") +
               QLatin1String(condition);
    };
    join(QStringLiteral("Indicator_Unit_Subpop AS IUS"), "L.IUSNId = IUS.IUSNId");
    join(Localized("Indicator") + QStringLiteral(" AS I"), "IUS.IndicatorGId = I.IndicatorGId");
    join(Localized("Unit") + QStringLiteral(" AS U"), "IUS.UnitGId = U.UnitGId");
    join(Localized("Subpop") + QStringLiteral(" AS S"), "IUS.SubpopGId = S.SubpopGId");
    table.rows = Rows(database,
                      QLatin1String(tree.select) + QStringLiteral(" FROM ") + from + QLatin1Char(' ') +
                          QLatin1String(tree.order),
                      static_cast<std::size_t>(table.heads.size()));
    return table;
}

} // namespace

ReportTable ReadLogTable(bool ofTemplates, jet::Connection& database) {
    ReportTable table{(ofTemplates ? Text("Template") : Text("PROP DB TAB")) + QLatin1Char(' ') + Text("LOG_LOG"),
                      {Text("FileName"), Text("Action"), Text("LOG_DATE_TIME"), Text("User")},
                      {}};
    Records rows = Select(ofTemplates ? QStringLiteral("SELECT * from [Template_Log] Order by TemplateID")
                                      : QStringLiteral("SELECT * from [Database_Log] Order by DatabaseID"),
                          jet::CursorType::ForwardOnly, &database);
    // Logs of older databases have no column for the user.
    const bool hasUser = rows.isOpen() && rows.rows().FieldIndex("User") >= 0;
    for (; !rows.atEnd(); rows.MoveNext())
        table.rows.push_back({rows.Text(ofTemplates ? "TemplateFileName" : "DatabaseFileName"), rows.Text("Action"),
                              rows.Text("TimeStamp"), hasUser ? rows.Text("User") : QString()});
    return table;
}

ReportTable ReadReportTable(int number, jet::Connection& database) {
    switch (number) {
    case 1:
        return Summary(database);
    case 2:
        return Indicators(database);
    case 3:
        return OneColumn(database, Text("Comm_Unit"), "Comm_Unit",
                         QStringLiteral("SELECT DISTINCT Unit from ") + Localized("Unit"));
    case 4:
        return OneColumn(database, Text("Subpop"), "Subpop",
                         QStringLiteral("SELECT DISTINCT Subpop from ") + Localized("Subpop"));
    case 5:
        return Combinations(database);
    case 6:
        return OneColumn(database, Text("Comm_Time"), "Comm_Time",
                         QStringLiteral("SELECT Distinct TimePeriod from [TimePeriod]"));
    case 7:
        return {Text("AREA"),
                {Text("Comm_Area Id"), Text("Comm_Area Name"), Text("Area Level"), Text("Map File")},
                Rows(database,
                     QStringLiteral(
                         "SELECT Distinct AreaID, AreaName, Arealevel, MapFile from %1 Order by areaID, arealevel")
                         .arg(Localized("Area")),
                     4)};
    case 8:
        return MapFiles(database);
    case 14:
        return OneColumn(database, Text("Comm_Source"), "Comm_Source",
                         QStringLiteral("SELECT DISTINCT Source from ") + Localized("Source"));
    case 15:
    case 16:
        return ReadLogTable(number == 15, database);
    default:
        return Classified(database, kTrees[number - 9]);
    }
}

} // namespace tessaro
