#include "exchange/ImportStage.h"

#include "platform/Paths.h"
#include "session/DatabasePassword.h"
#include "session/Session.h"

#include <QFile>

#include <array>
#include <unistd.h>

namespace tessaro {

namespace {

QString FreeStageFile() {
    static int made = 0;
    return JoinPath({TempFolder, QStringLiteral("Import_%1_%2.mdb").arg(::getpid()).arg(++made)});
}

void RemoveStage(const QString& path) {
    for (const char* behind : {"", "-journal", "-wal", "-shm"})
        QFile::remove(path + QLatin1String(behind));
}

} // namespace

ImportStage::ImportStage(const QString& base) : path_(FreeStageFile()) {
    RemoveStage(path_);
    jet::Database::Create(path_.toStdString(), DatabasePassword());
    connection_ = jet::Connection::Open(path_.toStdString(), DatabasePassword(), jet::Use::Working);
    connection_->Relax();
    connection_->Execute("CREATE TABLE [_Import] (StageNId COUNTER PRIMARY KEY, FileRow LONG, IUSNId LONG, SourceNId "
                         "LONG, AreaNId LONG, TimePeriodNId LONG, FootnoteNId LONG, Datavalue TEXT(60))");
    connection_->CreateLink("Data", base.toStdString(), DatabasePassword(), "Data");
    load_ = std::make_unique<jet::BulkLoad>(path_.toStdString());
    load_->Into("_Import", {"FileRow", "IUSNId", "SourceNId", "AreaNId", "TimePeriodNId", "FootnoteNId", "Datavalue"});
}

ImportStage::~ImportStage() {
    load_.reset();
    connection_.reset();
    RemoveStage(path_);
}

void ImportStage::Add(const StagedValue& value) {
    load_->Add(std::array<jet::Value, 7>{value.row, value.combination, value.source, value.area, value.period,
                                         value.footnote, value.value});
}

void ImportStage::Finish() {
    load_->Finish();
    load_.reset();
    connection_->Execute("CREATE INDEX [IX_Import_1] ON [_Import] (IUSNId, SourceNId, AreaNId, TimePeriodNId)");
}

} // namespace tessaro
