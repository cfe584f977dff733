#include "map/project/LayerBlock.h"

#include "map/MapLayerList.h"
#include "map/output/LegendPlan.h"
#include "map/project/ProjectSymbols.h"

namespace tessaro {

namespace {

constexpr int kTextType = 4;

/// What differs between the blocks of polygons, lines and points.
struct BlockForm {
    const char* flags;
    const char* subName;
    int shapeType;          ///< of the field "Shape"
    int records;            ///< that the selection is made for
    const char* symbolType; ///< of the legend; none for points
    const char* labelPlace;
    int labelAlign;
};

const BlockForm& FormOf(LayerKind kind) {
    static constexpr BlockForm kPolygons{"0x07", "Polygon", 19, 119, "0x02", "TxPosPly", 3};
    static constexpr BlockForm kLines{"0x06", "Arc", 18, 119, "0x01", "TxPosPly", 3};
    static constexpr BlockForm kPoints{"0x07", "Point", 17, 127, nullptr, "TxPosPt", 4};
    if (kind == LayerKind::Polygon) return kPolygons;
    return kind == LayerKind::Line ? kLines : kPoints;
}

constexpr int kRecordsOfTheme = 32;

/// The columns of a layer that a project shows: ids, names, and the third one. Where there is no such column, the last
/// of those found stands for it, so that none is named that the table lacks.
QStringList ShownFields(const MapLayer& layer, qsizetype count) {
    const auto named = [&layer](int field, const char* otherwise) {
        return field >= 0 ? layer.fields[field] : QString::fromLatin1(otherwise);
    };
    QStringList shown{named(layer.IdField(), "ID_"), named(layer.NameField(), "Name1_")};
    if (layer.fields.size() > 2) shown << layer.fields[2];
    while (shown.size() < count)
        shown << shown.back();
    return shown.mid(0, count);
}

class LayerBlock final {
  public:
    LayerBlock(ProjectObjects& objects, const ProjectRefs& refs, const StackedLayer& layer, const ClassTable& classes)
        : objects_(objects), refs_(refs), layer_(layer), classes_(classes), form_(FormOf(layer.data.kind)),
          joined_(layer.data.kind == LayerKind::Polygon && layer.tag == QLatin1String(kDataTag)),
          hasFields_(layer.data.kind != LayerKind::Line) {
        for (ObjectRef* const each :
             {&source_, &table_, &rows_, &shape_, &selection_, &legend_, &threshold_, &group_, &labelPlace_, &join_})
            *each = objects_.Announce();
        names_ = hasFields_ ? ShownFields(layer.data, joined_ ? 2 : 3) : QStringList();
        for (qsizetype i = 0; i < names_.size(); ++i)
            fields_.push_back(objects_.Announce());
    }

    void Put(ObjectRef theme) {
        PutTheme(theme);
        PutSource();
        PutTable();
        if (joined_) PutJoin();
        PutRows();
        if (joined_)
            PutClassLegend();
        else
            PutPlainLegend();
        PutEnd();
    }

  private:
    [[nodiscard]] QString Name() const {
        constexpr QLatin1String kPrefix("CUSTOMIZE - ");
        const QString& name = layer_.data.name;
        return name.startsWith(kPrefix, Qt::CaseInsensitive) ? name.mid(kPrefix.size()) : name;
    }

    /// The path of the layer's files without their endings, with "/".
    [[nodiscard]] QString Path() const {
        QString path = layer_.file;
        path.replace(QLatin1Char('\\'), QLatin1Char('/'));
        if (path.endsWith(QLatin1String(".SHP"), Qt::CaseInsensitive)) path.chop(4);
        return path;
    }

    void PutTheme(ObjectRef theme) {
        objects_.Begin(theme, "FTheme");
        objects_.Put("Name:   ", Name() + QStringLiteral(".shp"));
        objects_.Put("Source: ", source_);
        objects_.Put((QByteArray("Flags:  ") + form_.flags).constData());
        objects_.Put("Legend: ", legend_);
        objects_.Put("Threshold:  ", threshold_);
        objects_.Put("View:   ", refs_.view);
        objects_.Put("GSet:       ", group_);
        objects_.Put("LegEditScript:  ", QStringLiteral("View.EditLegend"));
        objects_.Put("TxPos:      ", labelPlace_);
        if (hasFields_) objects_.Put("LabelField: ", fields_[1]);
    }

