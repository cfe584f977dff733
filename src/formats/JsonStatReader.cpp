#include "formats/JsonStatReader.h"

#include "formats/ReadError.h"

#include <QFile>
#include <QJsonDocument>

#include <algorithm>

namespace tessaro {

namespace {

constexpr qint64 kMostCells = qint64{1} << 60;

QJsonObject ParsedFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) throw ReadError(QStringLiteral("TS_ReadNoFile"), {path, file.errorString()});
    if (file.size() > JsonStatReader::kLargestFile)
        throw ReadError(QStringLiteral("TS_ReadTooLarge"), {path, QString::number(JsonStatReader::kLargestFile >> 20)});
    return QJsonDocument::fromJson(file.readAll()).object();
}

/// The data set of a file: the file itself, the one it wraps, or the first that lies in it.
QJsonObject DataSet(const QJsonObject& file) {
    if (file.contains(QLatin1String("dimension"))) return file;
    const QJsonArray items = file.value(QLatin1String("link")).toObject().value(QLatin1String("item")).toArray();
    for (const QJsonValue& item : items)
        if (item.toObject().contains(QLatin1String("dimension"))) return item.toObject();
    for (const QJsonValue& value : file)
        if (value.toObject().contains(QLatin1String("dimension"))) return value.toObject();
    return {};
}

/// The codes of a dimension's values in their order.
std::vector<QString> CodesOf(const QJsonObject& category, qint64 size) {
    std::vector<QString> codes(static_cast<std::size_t>(size));
    const QJsonValue index = category.value(QLatin1String("index"));
    const QJsonArray list = index.toArray();
    for (qsizetype i = 0; i < list.size() && i < size; ++i)
        codes[static_cast<std::size_t>(i)] = list[i].toString();
    const QJsonObject places = index.toObject();
    for (auto place = places.begin(); place != places.end(); ++place) {
        const qint64 at = place.value().toInteger(-1);
        if (at >= 0 && at < size) codes[static_cast<std::size_t>(at)] = place.key();
    }
    // A dimension of one value may leave its index out.
    const QStringList labels = category.value(QLatin1String("label")).toObject().keys();
    if (index.isUndefined() && size == 1 && labels.size() == 1) codes.front() = labels.front();
    return codes;
}

std::string TextOf(const QJsonValue& value) {
    if (!value.isDouble()) return value.toString().toStdString();
    const double number = value.toDouble();
    return QByteArray::number(number, 'g', QLocale::FloatingPointShortest).toStdString();
}

} // namespace

JsonStatReader::JsonStatReader(const QString& path) : path_(path) {
    const QJsonObject set = DataSet(ParsedFile(path));
    const QJsonObject dimensions = set.value(QLatin1String("dimension")).toObject();
    QJsonValue ids = set.value(QLatin1String("id"));
    QJsonValue sizes = set.value(QLatin1String("size"));
    if (ids.isUndefined()) ids = dimensions.value(QLatin1String("id")); // as version 1 has them
    if (sizes.isUndefined()) sizes = dimensions.value(QLatin1String("size"));
    const QJsonArray idList = ids.toArray();
    const QJsonArray sizeList = sizes.toArray();
    if (idList.isEmpty() || idList.size() != sizeList.size())
        throw ReadError(QStringLiteral("TS_ReadJsonStat"), {path});
    for (qsizetype i = 0; i < idList.size(); ++i) {
        const QString id = idList[i].toString();
        ReadDimension(id, dimensions.value(id).toObject(), sizeList[i].toInteger());
    }
    QJsonValue roles = set.value(QLatin1String("role"));
    if (roles.isUndefined()) roles = dimensions.value(QLatin1String("role"));
    ReadRoles(roles.toObject(), idList);
    source_ = set.value(QLatin1String("source")).toString().toStdString();
    values_ = set.value(QLatin1String("value"));
    states_ = set.value(QLatin1String("status"));
    notes_ = set.value(QLatin1String("note")).toArray();
    cellNotes_ = set.value(QLatin1String("extension")).toObject().value(QLatin1String("cellnotes")).toObject();
    const QJsonObject named = values_.toObject();
    for (auto value = named.begin(); value != named.end(); ++value)
        cells_.push_back(value.key().toLongLong());
    std::ranges::sort(cells_);
}

void JsonStatReader::ReadRoles(const QJsonObject& roles, const QJsonArray& ids) {
    const std::pair<const char*, ColumnKind> names[] = {
        {"time", ColumnKind::Time}, {"geo", ColumnKind::Area}, {"metric", ColumnKind::Indicator}};
    for (const auto& [name, kind] : names) {
        const QJsonArray in = roles.value(QLatin1String(name)).toArray();
        for (qsizetype i = 0; i < ids.size(); ++i)
            if (in.contains(ids[i])) dimensions_[static_cast<std::size_t>(i)].kind = kind;
    }
}

