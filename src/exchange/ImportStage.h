#pragma once

#include "exchange/ValueSorter.h"
#include "jet/engine/BulkLoad.h"
#include "jet/engine/Connection.h"
#include "sheets/UnfinishedFile.h"

#include <QString>

#include <memory>

namespace tessaro {

/// The values of a file on their way, in working files of their own in TempFolder, so that files of any size need
/// little memory: sorted, and beside them what the database has for the same keys. The files go with the object.
class ImportStage final {
  public:
    /// `base`: the database that the values are compared with; empty for none. Throws jet::Error, ReadError.
    explicit ImportStage(const QString& base);
    ~ImportStage();
    ImportStage(const ImportStage&) = delete;
    ImportStage& operator=(const ImportStage&) = delete;

    void Add(const StagedValue& value) { sorted_.Add(value); }
    /// Ends the adding.
    void Finish();
    [[nodiscard]] const ValueSorter& Values() const { return sorted_; }
    [[nodiscard]] bool Compares() const { return connection_ != nullptr; }
    /// The values of the database for keys of the file: KeyNId, the number from 1 of the key among those of known
    /// items, in ascending order; RowNId, Datavalue and FootnoteNId.
    [[nodiscard]] jet::Recordset Existing() const;

  private:
    void OpenKeys(const QString& base);

    ValueSorter sorted_;
    QString path_;
    std::shared_ptr<jet::Connection> connection_;
};

} // namespace tessaro
