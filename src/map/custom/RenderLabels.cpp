#include "map/custom/RenderLabels.h"

#include "layers/MapFiles.h"
#include "map/MapLayerList.h"
#include "map/custom/LabelFields.h"
#include "session/DisplayValue.h"
#include "session/ErrorSink.h"
#include "session/Query.h"
#include "session/Settings.h"

#include <QHash>
#include <QSet>

#include <map>

namespace tessaro {

namespace {

using TextsOfAreas = QHash<QString, QString>; ///< by the areas' ids, trimmed and in capitals

QString IdOf(const QString& areaId) {
    return areaId.trimmed().toUpper();
}

/// A column of `_MapData`.
TextsOfAreas ColumnOf(const LabelField& field) {
    TextsOfAreas texts;
    Records rows =
        Select(QStringLiteral("SELECT AreaID, ") + QLatin1String(field.column) + QStringLiteral(" FROM _MapData"),
               jet::CursorType::ForwardOnly);
    for (; !rows.atEnd(); rows.MoveNext())
        texts.insert(IdOf(rows.Text(std::size_t{0})), rows.Text(std::size_t{1}).trimmed());
    return texts;
}

/// The values as they are displayed, with their years where those differ.
TextsOfAreas Values() {
    TextsOfAreas values;
    TextsOfAreas years;
    QSet<QString> different;
    Records rows =
        Select(QStringLiteral("SELECT AreaID, DataValue, TimePeriod FROM _MapData"), jet::CursorType::ForwardOnly);
    for (; !rows.atEnd(); rows.MoveNext()) {
        const QString value = rows.Text(std::size_t{1});
        if (value.isEmpty()) continue;
        const QString id = IdOf(rows.Text(std::size_t{0}));
        values.insert(id, DisplayedValue(value));
        years.insert(id, rows.Text(std::size_t{2}).trimmed());
        different.insert(years.value(id));
    }
    if (different.size() > 1)
        for (auto value = values.begin(); value != values.end(); ++value)
            value.value() += QStringLiteral(" (") + years.value(value.key()) + QLatin1Char(')');
    return values;
}

/// What the table of all areas has of a formula; empty when it asks for neither ids nor names.
QString AreaColumns(const QString& formula) {
    const QStringList keys = KeysOfFormula(formula);
    const qsizetype id = keys.indexOf(QStringLiteral("areaid"));
    const qsizetype name = keys.indexOf(QStringLiteral("Areaname"));
    if (id >= 0 && name >= 0)
        return id < name ? QStringLiteral("AreaID + ' ' + AreaName") : QStringLiteral("AreaName + ' ' + AreaID");
    if (id >= 0) return QStringLiteral("AreaID");
    return name >= 0 ? QStringLiteral("AreaName") : QString();
}

TextsOfAreas CombinedOfAreas(const QString& formula) {
    TextsOfAreas texts;
    const QString columns = AreaColumns(formula);
    if (columns.isEmpty()) return texts;
    Records rows = Select(QStringLiteral("Select AreaID, ") + columns + QStringLiteral(" from Area"),
                          jet::CursorType::ForwardOnly);
    for (; !rows.atEnd(); rows.MoveNext())
        texts.insert(IdOf(rows.Text(std::size_t{0})), rows.Text(std::size_t{1}).trimmed());
    return texts;
}

/// The field with the names of a layer's own features.
int OwnNameField(const MapLayer& layer) {
    const bool otherForm = layer.IdField() >= 0 && layer.FieldOf(QStringLiteral("ID_")) < 0;
    const int name = otherForm ? layer.FieldOf(QStringLiteral("Name")) : -1;
    return name >= 0 ? name : layer.NameField();
}

std::vector<QString> OwnTexts(const MapLayer& layer, int field) {
    std::vector<QString> texts;
    for (int feature = 0; feature < static_cast<int>(layer.features.size()); ++feature)
        texts.push_back(layer.Text(feature, field).trimmed());
    return texts;
}

/// The texts of one drawing; each query is run once.
class LabelTexts final {
  public:
    explicit LabelTexts(const QString& formula) : formula_(formula) {}

    std::vector<QString> Of(const StackedLayer& layer) {
        const LabelField* const field = layer.labels.on ? LabelFieldOf(layer.labels.field) : nullptr;
        if (field == nullptr) return {};
        if (IsOfTheme(layer)) return OfFeatures(layer.data, OfTheme(*field));
        if (layer.labels.field == QLatin1String(kAreaIdField)) return OwnTexts(layer.data, layer.data.IdField());
        if (layer.labels.field == QLatin1String(kAreaNameField)) return OwnTexts(layer.data, OwnNameField(layer.data));
        if (layer.labels.field == QLatin1String(kCombinedField)) return OfFeatures(layer.data, OfTableOfAreas());
        return {};
    }

  private:
    static std::vector<QString> OfFeatures(const MapLayer& layer, const TextsOfAreas& texts) {
        std::vector<QString> found;
        for (const QString& id : AreaIdsOf(layer))
            found.push_back(texts.value(id));
        return found;
    }

    const TextsOfAreas& OfTheme(const LabelField& field) {
        const auto known = ofTheme_.find(field.column);
        if (known != ofTheme_.end()) return known->second;
        if (field.formulaKey == nullptr) (void)ApplyFormula(formula_);
        return ofTheme_
            .emplace(field.column, QLatin1String(field.key) == QLatin1String(kValueField) ? Values() : ColumnOf(field))
            .first->second;
    }

    const TextsOfAreas& OfTableOfAreas() {
        if (!ofTableOfAreas_) ofTableOfAreas_ = CombinedOfAreas(formula_);
        return *ofTableOfAreas_;
    }

    QString formula_;
    std::map<std::string, TextsOfAreas> ofTheme_; ///< by columns
    std::optional<TextsOfAreas> ofTableOfAreas_;
};

} // namespace

void RenderLabels(LayerStack& map, const QString& formula) {
    const ErrorTrap trap("RenderLabels");
    LabelTexts texts(formula);
    for (int i = 0; i < map.Count(); ++i) {
        LayerLabels labels = map.At(i).labels;
        labels.texts = texts.Of(map.At(i));
        map.SetLabels(i, std::move(labels));
    }
}

LayerLabels FirstLabels() {
    LayerLabels labels;
    labels.on = false;
    labels.field = QLatin1String(kAreaNameField);
    const int size = SettingNumber(QStringLiteral("MAP_LABEL_FONT_SIZE"));
    labels.font = QFont(Setting(QStringLiteral("MAP_FONT")), size > 0 ? size : 8);
    labels.halo = HaloOf(labels.color);
    return labels;
}

} // namespace tessaro
