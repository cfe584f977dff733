#include "database/Links.h"

#include "platform/Paths.h"
#include "session/ColumnCache.h"
#include "session/ErrorSink.h"
#include "session/JetCopies.h"
#include "session/LanguageName.h"
#include "session/Query.h"
#include "session/Session.h"

namespace tessaro {

namespace {

enum class LinkSource { Selections, SameName, WithSuffix };

struct LinkRow {
    const char* name;
    LinkSource source;
};

/// The links of the working database, in the order in which they are made.
constexpr LinkRow kLinks[] = {
    {"_SelIUSNId", LinkSource::Selections},
    {"_SelArea", LinkSource::Selections},
    {"_SelTimePeriod", LinkSource::Selections},
    {"Language", LinkSource::SameName},
    {"Data", LinkSource::SameName},
    {"TimePeriod", LinkSource::SameName},
    {"Area", LinkSource::WithSuffix},
    {"FootNote", LinkSource::WithSuffix},
    {"Indicator_Unit_subpop", LinkSource::SameName},
    {"Indicator", LinkSource::WithSuffix},
    {"Unit", LinkSource::WithSuffix},
    {"Subpop", LinkSource::WithSuffix},
    {"SectorLabel1", LinkSource::WithSuffix},
    {"SectorLabel2", LinkSource::WithSuffix},
    {"Sector", LinkSource::SameName},
    {"Indicator_Sector", LinkSource::SameName},
    {"GoalLabel1", LinkSource::WithSuffix},
    {"GoalLabel2", LinkSource::WithSuffix},
    {"GoalLabel3", LinkSource::WithSuffix},
    {"Goal", LinkSource::SameName},
    {"Indicator_Goal", LinkSource::SameName},
    {"CF", LinkSource::WithSuffix},
    {"Indicator_CF", LinkSource::SameName},
    {"Theme", LinkSource::WithSuffix},
    {"Indicator_Theme", LinkSource::SameName},
    {"InstitutionLabel1", LinkSource::WithSuffix},
    {"InstitutionLabel2", LinkSource::WithSuffix},
    {"Institution", LinkSource::SameName},
    {"Indicator_Institution", LinkSource::SameName},
    {"ConventionLabel1", LinkSource::WithSuffix},
    {"ConventionLabel2", LinkSource::WithSuffix},
    {"ConventionLabel3", LinkSource::WithSuffix},
    {"Convention", LinkSource::SameName},
    {"Indicator_Convention", LinkSource::SameName},
    {"Region", LinkSource::SameName},
    {"Source", LinkSource::WithSuffix},
    {"Indicator_Source", LinkSource::SameName},
    {"Database_Log", LinkSource::SameName},
    {"Template_Log", LinkSource::SameName},
};

QString WorkingDatabase() {
    return JoinPath({CacheFolder, QStringLiteral("InfoSel.mdb")});
}

/// The connection that all links of one change are made on: the session's when it is open, so that a query still open
/// on it doesn't lock it out of its own file.
std::shared_ptr<jet::Connection> ConnectionForLinks() {
    if (Connection && Connection->isOpen()) return Connection;
    return ConnectWorkingDatabase();
}

/// `file` is the file as it is to be opened. A link or table that has the name already is replaced.
bool MakeLink(jet::Connection& working, const QString& file, const QString& sourceTable, const QString& linkName,
              jet::LinkAccess access) {
    ErrorTrap trap("CreateLink");
    return trap.Try([&] {
        working.CreateLink(linkName.toStdString(), file.toStdString(), DatabasePassword(), sourceTable.toStdString(),
                           access);
    });
}

/// All links, or none: then the old ones stand, and False is given.
bool MakeAllLinks(jet::Connection& working) {
    const QString selections = FileToOpen(JoinPath({CacheFolder, QStringLiteral("UserSelections.mdb")}));
    const QString data = FileToOpen(CurrentDatabase);
    ErrorTrap trap("LinkAllTablesinInfoSel");
    const bool together = trap.Try([&] {
        working.Relax();
        working.Begin();
    });
    bool good = together;
    for (const LinkRow& link : kLinks) {
        const QString name = QString::fromLatin1(link.name);
        const QString source = link.source == LinkSource::WithSuffix ? name + LanguageSuffix : name;
        // The selection is written through its links; the data database is only read.
        const bool selection = link.source == LinkSource::Selections;
        good = good && MakeLink(working, selection ? selections : data, source, name,
                                selection ? jet::LinkAccess::Write : jet::LinkAccess::Read);
    }
    good = good && trap.Try([&] { working.Commit(); });
    if (together && !good) trap.Try([&] { working.Rollback(); });
    return good;
}

} // namespace

std::shared_ptr<jet::Connection> ConnectWorkingDatabase() {
    try {
        auto working =
            jet::Connection::Open(FindPath(WorkingDatabase()).toStdString(), DatabasePassword(), jet::Use::Working);
        UseColumnCache(*working);
        return working;
    } catch (const std::exception& error) {
        ErrorTrap::Report(error);
        return nullptr;
    }
}

LinkResult LinkAllTablesinInfoSel() {
    return LinkAllTablesinInfoSel(nullptr, nullptr);
}

LinkResult LinkAllTablesinInfoSel(std::shared_ptr<jet::Connection> data, std::shared_ptr<jet::Connection> working) {
    const ErrorTrap trap("LinkAllTablesinInfoSel");
    LanguageSuffix = SuffixOfLanguage(Language);
    if (!(data ? IsLanguageInDatabase(*data) : IsLanguageInDatabase(CurrentDatabase))) {
        DatabaseOpen = false;
        LanguageInDatabase = false;
        return LinkResult::LanguageMissing;
    }
    if (!working) working = ConnectionForLinks();
    if (!working || !MakeAllLinks(*working)) return LinkResult::NotWritten;
    LanguageInDatabase = true;
    return LinkResult::Made;
}

void CreateLink(const QString& databasePath, const QString& sourceTable, const QString& linkName) {
    const ErrorTrap trap("CreateLink");
    if (const auto working = ConnectWorkingDatabase())
        MakeLink(*working, FileToOpen(databasePath), sourceTable, linkName, jet::LinkAccess::Read);
}

bool IsLanguageInDatabase(const QString& path) {
    const ErrorTrap trap("IsLanguageInDatabase");
    const auto connection = CreateTheConnection(path);
    return connection && IsLanguageInDatabase(*connection);
}

bool IsLanguageInDatabase(jet::Connection& connection) {
    const ErrorTrap trap("IsLanguageInDatabase");
    const Records rows =
        Select(QStringLiteral("SELECT LanguageName FROM [Language] WHERE LanguageName = ") + Quoted(Language),
               jet::CursorType::Static, &connection);
    return rows.isOpen() && !rows.atEnd();
}

QString SuffixOfLanguage(const QString& language) {
    return QLatin1Char('_') + CodeOfLanguage(language);
}

} // namespace tessaro
