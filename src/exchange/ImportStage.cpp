#include "exchange/ImportStage.h"

#include "platform/Paths.h"
#include "session/DatabasePassword.h"
#include "session/Session.h"

#include <QFile>

#include <array>
#include <unistd.h>

namespace tessaro {

namespace {

QString FreeStageFile(const char* ending) {
    static int made = 0;
    return JoinPath(
        {TempFolder, QStringLiteral("Import_%1_%2%3").arg(::getpid()).arg(++made).arg(QLatin1String(ending))});
}

void RemoveStage(const QString& path) {
    for (const char* behind : {"", "-journal", "-wal", "-shm"})
        QFile::remove(path + QLatin1String(behind));
}

} // namespace

ImportStage::ImportStage(const QString& base) : sorted_(FreeStageFile(".values")) {
    if (!base.isEmpty()) OpenKeys(base);
}

ImportStage::~ImportStage() {
    connection_.reset();
    if (!path_.isEmpty()) RemoveStage(path_);
}

void ImportStage::OpenKeys(const QString& base) {
    path_ = FreeStageFile(".mdb");
    RemoveStage(path_);
    try {
        jet::Database::Create(path_.toStdString(), DatabasePassword());
        connection_ = jet::Connection::Open(path_.toStdString(), DatabasePassword(), jet::Use::Working);
        connection_->Relax();
        connection_->Execute("CREATE TABLE [_Import] (KeyNId COUNTER PRIMARY KEY, IUSNId LONG, SourceNId LONG, AreaNId "
                             "LONG, TimePeriodNId LONG)");
        connection_->CreateLink("Data", base.toStdString(), DatabasePassword(), "Data");
    } catch (...) {
        connection_.reset();
        RemoveStage(path_);
        throw;
    }
}

void ImportStage::Finish() {
    sorted_.Finish();
    if (!Compares()) return;
    jet::BulkLoad load(path_.toStdString());
    load.Into("_Import", {"KeyNId", "IUSNId", "SourceNId", "AreaNId", "TimePeriodNId"});
    ValueSorter::Reader values(sorted_);
    StagedValue value;
    StagedValue last;
    std::int64_t keys = 0;
    while (values.Next(value)) {
        if (!value.IsOfKnownItems() || (keys > 0 && value.HasKeyOf(last))) continue;
        load.Add(std::array<jet::Value, 5>{++keys, value.combination, value.source, value.area, value.period});
        last = value;
    }
    load.Finish();
}

jet::Recordset ImportStage::Existing() const {
    return connection_->OpenRecordset(
        "SELECT I.KeyNId, D.RowNId, D.Datavalue, D.FootnoteNId FROM [_Import] AS I INNER JOIN Data AS D ON ((I.IUSNId "
        "= "
        "D.IUSNId) AND (I.SourceNId = D.SourceNId) AND (I.AreaNId = D.AreaNId) AND (I.TimePeriodNId = "
        "D.TimePeriodNId)) ORDER BY I.KeyNId, D.RowNId",
        jet::CursorType::ForwardOnly);
}

} // namespace tessaro
