#include "calculate/ResultCheck.h"

#include "database/Schema.h"
#include "jet/values/Value.h"
#include "session/Messages.h"
#include "session/Strings.h"

#include <QStringList>

namespace tessaro {

namespace {

using schema::kLongestName;
using schema::kLongestTime;

/// A field of the data-entry sheet, by its caption.
struct Field {
    const char* caption;
    const QString& text;
    qsizetype longest = kLongestName;
    bool mayBeEmpty = false;
};

QString ProblemOf(const Field& field) {
    const QString text = field.text.trimmed();
    const QString caption = PlainText(QLatin1String(field.caption));
    if (text.isEmpty() && !field.mayBeEmpty) return FilledText(QStringLiteral("TS_ResultLacks"), {caption});
    if (text.size() <= field.longest) return {};
    return FilledText(QStringLiteral("TS_ResultTooLong"), {caption, QString::number(field.longest)});
}

QString FirstProblem(std::initializer_list<Field> fields) {
    for (const Field& field : fields)
        if (QString problem = ProblemOf(field); !problem.isEmpty()) return problem;
    return {};
}

QString ProblemOf(const DataEntryRow& row) {
    QString problem = FirstProblem({{"Comm_Time", row.timePeriod, kLongestTime},
                                    {"Comm_Area Id", row.areaId},
                                    {"Comm_Datavalue", row.value},
                                    {"Subpop", row.subpop},
                                    {"Comm_Source", row.source, kLongestName, true}});
    if (problem.isEmpty() && !jet::ReadNumber(row.value.toStdString()))
        problem = FilledText(QStringLiteral("TS_ResultNoNumber"), {row.value});
    if (problem.isEmpty()) return {};
    const QStringList shown{row.timePeriod, row.areaId, row.areaName, row.value, row.subpop, row.source};
    return FilledText(QStringLiteral("TS_ResultRow"), {shown.join(QStringLiteral("; ")), problem});
}

} // namespace

QString ProblemOf(const DataEntrySheet& result) {
    if (result.rows.empty()) return FilledText(QStringLiteral("TS_NoResults"), {});
    QString problem = FirstProblem({{"Comm_Sector", result.sector},
                                    {"Comm_Class", result.indicatorClass},
                                    {"Comm_Indicator", result.indicator},
                                    {"Comm_Unit", result.unit}});
    for (auto row = result.rows.begin(); problem.isEmpty() && row != result.rows.end(); ++row)
        problem = ProblemOf(*row);
    return problem;
}

} // namespace tessaro
