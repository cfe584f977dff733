#include "calculate/CopyData.h"

#include "calculate/BuildingStop.h"
#include "calculate/CopyMasters.h"
#include "database/LanguageTables.h"
#include "database/Schema.h"
#include "jet/engine/BulkLoad.h"
#include "jet/values/Collation.h"
#include "session/Session.h"

#include <array>
#include <string>
#include <unordered_map>

namespace tessaro {

namespace {

constexpr std::int64_t kRowsBetweenLooks = 4096; ///< rows after which the window is painted

/// The ids of a list of the target by the name that rows of _Data have. Rows come in order, so most of them ask for the
/// name of the row before.
class IdList final {
  public:
    /// `rows` has an id, and the fields that make up the name.
    explicit IdList(Records rows) {
        const std::size_t fields = rows.rows().FieldCount();
        for (; !rows.atEnd(); rows.MoveNext()) {
            std::string name;
            for (std::size_t field = 1; field < fields; ++field)
                Append(name, rows.rows().Get(field).toText());
            ids_.try_emplace(jet::Folded(name), rows.Number(std::size_t{0}));
        }
    }

    /// The id of what the fields of a row from `first` on name; 0 when the target does not have it.
    std::int64_t Of(const jet::Recordset& row, std::size_t first, std::size_t count) {
        name_.clear();
        for (std::size_t field = first; field < first + count; ++field) {
            if (const auto text = row.TextView(field))
                Append(name_, *text);
            else
                Append(name_, row.Get(field).toText());
        }
        if (name_ == last_) return id_;
        const auto found = ids_.find(jet::Folded(name_));
        id_ = found == ids_.end() ? 0 : found->second;
        last_.swap(name_);
        return id_;
    }

  private:
    /// Names are trimmed when they are written.
    static void Append(std::string& name, std::string_view field) {
        while (field.starts_with(' '))
            field.remove_prefix(1);
        while (field.ends_with(' '))
            field.remove_suffix(1);
        name.append(field).push_back('\x1f');
    }

    std::unordered_map<std::string, std::int64_t> ids_;
    std::string name_;
    std::string last_;
    std::int64_t id_ = 0;
};

/// The rows of _Data with the ids that the target has for them.
class DataRows final {
  public:
    explicit DataRows(TargetDatabase& target)
        : combinations_(target.Open(
              QStringLiteral("SELECT IUSNId, IndicatorGId, UnitGId, SubpopGId FROM Indicator_Unit_Subpop"))),
          times_(target.Open(QStringLiteral("SELECT TimePeriodNId, TimePeriod FROM TimePeriod"))),
          areas_(
              target.Open(QStringLiteral("SELECT AreaNId, AreaID FROM ") + target.InLanguage(QStringLiteral("Area")))),
          sources_(target.Open(QStringLiteral("SELECT SourceNId, Source FROM ") +
                               target.InLanguage(QStringLiteral("Source")))) {}

    void CopyInto(jet::BulkLoad& load) {
        jet::Recordset rows = Connection->OpenRecordset(
            "SELECT D.IndicatorGId, D.UnitGId, D.SubpopGId, D.TimePeriod, D.AreaId, D.Source, D.Datavalue  FROM _Data "
            "AS D  ORDER BY D.IndicatorGId, D.UnitGId, D.SubpopGId, D.TimePeriod, D.AreaId, D.Source",
            jet::CursorType::ForwardOnly);
        load.Into("Data", {"AreaNId", "IUSNId", "SourceNId", "TimePeriodNId", "Datavalue"});
        std::array<jet::Value, 5> row;
        for (std::int64_t done = 1; !rows.atEnd(); rows.MoveNext(), ++done) {
            row = {areas_.Of(rows, 4, 1), combinations_.Of(rows, 0, 3), sources_.Of(rows, 5, 1), times_.Of(rows, 3, 1),
                   rows.Get(6)};
            load.Add(row);
            if (done % kRowsBetweenLooks == 0) LookForStop();
        }
    }

  private:
    IdList combinations_;
    IdList times_;
    IdList areas_;
    IdList sources_;
};

/// Indexes are made behind the rows: to keep them while rows come takes longer.
void CopyRows(TargetDatabase& target) {
    schema::UnindexData(target.connection());
    DataRows rows(target);
    jet::BulkLoad load(target.connection().path());
    rows.CopyInto(load);
    load.Finish();
    schema::IndexData(target.connection());
}

} // namespace

void Copy_Data(TargetDatabase& target) {
    Frame& frame = TheFrame();
    target.connection().Begin();
    CopyLanguageTables(target);
    CopyMasters(target);
    target.connection().Commit();
    frame.SetProgress(30);
    CopyRows(target);
    frame.SetProgress(60);
}

} // namespace tessaro
