#pragma once

#include "formats/ValueTable.h"
#include "session/Query.h"

#include <QHash>
#include <QString>

namespace tessaro {

/// All values of the open database in the language of the session, in the order of their rows. Throws jet::Error.
class DatabaseRows final {
  public:
    DatabaseRows();
    [[nodiscard]] int Count() const { return count_; }
    /// The row with a number from 0; they are read in order. Nothing for a row that refers to items that there are not.
    [[nodiscard]] std::optional<ValueRow> At(int number);

  private:
    using Names = QHash<qint64, QString>;
    [[nodiscard]] static Names NamesOf(const char* statement);
    void ReadCombinations();

    struct Parts {
        QString indicator;
        QString unit;
        QString subgroup;
    };
    Names periods_;
    Names areaIds_;
    Names areaNames_;
    Names sources_;
    Names footnotes_;
    QHash<qint64, Parts> combinations_;
    jet::Recordset rows_;
    int count_ = 0;
    int next_ = 0;
};

} // namespace tessaro
