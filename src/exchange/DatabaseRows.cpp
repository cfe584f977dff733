#include "exchange/DatabaseRows.h"

#include "session/Session.h"

namespace tessaro {

namespace {

jet::Recordset Open(const char* statement) {
    return Connection->OpenRecordset(statement, jet::CursorType::ForwardOnly);
}

QString Text(const jet::Recordset& rows, std::size_t field) {
    return QString::fromStdString(rows.Get(field).toText());
}

QHash<QString, QString> TextsByGId(const char* statement) {
    QHash<QString, QString> texts;
    for (jet::Recordset rows = Open(statement); !rows.atEnd(); rows.MoveNext())
        texts.insert(Text(rows, 0), Text(rows, 1));
    return texts;
}

} // namespace

DatabaseRows::Names DatabaseRows::NamesOf(const char* statement) {
    Names names;
    for (jet::Recordset rows = Open(statement); !rows.atEnd(); rows.MoveNext())
        names.insert(rows.Get(0).toInteger(), Text(rows, 1));
    return names;
}

void DatabaseRows::ReadCombinations() {
    const auto indicators = TextsByGId("SELECT IndicatorGId, [Indicator] FROM Indicator");
    const auto units = TextsByGId("SELECT UnitGId, Unit FROM Unit");
    const auto subgroups = TextsByGId("SELECT SubpopGId, Subpop FROM Subpop");
    for (jet::Recordset rows = Open("SELECT IUSNId, IndicatorGId, UnitGId, SubpopGId FROM Indicator_Unit_Subpop");
         !rows.atEnd(); rows.MoveNext())
        combinations_.insert(rows.Get(0).toInteger(), {indicators.value(Text(rows, 1)), units.value(Text(rows, 2)),
                                                       subgroups.value(Text(rows, 3))});
}

DatabaseRows::DatabaseRows()
    : periods_(NamesOf("SELECT TimePeriodNId, TimePeriod FROM TimePeriod")),
      areaIds_(NamesOf("SELECT AreaNId, AreaID FROM Area")), areaNames_(NamesOf("SELECT AreaNId, AreaName FROM Area")),
      sources_(NamesOf("SELECT SourceNId, Source FROM Source")),
      footnotes_(NamesOf("SELECT FootNoteNId, FootNote FROM Footnote")) {
    ReadCombinations();
    const jet::Recordset count = Open("SELECT COUNT(*) FROM Data");
    count_ = static_cast<int>(count.Get(0).toInteger());
    rows_ = Open("SELECT TimePeriodNId, IUSNId, AreaNId, SourceNId, FootnoteNId, Datavalue FROM Data ORDER BY RowNId");
}

std::optional<ValueRow> DatabaseRows::At(int number) {
    if (next_ != number) rows_.MoveFirst();
    for (next_ = next_ == number ? next_ : 0; next_ < number && !rows_.atEnd(); ++next_)
        rows_.MoveNext();
    if (rows_.atEnd()) return std::nullopt;
    const auto key = [this](std::size_t field) { return rows_.Get(field).toInteger(); };
    const auto parts = combinations_.constFind(key(1));
    ValueRow row{periods_.value(key(0)), areaIds_.value(key(2)), areaNames_.value(key(2)), {}, {}, {},
                 sources_.value(key(3)), Text(rows_, 5),         footnotes_.value(key(4))};
    if (parts != combinations_.constEnd()) {
        row.indicator = parts->indicator;
        row.unit = parts->unit;
        row.subgroup = parts->subgroup;
    }
    rows_.MoveNext();
    ++next_;
    const bool isWhole = !row.period.isEmpty() && !row.areaId.isEmpty() && !row.indicator.isEmpty();
    return isWhole ? std::optional(std::move(row)) : std::nullopt;
}

} // namespace tessaro
