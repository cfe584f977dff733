#include "formats/FilesBeside.h"

#include "formats/CsvText.h"
#include "session/Strings.h"

#include <QFileInfo>

namespace tessaro {

namespace {

QStringList Captions(std::initializer_list<const char*> keys) {
    QStringList texts;
    for (const char* key : keys)
        texts << PlainText(QLatin1String(key));
    return texts;
}

} // namespace

QString NameBeside(const QString& file, const QString& ending) {
    const QFileInfo info(file);
    const ValueForm* const form = ValueFormOf(file);
    const QString name = info.fileName();
    const QString stem = form != nullptr ? name.chopped(QLatin1String(form->ending).size()) : info.completeBaseName();
    return info.absolutePath() + QLatin1Char('/') + stem + ending;
}

QStringList ValueHeads() {
    return Captions({"Comm_Time", "Comm_Area Id", "Comm_Area Name", "Comm_Indicator", "Comm_Datavalue", "Comm_Unit",
                     "Subpop", "Comm_Source", "TS_RoleFootnote"});
}

QStringList ValueFields(const ValueRow& row) {
    return {row.period, row.areaId,   row.areaName, row.indicator, row.value,
            row.unit,   row.subgroup, row.source,   row.footnote};
}

QByteArray SourcesText(const QStringList& sources, const std::function<QString(const QString&)>& aboutSource) {
    QByteArray text = kUtf8Mark + CsvLine(Captions({"Comm_Source", "Information"}));
    for (const QString& source : sources)
        text += CsvLine({source, aboutSource ? aboutSource(source) : QString()});
    return text;
}

ValueTable NotesAndSources::Watched() {
    ValueTable watched = table_;
    watched.at = [this](int number) {
        std::optional<ValueRow> row = table_.at(number);
        if (row) Take(*row);
        return row;
    };
    return watched;
}

void NotesAndSources::Take(const ValueRow& row) {
    if (!row.footnote.isEmpty()) notes_ += CsvLine(ValueFields(row));
    if (row.source == last_ || row.source.isEmpty() || known_.contains(row.source)) return;
    last_ = row.source;
    known_.insert(row.source);
    sources_ << row.source;
}

std::vector<NewFile> NotesAndSources::FilesOf(const QString& file) const {
    std::vector<NewFile> files;
    const QString notes = NameBeside(file, QStringLiteral(".notes.csv"));
    QByteArray titles;
    for (const QString& title : {table_.title, table_.subTitle})
        if (!title.isEmpty()) titles += CsvLine({title});
    if (!titles.isEmpty() || !notes_.isEmpty() || QFileInfo::exists(notes))
        files.push_back({notes, kUtf8Mark + titles + CsvLine(ValueHeads()) + notes_});
    const QString sources = NameBeside(file, QStringLiteral(".sources.csv"));
    if (!sources_.isEmpty() || QFileInfo::exists(sources))
        files.push_back({sources, SourcesText(sources_, table_.aboutSource)});
    return files;
}

} // namespace tessaro
