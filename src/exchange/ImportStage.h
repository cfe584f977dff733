#pragma once

#include "jet/engine/BulkLoad.h"
#include "jet/engine/Connection.h"

#include <QString>

#include <cstdint>
#include <memory>
#include <string>

namespace tessaro {

/// A value that waits to be written, with the numbers of what it belongs to: above 0 in the database, below 0 for what
/// is to be made.
struct StagedValue {
    std::int64_t row = 0; ///< of the file
    int combination = 0;
    int source = 0;
    int area = 0;
    int period = 0;
    int footnote = 0; ///< 0: none
    std::string value;
};

/// The values of a file on their way, in a working file of their own in TempFolder, so that files of any size need
/// little memory. Data there is a link to the table of the database that they are compared with. The file goes with the
/// object.
class ImportStage final {
  public:
    /// Throws jet::Error.
    explicit ImportStage(const QString& base);
    ~ImportStage();
    ImportStage(const ImportStage&) = delete;
    ImportStage& operator=(const ImportStage&) = delete;

    void Add(const StagedValue& value);
    /// Ends the adding.
    void Finish();
    [[nodiscard]] jet::Connection& Connection() { return *connection_; }

  private:
    QString path_;
    std::unique_ptr<jet::BulkLoad> load_;
    std::shared_ptr<jet::Connection> connection_;
};

} // namespace tessaro
