#include "formats/ValueTable.h"
#include "session/Messages.h"
#include "session/Strings.h"

#include <QLocale>

namespace tessaro {

const std::vector<ValueForm>& ValueForms() {
    const QString notes(QStringLiteral(".notes.csv"));
    const QString sources(QStringLiteral(".sources.csv"));
    const auto partOf = [](const char* ending) { return QString(QLatin1String(ending)); };
    static const std::vector<ValueForm> forms{
        {".csv", "TS_FilterCsv", SaveLongCsv, {notes, sources}},
        {".wide.csv", "TS_FilterWideCsv", SaveWideCsv, {notes, sources}},
        {".sdmx.csv", "SDMX-CSV", SaveSdmxCsv, {}},
        {".json", "JSON-stat 2", SaveJsonStat, {}},
        {".px", "PX", SavePx, {}},
        {".geojson", "GeoJSON", SaveGeoJson, {notes, sources}},
        {".shp",
         "TS_FilterShape",
         SaveShapefile,
         {partOf(".shx"), partOf(".dbf"), partOf(".cpg"), partOf(".prj"), partOf(".columns.csv"), notes, sources}}};
    return forms;
}

const ValueForm* ValueFormOf(const QString& file) {
    const ValueForm* found = nullptr;
    for (const ValueForm& form : ValueForms()) {
        const QLatin1String ending(form.ending);
        const bool isLonger = found == nullptr || ending.size() > QLatin1String(found->ending).size();
        if (isLonger && file.endsWith(ending, Qt::CaseInsensitive)) found = &form;
    }
    return found;
}

QString CaptionOf(const ValueForm& form) {
    const QLatin1String key(form.captionKey);
    return key.startsWith(QLatin1String("TS_")) ? PlainText(key) : QString(key);
}

QString TextOf(const ValueLosses& losses) {
    const std::pair<const char*, int> counts[] = {{"TS_LossTexts", losses.texts},
                                                  {"TS_LossDoubles", losses.doubles},
                                                  {"TS_LossMarks", losses.marks},
                                                  {"TS_LossColumns", losses.columns},
                                                  {"TS_LossShapes", losses.withoutShape}};
    QStringList lines;
    for (const auto& [key, count] : counts)
        if (count > 0) lines << FilledText(QLatin1String(key), {QLocale::system().toString(count)});
    return lines.join(QStringLiteral("; "));
}

bool AsksToLose(const ValueLosses& losses) {
    const QString question = FilledText(QStringLiteral("TS_LossAsk"), {TextOf(losses)});
    return AskBeforeLoss(question, MessageType::YesNo, {}, false) == MessageCode::Yes;
}

} // namespace tessaro
