#include "map/custom/LabelFields.h"

#include "session/Query.h"
#include "session/Strings.h"

#include <algorithm>

namespace tessaro {

const std::vector<LabelField>& LabelFields() {
    static const std::vector<LabelField> fields{{kAreaIdField, "AreaID", "areaid"},
                                                {kAreaNameField, "AreaName", "Areaname"},
                                                {kValueField, "DataValue", "datavalue"},
                                                {"Subpop", "SubPop", "subpop"},
                                                {"Comm_Unit", "Unit", "unit"},
                                                {"Comm_Time", "TimePeriod", "timeperiod"},
                                                {kCombinedField, "AdvancedLabels", nullptr}};
    return fields;
}

const LabelField* LabelFieldOf(const QString& key) {
    const auto& fields = LabelFields();
    const auto found = std::find_if(fields.begin(), fields.end(),
                                    [&](const LabelField& each) { return key == QLatin1String(each.key); });
    return found == fields.end() ? nullptr : &*found;
}

QStringList FieldsOffered(bool ofTheme, const QString& current) {
    QStringList keys;
    if (ofTheme)
        for (const LabelField& field : LabelFields())
            keys << QLatin1String(field.key);
    else
        keys << QLatin1String(kAreaIdField) << QLatin1String(kAreaNameField);
    if (!ofTheme && current == QLatin1String(kCombinedField)) keys << current;
    return keys;
}

QString FormulaOf(const QStringList& formulaKeys) {
    QStringList terms;
    for (const QString& key : formulaKeys)
        terms << QStringLiteral("Trim(") + key + QStringLiteral(")+' '");
    return terms.join(QLatin1Char('+'));
}

QStringList KeysOfFormula(const QString& formula) {
    QStringList keys;
    for (const QString& term : formula.split(QLatin1Char('+')))
        for (const LabelField& field : LabelFields()) {
            if (field.formulaKey == nullptr) continue;
            const QString key = QLatin1String(field.formulaKey);
            const QString trimmed = QStringLiteral("Trim(") + key + QLatin1Char(')');
            if (term.trimmed().compare(trimmed, Qt::CaseInsensitive) == 0 && !keys.contains(key)) keys << key;
        }
    return keys;
}

QString CaptionsOfFormula(const QString& formula) {
    QStringList captions;
    for (const QString& key : KeysOfFormula(formula))
        for (const LabelField& field : LabelFields())
            if (field.formulaKey != nullptr && key == QLatin1String(field.formulaKey))
                captions << PlainText(QLatin1String(field.key));
    return captions.join(QLatin1Char(' '));
}

bool ApplyFormula(const QString& formula) {
    const QString known = FormulaOf(KeysOfFormula(formula)); // a draft from elsewhere can't slip in other SQL
    return known.isEmpty() || Execute(QStringLiteral("Update _MapData SET AdvancedLabels = ") + known);
}

} // namespace tessaro
