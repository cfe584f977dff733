#include "database/DataExists.h"

#include "session/ErrorSink.h"
#include "session/Query.h"

#include <QStringList>

namespace tessaro {

namespace {

const QString ClearIds = QStringLiteral("Delete * from [GUId]");

/// Marks by way of the short list of ids in GUId, so that Data is read once per id column and never joined.
class Marking final {
  public:
    Marking(jet::Connection& connection, const std::function<void(int)>& progress)
        : connection_(connection), progress_(progress) {}

    bool Run() {
        using Step = void (Marking::*)();
        constexpr Step steps[] = {&Marking::Clear,          &Marking::MarkIUS,       &Marking::MarkClassifications,
                                  &Marking::MarkTime,       &Marking::ReadLanguages, &Marking::MarkSources,
                                  &Marking::MarkFrameworks, &Marking::MarkThemes,    &Marking::MarkAreas};
        int done = 0;
        for (const Step step : steps) {
            (this->*step)();
            if (progress_) progress_(++done * 100 / static_cast<int>(std::size(steps)));
        }
        Do(ClearIds);
        return good_;
    }

  private:
    void Do(const QString& sql) { good_ = Execute(sql, &connection_) && good_; }

    void ListIds(const QString& column) {
        Do(ClearIds);
        Do(QStringLiteral("Insert into [GUId](NId) Select distinct ") + column + QStringLiteral(" from Data"));
    }

    void Clear() { UpdateDataExistsTables(connection_); }

    void MarkIUS() {
        ListIds(QStringLiteral("IUSNId"));
        Do(QStringLiteral(
            "UPDATE Indicator_Unit_Subpop IUS INNER JOIN [GUId] I ON IUS.IUSNId = I.NId SET IUS.DataExists = True"));
        Do(ClearIds);
    }

    void MarkClassifications() {
        MarkClassification(QStringLiteral("Sector"), QStringLiteral("IndicatorGId"), QStringLiteral("SectorLabel2GId"));
        MarkClassification(QStringLiteral("Convention"), QStringLiteral("IUSNId"),
                           QStringLiteral("ConventionLabel3GId"));
        MarkClassification(QStringLiteral("Goal"), QStringLiteral("IUSNId"), QStringLiteral("GoalLabel3GId"));
        MarkClassification(QStringLiteral("Institution"), QStringLiteral("IUSNId"),
                           QStringLiteral("InstitutionLabel2GId"));
    }

    void MarkClassification(const QString& table, const QString& iusKey, const QString& key) {
        Do(QStringLiteral(
               "UPDATE (Indicator_%1 INNER JOIN Indicator_Unit_Subpop ON Indicator_%1.%2 = Indicator_Unit_Subpop.%2) "
               "INNER JOIN %1 ON Indicator_%1.%3 = %1.%3 Set %1.DataExists=TRUE "
               "Where Indicator_Unit_Subpop.DataExists=TRUE")
               .arg(table, iusKey, key));
    }

    void MarkTime() {
        ListIds(QStringLiteral("TimePeriodNId"));
        Do(QStringLiteral(
            "UPDATE TimePeriod T INNER JOIN [GUId] I ON T.TimePeriodNId = I.NId SET T.DataExists = True"));
    }

    void ReadLanguages() {
        Records rows =
            Select(QStringLiteral("Select LanguageCode from [Language]"), jet::CursorType::Static, &connection_);
        for (; !rows.atEnd(); rows.MoveNext())
            languages_ << rows.Text(std::size_t{0});
    }

    void MarkSources() {
        ListIds(QStringLiteral("SourceNId"));
        for (const QString& code : languages_) {
            Do(QStringLiteral("Update [Source_%1] Set DataExists=False").arg(code));
            Do(QStringLiteral("UPDATE [Source_%1] S INNER JOIN [GUId] I ON S.SourceNId = I.NId SET S.DataExists = True")
                   .arg(code));
        }
        Do(ClearIds);
    }

    void MarkFrameworks() {
        for (const QString& code : languages_)
            Do(QStringLiteral("UPDATE (Indicator_CF INNER JOIN Indicator_Unit_Subpop ON Indicator_CF.IUSNId = "
                              "Indicator_Unit_Subpop.IUSNId) INNER JOIN [CF_%1] C ON Indicator_CF.CFGId = C.CFGId "
                              "Set C.DataExists=TRUE Where Indicator_Unit_Subpop.DataExists=TRUE")
                   .arg(code));
    }

    void MarkThemes() {
        for (const QString& code : languages_)
            Do(QStringLiteral(
                   "UPDATE (Indicator_Theme INNER JOIN Indicator_Unit_Subpop ON Indicator_Theme.IUSNId = "
                   "Indicator_Unit_Subpop.IUSNId) INNER JOIN [Theme_%1] TH ON Indicator_Theme.ThemeGId = TH.ThemeGId "
                   "Set TH.DataExists=TRUE Where Indicator_Unit_Subpop.DataExists=TRUE")
                   .arg(code));
    }

    void MarkAreas() {
        ListIds(QStringLiteral("AreaNId"));
        for (const QString& code : languages_) {
            Do(QStringLiteral("Update [Area_%1] Set dataexists =false").arg(code));
            Do(QStringLiteral("UPDATE [Area_%1] AR INNER JOIN [GUId] I ON AR.AreaNId = I.NId SET AR.DataExists = True")
                   .arg(code));
            for (qint64 level = DeepestMarkedLevel(code); level >= 2; --level)
                MarkParents(code, level);
        }
    }

    /// 0 when no area is marked.
    qint64 DeepestMarkedLevel(const QString& code) {
        const Records rows =
            Select(QStringLiteral("select max(len(AreaID))/3 as Length from [Area_%1] where DataExists=TRUE").arg(code),
                   jet::CursorType::Static, &connection_);
        return rows.isOpen() && !rows.atEnd() ? rows.Number("Length") : 0;
    }

    void MarkParents(const QString& code, qint64 level) {
        Do(QStringLiteral(
               "Update [Area_%1] AS A1, [Area_%1] AS A2 set A2.DataExists =TRUE WHERE (((A2.AreaId) Like "
               "Mid(A1.[AreaID],1,Len(A1.[areaID])-3)) AND ((A1.DataExists)=True) AND ((A2.DataExists)=False)) "
               "and A1.AreaLevel=%2")
               .arg(code)
               .arg(level));
    }

    jet::Connection& connection_;
    const std::function<void(int)>& progress_;
    QStringList languages_;
    bool good_ = true;
};

} // namespace

void UpdateDataExistsTables(jet::Connection& connection) {
    const QString names =
        QStringLiteral("Indicator_Unit_Subpop,[Sector],[Convention],[Goal],[Institution],[TimePeriod]");
    for (const QString& name : names.split(QLatin1Char(',')))
        Execute(QStringLiteral("Update ") + name + QStringLiteral(" Set DataExists=False"), &connection);
}

bool MarkDataExists(const QString& path, const std::function<void(int)>& progress) {
    ErrorTrap trap("MarkDataExists");
    const auto connection = CreateTheConnection(path);
    if (!connection) return false;
    // Some twenty statements, and one writing to the disk. A statement that fails takes back its own part alone.
    const bool together = trap.Try([&] { connection->Begin(); });
    const bool marked = Marking(*connection, progress).Run();
    if (!together || trap.Try([&] { connection->Commit(); })) return marked;
    trap.Try([&] { connection->Rollback(); });
    return false;
}

} // namespace tessaro
