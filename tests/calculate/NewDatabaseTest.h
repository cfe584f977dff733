#pragma once

#include "calculate/DatabaseBuilder.h"
#include "calculate/WorkingTables.h"
#include "database/Database.h"
#include "database/Schema.h"
#include "platform/Paths.h"
#include "session/Query.h"
#include "session/Session.h"
#include "support/PlainReader.h"
#include "support/SampleApplication.h"
#include "support/TestSession.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <string>
#include <vector>

namespace tessaro::test {

/// A session on the sample database, with Arabic as its third language and all of it selected, and a result to be
/// saved.
class NewDatabaseTest : public SessionTest {
  protected:
    void SetUp() override {
        StartInstallation();
        ASSERT_TRUE(QFile::copy(MadeSource(), source_));
        ASSERT_TRUE(QDir().mkpath(Folder() + QStringLiteral("/Out")));
    }

    /// Opens the sample in a language ("English [en]"), selects all and takes the snapshot that calculations work on.
    void OpenIn(const QString& language) {
        Language = language;
        ASSERT_TRUE(OpenDatabaseFile(source_) && LanguageInDatabase);
        Select();
    }

    /// Takes the snapshot of everything anew.
    static void Select() {
        Connection->Begin();
        for (const char* table : {"_SelIUSNId", "_SelArea", "_SelTimePeriod"})
            ASSERT_TRUE(Execute(QStringLiteral("DELETE * from ") + QLatin1String(table)));
        for (const char* sql :
             {"INSERT INTO _SelArea (AreaGId, AreaNId, AreaID, AreaName, AreaLevel, MapFile) SELECT AreaGId, AreaNId, "
              "AreaID, AreaName, AreaLevel, MapFile FROM Area",
              "INSERT INTO _SelTimePeriod (TimePeriodNId, TimePeriod) SELECT TimePeriodNId, TimePeriod FROM TimePeriod",
              "INSERT INTO _SelIUSNId (IUSNId, IndicatorGId, UnitGId, SubpopGId, [Indicator], Unit, Subpop, SourceNId, "
              "Source, RecommendedSource) SELECT DISTINCT IUS.IUSNId, IUS.IndicatorGId, IUS.UnitGId, IUS.SubpopGId, "
              "I.Indicator, U.Unit, SP.Subpop, S.SourceNId, S.Source, I_S.RecommendedSource FROM (Unit AS U INNER JOIN "
              "(Subpop AS SP INNER JOIN ([Indicator] AS I INNER JOIN Indicator_Unit_Subpop AS IUS ON I.IndicatorGId = "
              "IUS.IndicatorGId) ON SP.SubpopGId = IUS.SubpopGId) ON U.UnitGId = IUS.UnitGId) INNER JOIN (Source AS S "
              "INNER JOIN Indicator_Source AS I_S ON S.SourceNId = I_S.SourceNId) ON IUS.IUSNId = I_S.IUSNId"})
            ASSERT_TRUE(Execute(QString::fromUtf8(sql))) << sql;
        Connection->Commit();
        bDataChanged = true;
        ASSERT_TRUE(CreateDataTable());
    }

    /// Changes the sample before it is opened.
    void Change(const std::vector<const char*>& statements) const {
        const auto connection = jet::Connection::Open(source_.toStdString(), DatabasePassword());
        connection->Begin();
        for (const char* sql : statements)
            connection->Execute(sql);
        connection->Commit();
    }

    /// Two new indicators' worth of names, with a source of a region that the sample has and one that it lacks.
    static DataEntrySheet Result() {
        return {QStringLiteral("Society"),
                QStringLiteral("Schools and pupils"),
                QStringLiteral("Share of literate people"),
                QStringLiteral("Per cent of all"),
                {{"2000", "ASIIND", "India", "61.5", "Everybody", "Asia_Own reckoning"},
                 {"2000", "ASICHN", "China", ".25", "Everybody", "Asia_Own reckoning"},
                 {"2003", "ASI", "Asia", "64", "Rural", "World_Own reckoning"}}};
    }

    [[nodiscard]] QString Target(const QString& name = QStringLiteral("New.mdb")) const {
        return Folder() + QStringLiteral("/Out/") + name;
    }
    [[nodiscard]] static std::string Plain(const QString& path) { return FindPath(path).toStdString(); }
    /// What lies in the folder of the targets.
    [[nodiscard]] QStringList Out() const {
        return QDir(Folder() + QStringLiteral("/Out"))
            .entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System, QDir::Name);
    }
    [[nodiscard]] static QByteArray Bytes(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
    }

    const QString source_ = Folder() + QStringLiteral("/Source.mdb");

  private:
    /// Made once a program; tests get copies.
    static QString MadeSource() {
        static const QTemporaryDir folder;
        static const QString path = folder.filePath(QStringLiteral("Source.mdb"));
        static const bool made = (MakeSampleDatabase(path), AddArabic(path), true);
        static_cast<void>(made);
        return path;
    }

    static void AddArabic(const QString& path) {
        const auto connection = jet::Connection::Open(path.toStdString(), DatabasePassword());
        connection->Begin();
        schema::CreateLanguageTables(*connection, "ar");
        for (const schema::TableDefinition& table : schema::DataTables())
            if (table.perLanguage)
                connection->Execute("INSERT INTO [" + std::string(table.name) + "_ar] SELECT * FROM [" +
                                    std::string(table.name) + "_en]");
        for (const char* sql :
             {"UPDATE Indicator_ar SET [Indicator] = 'مؤشر ' & [Indicator]", "UPDATE Unit_ar SET Unit = 'وحدة ' & Unit",
              "UPDATE Subpop_ar SET Subpop = 'فئة ' & Subpop", "UPDATE Area_ar SET AreaName = 'منطقة ' & AreaName",
              "UPDATE Source_ar SET Source = 'مصدر ' & Source",
              "UPDATE SectorLabel1_ar SET SectorLabel1 = 'قطاع ' & SectorLabel1",
              "UPDATE GoalLabel3_ar SET GoalLabel3 = 'هدف ' & GoalLabel3",
              "INSERT INTO [Language] VALUES ('العربية [ar]', 'ar', False)"})
            connection->Execute(sql);
        connection->Commit();
    }
};

} // namespace tessaro::test
