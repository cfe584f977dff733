#include "shell/Favourite.h"

#include "database/Database.h"
#include "jet/BulkLoad.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "session/ErrorSink.h"
#include "session/Frame.h"
#include "session/Query.h"
#include "session/Session.h"

#include <QFile>
#include <QRegularExpression>

#include <array>

namespace tessaro {

namespace {

constexpr int kRowsAStep = 20000;

QString ViewStatement() {
    QString sql = QStringLiteral(
        "SELECT D.TimePeriodNId, D.IUSNId, D.AreaNId,  D.SourceNId, D.FootnoteNId, D.Datavalue  FROM _SelIUSNId IUS "
        "INNER "
        "JOIN (_SelArea A INNER JOIN (Data D INNER JOIN  _SelTimePeriod T ON D.TimePeriodNId = [T].TimePeriodNId)  ON "
        "[A].AreaNId = D.AreaNId) ON (IUS.SourceNId = D.SourceNId) AND (IUS.IUSNId = D.IUSNId)  WHERE IUS.Deleted = "
        "False ");
    if (!DeletedRowNIds.trimmed().isEmpty())
        sql += QStringLiteral(" AND D.RowNID NOT In (") + DeletedRowNIds + QStringLiteral(") ");
    return sql;
}

bool EmptyData(const QString& path) {
    const auto copy = CreateTheConnection(path);
    return copy && Execute(QStringLiteral("DELETE * FROM Data"), copy.get());
}

void CopyRows(const QString& path) {
    jet::BulkLoad load(path.toStdString());
    load.Into("Data", {"TimePeriodNId", "IUSNId", "AreaNId", "SourceNId", "FootnoteNId", "Datavalue"});
    Records rows = Select(ViewStatement(), jet::CursorType::ForwardOnly);
    int done = 0;
    for (; !rows.atEnd(); rows.MoveNext()) {
        std::array<jet::Value, 6> row;
        for (std::size_t field = 0; field < row.size(); ++field)
            row.at(field) = rows.rows().Get(field);
        load.Add(row);
        if (++done % kRowsAStep == 0) TheFrame().SetProgress(20 + std::min(done / kRowsAStep, 50));
    }
    load.Finish();
}

} // namespace

QString CleanFileName(const QString& name) {
    static const QRegularExpression forbidden(QStringLiteral("[\\\\/:*<>|?\\[\\]\"]"));
    return QString(name).replace(forbidden, QStringLiteral("_"));
}

QString FavouritePath(const QString& name) {
    const bool hasExtension = name.contains(QLatin1String(".mdb"), Qt::CaseInsensitive);
    return JoinPath({FavoritesFolder, hasExtension ? name : name + QStringLiteral(".mdb")});
}

FavouriteResult MakeFavourite(const QString& name) {
    ErrorTrap trap("cmdOk_Click");
    const QString wanted = name.trimmed();
    if (wanted.isEmpty() || CleanFileName(wanted) != wanted) return FavouriteResult::BadName;
    const QString path = FavouritePath(wanted);
    if (FileExists(path)) return FavouriteResult::Taken;
    TheFrame().StartProgress();
    TheFrame().SetProgress(5);
    bool made = CopyFileOver(CurrentDatabase, path) && EmptyData(path);
    TheFrame().SetProgress(20);
    made = made && trap.Try([&] { CopyRows(path); });
    TheFrame().SetProgress(75);
    if (made)
        MarkDataExists(path);
    else
        QFile::remove(path);
    TheFrame().EndProgress();
    return made ? FavouriteResult::Made : FavouriteResult::Failed;
}

QStringList FavouriteFiles() {
    QStringList names;
    const QStringList files = FilesOf(FavoritesFolder);
    for (const QString& file : files)
        if (file.endsWith(QLatin1String(".mdb"), Qt::CaseInsensitive)) names << file;
    return names;
}

} // namespace tessaro