std::vector<ColumnKind> JsonStatReader::Kinds() const {
    std::vector<ColumnKind> kinds;
    for (const Dimension& dimension : dimensions_) {
        kinds.push_back(dimension.kind);
        kinds.push_back(dimension.kind == ColumnKind::Area ? ColumnKind::AreaCode : ColumnKind::Unknown);
    }
    return kinds;
}

void JsonStatReader::ReadDimension(const QString& id, const QJsonObject& dimension, qint64 size) {
    if (size < 1 || size_ > kMostCells / size) throw ReadError(QStringLiteral("TS_ReadJsonStat"), {path_});
    size_ *= size;
    const QJsonObject category = dimension.value(QLatin1String("category")).toObject();
    const QJsonValue index = category.value(QLatin1String("index"));
    const qsizetype named = std::max(index.toArray().size(), index.toObject().size());
    if (size > std::max<qsizetype>(named, 1)) throw ReadError(QStringLiteral("TS_ReadJsonStat"), {path_});
    const QJsonObject labels = category.value(QLatin1String("label")).toObject();
    const QJsonObject units = category.value(QLatin1String("unit")).toObject();
    Dimension read;
    read.label = dimension.value(QLatin1String("label")).toString(id).toStdString();
    for (const QString& code : CodesOf(category, size)) {
        read.codes.push_back(code.toStdString());
        read.labels.push_back(labels.value(code).toString(code).toStdString());
        if (units.isEmpty()) continue;
        const QJsonObject unit = units.value(code).toObject();
        const QString base = unit.value(QLatin1String("base")).toString();
        read.units.push_back(unit.value(QLatin1String("label")).toString(base).toStdString());
    }
    dimensions_.push_back(std::move(read));
}

int JsonStatReader::Percent() const {
    if (values_.isObject()) return cells_.empty() ? 100 : static_cast<int>(next_ * 100 / qint64(cells_.size()));
    return static_cast<int>(std::max<qint64>(next_, 0) * 100 / size_);
}

QJsonValue JsonStatReader::At(const QJsonValue& cells, qint64 cell) const {
    if (cells.isArray()) return cells[static_cast<qsizetype>(cell)];
    if (cells.isObject()) return cells[QString::number(cell)];
    return cells; // one text for all
}

void JsonStatReader::WriteHeads(TableRow& row) const {
    for (const Dimension& dimension : dimensions_) {
        row.Add() = dimension.label;
        row.Add() = dimension.label + " (code)";
    }
    for (const char* name : {"UNIT", "SOURCE", "STATUS"})
        row.Add() = name;
    if (!cellNotes_.isEmpty()) row.Add() = "NOTE";
    row.Add() = "VALUE";
}

void JsonStatReader::WriteCell(TableRow& row, qint64 cell) const {
    std::vector<std::size_t> at(dimensions_.size());
    qint64 rest = cell;
    for (std::size_t i = dimensions_.size(); i-- > 0;) {
        const auto size = static_cast<qint64>(dimensions_[i].codes.size());
        at[i] = static_cast<std::size_t>(rest % size);
        rest /= size;
    }
    std::string unit;
    for (std::size_t i = 0; i < dimensions_.size(); ++i) {
        row.Add() = dimensions_[i].labels[at[i]];
        row.Add() = dimensions_[i].codes[at[i]];
        if (!dimensions_[i].units.empty()) unit = dimensions_[i].units[at[i]];
    }
    row.Add() = unit;
    row.Add() = source_;
    row.Add() = TextOf(At(states_, cell));
    if (!cellNotes_.isEmpty()) {
        const int note = cellNotes_.value(QString::number(cell)).toInt(-1);
        row.Add() = note >= 0 ? notes_.at(note).toString().toStdString() : std::string();
    }
    row.Add() = TextOf(At(values_, cell));
}

/// The cell to be written next; -1 at the end.
qint64 JsonStatReader::NextCell() {
    const bool isNamed = values_.isObject();
    const qint64 count =
        isNamed ? static_cast<qint64>(cells_.size()) : std::min(size_, qint64(values_.toArray().size()));
    while (next_ < count) {
        const qint64 cell = isNamed ? cells_[static_cast<std::size_t>(next_)] : next_;
        ++next_;
        if (cell >= 0 && cell < size_ && !At(values_, cell).isNull()) return cell;
    }
    return -1;
}

bool JsonStatReader::Next(TableRow& row) {
    row.Clear();
    if (next_ < 0) {
        next_ = 0;
        row.number = 1;
        WriteHeads(row);
        return true;
    }
    const qint64 cell = NextCell();
    if (cell < 0) return false;
    row.number = next_ + 1;
    WriteCell(row, cell);
    return true;
}

} // namespace tessaro