    void PutSource() {
        const ObjectRef name = objects_.Announce();
        const ObjectRef file = objects_.Announce();
        objects_.Begin(source_, "ShpSrc");
        objects_.Put("Name:   ", name);
        objects_.Put("FTab:   ", table_);
        objects_.Begin(name, "SrcName");
        objects_.Put("FileName:   ", file);
        objects_.Put("Name:   ", Name() + QStringLiteral(".shp"));
        objects_.Put("SubName:    ", QLatin1String(form_.subName));
        objects_.Put("OwnerClass: ", QStringLiteral("ShpSrc"));
        PutFileName(objects_, file, Path() + QStringLiteral(".shp"));
    }

    void PutTable() {
        objects_.Begin(table_, "FTab");
        objects_.Put("Name:   ", Name() + QStringLiteral(".dbf"));
        if (joined_) objects_.Put("Joins:      ", join_);
        objects_.Put("BTab:       ", rows_);
        if (joined_) objects_.Put("BTab:       ", refs_.table);
        for (const ObjectRef field : fields_)
            objects_.Put("Fields:     ", field);
        objects_.Put("Fields:     ", shape_);
        if (joined_)
            for (const ProjectColumn column : {ProjectColumn::AreaId, ProjectColumn::Value, ProjectColumn::Break,
                                               ProjectColumn::Label, ProjectColumn::Color})
                objects_.Put("Fields:     ", refs_.Field(column));
        objects_.Put("SelBits:    ", selection_);
        objects_.Put("FSrc:       ", source_);
    }

    void PutJoin() {
        objects_.Begin(join_, "Join");
        objects_.Put("FromBtab:       ", rows_);
        objects_.Put("FromField:      ", fields_[0]);
        objects_.Put("ToBtab:         ", refs_.table);
        objects_.Put("ToField:        ", refs_.Field(ProjectColumn::AreaId));
    }

    void PutRows() {
        const ObjectRef file = objects_.Announce();
        objects_.Begin(rows_, "dBASE");
        objects_.Put("Name:   ", Name() + QStringLiteral(".dbf"));
        for (const ObjectRef field : fields_)
            objects_.Put("Fields:     ", field);
        objects_.Put("FileName:   ", file);
        for (std::size_t i = 0; i < fields_.size(); ++i)
            PutField(objects_, fields_[i], rows_, names_[static_cast<qsizetype>(i)], kTextType, i == 0 ? 101 : 150);
        PutFileName(objects_, file, Path() + QStringLiteral(".dbf"));
        PutShapeField();
        PutSelection(objects_, selection_, joined_ ? kRecordsOfTheme : form_.records);
    }

    void PutShapeField() {
        objects_.Begin(shape_, "Field");
        objects_.Put("Name:       ", QStringLiteral("Shape"));
        objects_.Put("Alias:      ", QStringLiteral("Shape"));
        objects_.Put("Visible:    ", 1);
        objects_.Put("Type:       ", form_.shapeType);
        objects_.Put("Order:      ", -1);
        objects_.Put("Pixels:     ", 53);
    }

    void PutLegendHead(const char* legendType) {
        objects_.Begin(legend_, "Legend");
        if (form_.symbolType != nullptr) objects_.Put((QByteArray("SymType:    ") + form_.symbolType).constData());
        objects_.Put((QByteArray("LegType:    ") + legendType).constData());
        objects_.Put("ClassType:  0x03");
    }

    void PutPlainLegend() {
        const ObjectRef list = objects_.Announce();
        const ObjectRef symbol = objects_.Announce();
        const ObjectRef only = objects_.Announce();
        PutLegendHead("0x01");
        objects_.Put("Symbols:    ", list);
        objects_.Put("Class:  ", only);
        objects_.Put("Precision:  ", -3);
        objects_.Begin(list, "SymList");
        objects_.Put("Child:  ", symbol);
        PutSymbol(symbol);
        objects_.Begin(only, "LClass");
        objects_.Put("IsText:     ", 1);
        objects_.Put("Precision:  ", -3);
    }

