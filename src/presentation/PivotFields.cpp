#include "presentation/PivotFields.h"

#include "session/Strings.h"

namespace tessaro {

namespace {

constexpr std::array<PivotFieldInfo, kPivotFieldCount> kFields{{
    {"T.TimePeriod", "Comm_Time", "TIMEPERIOD", "Cstr(T.TimeperiodNID)",
     "SELECT DISTINCT TimePeriod FROM _SelTimePeriod WHERE TimePeriodNId = "},
    {"A.AreaID", "Comm_Area Id", "AREAID", "cStr(A.AreaNId)", "SELECT DISTINCT AreaID FROM _SelArea WHERE AreaNId = "},
    {"A.AreaName", "Comm_Area Name", "AREANAME", "CStr(A.AreaNId)",
     "SELECT DISTINCT AreaName FROM _SelArea WHERE AreaNId = "},
    {"IUS.[Indicator]", "Comm_Indicator", "INDICATOR", "Cstr(I.IndicatorNId)",
     "SELECT DISTINCT [Indicator] FROM _Indicator WHERE IndicatorNId = "},
    {"IUS.Subpop", "Subpop", "SUBPOP", "Cstr(SP.SubpopNId)", "SELECT DISTINCT Subpop FROM _Subpop WHERE SubpopNId = "},
    {"IUS.Unit", "Comm_Unit", "UNIT", "Cstr(U.UnitNId)", "SELECT DISTINCT Unit FROM _Unit WHERE UnitNId = "},
    {"IUS.Source", "Comm_Source", "SOURCE", "CStr(IUS.SourceNId)",
     "SELECT DISTINCT Source FROM _SelIUSNId WHERE SourceNId = "},
}};

std::optional<PivotField> Find(const QString& text, const char* PivotFieldInfo::*part) {
    for (int i = 0; i < kPivotFieldCount; ++i)
        if (text.compare(QLatin1String(kFields[static_cast<std::size_t>(i)].*part), Qt::CaseInsensitive) == 0)
            return static_cast<PivotField>(i);
    return {};
}

} // namespace

const std::array<PivotFieldInfo, kPivotFieldCount>& PivotFields() {
    return kFields;
}

const PivotFieldInfo& InfoOf(PivotField field) {
    return kFields[static_cast<std::size_t>(field)];
}

std::optional<PivotField> FieldOfKey(const QString& key) {
    return Find(key, &PivotFieldInfo::key);
}

std::optional<PivotField> FieldOfName(const QString& name) {
    return Find(name, &PivotFieldInfo::name);
}

QString KeyOf(PivotField field) {
    return QLatin1String(InfoOf(field).key);
}

QString CaptionOf(PivotField field) {
    return PlainText(QLatin1String(InfoOf(field).captionKey));
}

} // namespace tessaro
