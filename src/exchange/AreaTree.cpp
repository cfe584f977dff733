#include "exchange/AreaTree.h"

#include "database/AreaIds.h"
#include "exchange/HeadWords.h"
#include "exchange/ItemNames.h"
#include "exchange/OpenSource.h"
#include "exchange/SpellingKey.h"
#include "formats/CsvLook.h"
#include "formats/ReadError.h"
#include "jet/values/Collation.h"
#include "layers/LayerReader.h"
#include "layers/MapFiles.h"

#include <QStringList>

#include <algorithm>
#include <optional>

namespace tessaro {

namespace {

constexpr std::size_t kLevelWidth = schema::kCharactersPerLevel;
constexpr std::size_t kLongestOwnId = 30; // ten levels; a longer text is no id of a tree
constexpr std::string_view kSigns = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";

enum class Column { None, Code, Name, Parent, Level, Map };

bool IsLetterOrDigit(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

Column ColumnOf(const QString& head) {
    static const struct {
        Column column;
        const char* heads;
    } lists[] = {
        {Column::Code, "id|id_|code|iso_a3|adm0_a3|gid|geoid|fips|identifiant|identificador|código|المعرف|код"},
        {Column::Name, "name|name_|name1_|name_en|nom|nombre|الاسم|название|имя"},
        {Column::Parent, "parent|parent id|parent_id|parentid|parent code|parent area|belongs to|parent area id|"
                         "zone parente|área superior|padre|المنطقة الأم|родитель"},
        {Column::Level, "level|area level|arealevel|niveau|nivel|المستوى|уровень"},
        {Column::Map, "map|map file|mapfile|layer|carte|mapa|الخريطة|карта"}};
    const QString key = SpellingKey(head);
    for (const auto& list : lists)
        for (const QString& known : QString::fromUtf8(list.heads).split(QLatin1Char('|')))
            if (SpellingKey(known) == key) return list.column;
    const Role role = RoleOfHead(head);
    return role == Role::AreaId ? Column::Code : role == Role::AreaName ? Column::Name : Column::None;
}

/// A row of the file.
struct Raw {
    std::string code;
    std::string name;
    std::string parent;
    std::string map;
    int level = 0; ///< 0: not told
};

Raw RawOf(const std::vector<Column>& columns, const std::vector<std::string>& texts) {
    Raw raw;
    for (std::size_t i = 0; i < std::min(columns.size(), texts.size()); ++i) {
        const std::string text(WithoutBlanks(texts[i]));
        if (columns[i] == Column::Code) raw.code = text;
        if (columns[i] == Column::Name && !text.empty()) raw.name = text;
        if (columns[i] == Column::Parent) raw.parent = text;
        if (columns[i] == Column::Map) raw.map = text;
        if (columns[i] == Column::Level) raw.level = QString::fromStdString(text).toInt();
    }
    if (raw.code.empty()) raw.code = raw.name;
    if (raw.name.empty()) raw.name = raw.code;
    return raw;
}

/// Only the first column of a kind counts.
std::vector<Column> ColumnsOf(const QStringList& heads, const QString& file) {
    std::vector<Column> columns;
    for (const QString& head : heads) {
        const Column column = ColumnOf(head);
        columns.push_back(std::ranges::find(columns, column) == columns.end() ? column : Column::None);
    }
    const bool hasNames =
        std::ranges::any_of(columns, [](Column column) { return column == Column::Code || column == Column::Name; });
    if (!hasNames) throw ReadError(QStringLiteral("TS_TreeNoColumns"), {file});
    return columns;
}

std::vector<Raw> RowsOfTable(const QString& file) {
    ImportDraft draft;
    draft.kind = KindOf(file);
    if (draft.kind == FileKind::Csv) draft.csv = FindCsvForm(file);
    const std::unique_ptr<TableReader> reader = OpenSource(file, draft);
    TableRow row;
    QStringList heads;
    if (reader->Next(row))
        for (std::size_t i = 0; i < row.count; ++i)
            heads << QString::fromStdString(row.fields[i]).trimmed();
    const std::vector<Column> columns = ColumnsOf(heads, file);
    std::vector<Raw> rows;
    while (reader->Next(row))
        rows.push_back(
            RawOf(columns, {row.fields.begin(), row.fields.begin() + static_cast<std::ptrdiff_t>(row.count)}));
    return rows;
}

/// One row a feature, in their order.
std::vector<Raw> RowsOfLayer(const QString& file, std::vector<QString>& ids) {
    const LayerReading reading = ReadLayer(file);
    if (!reading.layer) throw ReadError(QStringLiteral("TS_ReadNoFile"), {file, ReasonOf(reading.fault)});
    const MapLayer& layer = *reading.layer;
    ids = AreaIdsOf(layer);
    const std::vector<Column> columns = ColumnsOf(layer.fields, file);
    std::vector<Raw> rows;
    for (std::size_t feature = 0; feature < layer.features.size(); ++feature) {
        std::vector<std::string> texts;
        for (qsizetype field = 0; field < layer.fields.size(); ++field)
            texts.push_back(layer.Text(static_cast<int>(feature), static_cast<int>(field)).toStdString());
        rows.push_back(RawOf(columns, texts));
    }
    return rows;
}

/// Gives the areas of the rows their places in the tree and their ids.
class Planter final {
  public:
    Planter(std::vector<Raw> rows, bool mayRepeat) : rows_(std::move(rows)) {
        for (std::size_t i = 0; i < rows_.size(); ++i) {
            const std::string key = jet::Folded(rows_[i].code);
            if (key.empty()) continue;
            const bool isNew = placeOf_.try_emplace(key, i).second;
            if (!isNew && !mayRepeat)
                throw ReadError(QStringLiteral("TS_TreeTwice"), {QString::fromStdString(rows_[i].code)});
        }
        ids_.resize(rows_.size());
        FindParents();
    }

    AreaTree Run() {
        AreaTree tree;
        std::vector<std::size_t> areaOf(rows_.size(), 0);
        for (std::size_t i = 0; i < rows_.size(); ++i) {
            if (rows_[i].code.empty()) continue;
            const std::size_t first = placeOf_.find(jet::Folded(rows_[i].code))->second;
            if (first == i) {
                areaOf[i] = tree.areas.size();
                tree.areas.push_back({IdOf(i, 0), rows_[i].code, rows_[i].name, rows_[i].map});
            }
            areaOf[i] = areaOf[first];
        }
        tree.areaOfFeature = std::move(areaOf);
        return tree;
    }

  private:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    [[nodiscard]] std::size_t Find(const std::string& code) const {
        const auto found = placeOf_.find(jet::Folded(code));
        return found == placeOf_.end() ? kNone : found->second;
    }

    void FindParents() {
        std::vector<std::size_t> last; // row of each level
        for (std::size_t i = 0; i < rows_.size(); ++i) {
            const Raw& row = rows_[i];
            std::size_t parent = kNone;
            if (!row.parent.empty()) {
                parent = Find(row.parent);
                if (parent == kNone || parent == i)
                    throw ReadError(QStringLiteral("TS_TreeNoParent"),
                                    {QString::fromStdString(row.code), QString::fromStdString(row.parent)});
            } else if (row.level > 0) {
                last.resize(static_cast<std::size_t>(std::min(row.level, 100)), kNone);
                if (last.size() > 1) parent = last[last.size() - 2];
                last.back() = i;
            } else if (IsTreeId(row.code) && row.code.size() > kLevelWidth) {
                parent = Find(row.code.substr(0, row.code.size() - kLevelWidth));
            }
            parents_.push_back(parent);
        }
    }

    /// The id of a row's area; those of its parents are made first.
    std::string IdOf(std::size_t row, std::size_t depth) {
        if (!ids_[row].empty()) return ids_[row];
        if (depth * kLevelWidth >= kLongestOwnId)
            throw ReadError(QStringLiteral("TS_TreeTooDeep"), {QString::fromStdString(rows_[row].code)});
        const std::string& code = rows_[row].code;
        const std::size_t parent = parents_[row];
        const std::string above = parent == kNone ? std::string() : IdOf(parent, depth + 1);
        const bool fits = IsTreeId(code) && (parent == kNone ? rows_[row].level <= 1
                                                             : code.size() == above.size() + kLevelWidth &&
                                                                   jet::Folded(code).starts_with(jet::Folded(above)));
        std::string id = fits ? code : above + code;
        if (!fits && (code.size() != kLevelWidth || !IsTreeId(code) || used_.contains(jet::Folded(id))))
            id = NextFree(above);
        if (id.size() > kLongestOwnId)
            throw ReadError(QStringLiteral("TS_TreeTooDeep"), {QString::fromStdString(code)});
        used_.try_emplace(jet::Folded(id), true);
        return ids_[row] = id;
    }

    std::string NextFree(const std::string& above) {
        int& last = lastOf_[above];
        for (;;) {
            std::string end(kLevelWidth, '0');
            int rest = ++last;
            for (std::size_t place = kLevelWidth; place-- > 0; rest /= static_cast<int>(kSigns.size()))
                end[place] = kSigns[static_cast<std::size_t>(rest) % kSigns.size()];
            if (rest > 0) throw ReadError(QStringLiteral("TS_TreeTooDeep"), {QString::fromStdString(above)});
            std::string id = above + end;
            if (!used_.contains(jet::Folded(id)) && !placeOf_.contains(jet::Folded(id))) return id;
        }
    }

    std::vector<Raw> rows_;
    TextMap<std::size_t> placeOf_; ///< rows by their codes
    std::vector<std::size_t> parents_;
    std::vector<std::string> ids_;
    TextMap<bool> used_;
    TextMap<int> lastOf_;
};

} // namespace

int TreeArea::Level() const {
    return static_cast<int>(id.size() / kLevelWidth);
}

bool IsTreeId(const std::string& id) {
    return !id.empty() && id.size() % kLevelWidth == 0 && id.size() <= kLongestOwnId &&
           std::ranges::all_of(id, IsLetterOrDigit);
}

AreaTree ReadAreaTree(const QString& file) {
    const bool isLayer = file.endsWith(QLatin1String(".shp"), Qt::CaseInsensitive);
    std::vector<QString> ids;
    AreaTree tree = Planter(isLayer ? RowsOfLayer(file, ids) : RowsOfTable(file), isLayer).Run();
    if (!isLayer) return tree;
    tree.map = file;
    tree.mapHasIds = !tree.areas.empty();
    for (std::size_t i = 0; i < ids.size() && tree.mapHasIds; ++i)
        tree.mapHasIds = ids[i] == QString::fromStdString(tree.areas[tree.areaOfFeature[i]].id).toUpper();
    return tree;
}

void AddTreeAreas(const AreaTree& tree, TargetItems& items) {
    int number = 0;
    for (const TreeArea& area : tree.areas)
        items.areas.push_back({--number, area.id, area.code, area.Level(), {area.name}});
}

} // namespace tessaro