    /// The symbol of a layer without classes. Points of the theme are shown as those of its first class.
    void PutSymbol(ObjectRef symbol) {
        const bool ofTheme = layer_.tag == QLatin1String(kDataTag) && !classes_.looks.empty();
        LayerSymbol look;
        if (ofTheme)
            look = SymbolOf(classes_.looks.front());
        else if (!layer_.symbols.symbols.empty())
            look = layer_.symbols.symbols.front();
        if (layer_.data.kind == LayerKind::Polygon)
            PutShading(objects_, symbol, look.color);
        else if (layer_.data.kind == LayerKind::Line)
            PutStroke(objects_, symbol, look);
        else
            PutMarker(objects_, symbol, look);
    }

    void PutClassLegend() {
        const ObjectRef field = objects_.Announce();
        const ObjectRef list = objects_.Announce();
        const ObjectRef missing = objects_.Announce();
        const std::vector<ObjectRef> symbols = AnnounceForClasses();
        const std::vector<ObjectRef> classes = AnnounceForClasses();
        PutLegendHead("0x02");
        objects_.Put("FieldNames: ", field);
        objects_.Put("Symbols:    ", list);
        for (const ObjectRef each : classes)
            objects_.Put("Class:  ", each);
        objects_.Put("NullSym:  ", missing);
        objects_.Put("DisplayNoDataClass:  ", 1);
        objects_.Put("Precision:  ", -3);
        objects_.Begin(field, "AVStr");
        objects_.Put("S:  ", QStringLiteral("BreakValue"));
        PutSymbolList(list, symbols, missing);
        for (std::size_t i = 0; i < symbols.size(); ++i)
            PutShading(objects_, symbols[i], classes_.looks[i].color);
        PutClasses(classes);
        PutShading(objects_, missing, classes_.missing.color);
    }

    std::vector<ObjectRef> AnnounceForClasses() {
        std::vector<ObjectRef> announced;
        for (std::size_t i = 0; i < classes_.looks.size(); ++i)
            announced.push_back(objects_.Announce());
        return announced;
    }

    void PutSymbolList(ObjectRef list, const std::vector<ObjectRef>& symbols, ObjectRef missing) {
        objects_.Begin(list, "SymList");
        for (const ObjectRef each : symbols)
            objects_.Put("Child:  ", each);
        objects_.Put("Child:  ", missing);
    }

    void PutClasses(const std::vector<ObjectRef>& classes) {
        for (std::size_t i = 0; i < classes.size(); ++i) {
            objects_.Begin(classes[i], "LClass");
            objects_.Put("Label:  ", classes_.looks[i].legend);
            objects_.Put("MinNum: ", static_cast<int>(i) + 1);
            objects_.Put("MaxNum: ", static_cast<int>(i) + 1);
            objects_.Put("Precision:  ", -3);
        }
        objects_.Begin("LClass");
        objects_.Put("Label:  ", LegendLines(classes_).back().text);
        objects_.Put("MaxNum:     -1.000000000000");
    }

    void PutEnd() {
        objects_.Begin(threshold_, "Thresh");
        objects_.Begin(group_, "GSet");
        objects_.Begin(labelPlace_, form_.labelPlace);
        objects_.Put("HAlign: ", form_.labelAlign);
        objects_.Put("VAlign: ", 3);
        if (joined_) objects_.Begin("NameDict");
    }

    ProjectObjects& objects_;
    const ProjectRefs& refs_;
    const StackedLayer& layer_;
    const ClassTable& classes_;
    const BlockForm& form_;
    bool joined_; ///< to the project's table
    bool hasFields_;
    QStringList names_; ///< of the fields
    std::vector<ObjectRef> fields_;
    ObjectRef source_, table_, rows_, shape_, selection_, legend_, threshold_, group_, labelPlace_, join_;
};

} // namespace

void PutLayer(ProjectObjects& objects, const ProjectRefs& refs, ObjectRef theme, const StackedLayer& layer,
              const ClassTable& classes) {
    LayerBlock(objects, refs, layer, classes).Put(theme);
}

} // namespace tessaro
