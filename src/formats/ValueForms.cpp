#include "formats/FilesBeside.h"
#include "formats/ValueTable.h"
#include "session/Messages.h"
#include "session/Strings.h"

#include <QFileInfo>
#include <QLocale>

namespace tessaro {

const std::vector<ValueForm>& ValueForms() {
    static const std::vector<ValueForm> forms{{".csv", "TS_FilterCsv", SaveLongCsv},
                                              {".wide.csv", "TS_FilterWideCsv", SaveWideCsv},
                                              {".sdmx.csv", "SDMX-CSV", SaveSdmxCsv},
                                              {".json", "JSON-stat 2", SaveJsonStat},
                                              {".px", "PX", SavePx},
                                              {".geojson", "GeoJSON", SaveGeoJson},
                                              {".shp", "TS_FilterShape", SaveShapefile}};
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

QStringList ValueFormFilters() {
    QStringList filters;
    for (const ValueForm& form : ValueForms()) {
        const bool isKey = QByteArray(form.captionKey).startsWith("TS_");
        filters << (isKey ? PlainText(QLatin1String(form.captionKey)) : QLatin1String(form.captionKey)) +
                       QStringLiteral(" (*") + QLatin1String(form.ending) + QLatin1Char(')');
    }
    return filters;
}

QString TextOf(const ValueLosses& losses) {
    const std::pair<const char*, int> counts[] = {{"TS_LossFootnotes", losses.footnotes},
                                                  {"TS_LossTexts", losses.texts},
                                                  {"TS_LossDoubles", losses.doubles},
                                                  {"TS_LossColumns", losses.columns},
                                                  {"TS_LossShapes", losses.withoutShape}};
    QStringList lines;
    for (const auto& [key, count] : counts)
        if (count > 0) lines << FilledText(QLatin1String(key), {QLocale::system().toString(count)});
    return lines.join(QStringLiteral("; "));
}

QString NameBeside(const QString& file, const char* what) {
    const QFileInfo info(file);
    return info.absolutePath() + QLatin1Char('/') + info.baseName() + QLatin1Char('.') + QLatin1String(what) +
           QStringLiteral(".csv");
}

} // namespace tessaro
