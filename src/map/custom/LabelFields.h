#pragma once

#include <QString>
#include <QStringList>

#include <vector>

/// What the labels of a map can show, and the combined label that is composed of several of them.
namespace tessaro {

/// A field that labels can show.
struct LabelField {
    const char* key;        ///< of its caption; labels are kept by it
    const char* column;     ///< of `_MapData`
    const char* formulaKey; ///< its name in a formula; nullptr for the combined label
};

inline constexpr auto kAreaIdField = "Comm_Area Id";
inline constexpr auto kAreaNameField = "Comm_Area Name";
inline constexpr auto kValueField = "Comm_Datavalue";
inline constexpr auto kCombinedField = "Advanced Labels";

/// All fields: six of the areas' rows and, last, the combined label.
[[nodiscard]] const std::vector<LabelField>& LabelFields();
/// The field of a key; nullptr for a key that there is not.
[[nodiscard]] const LabelField* LabelFieldOf(const QString& key);
/// The keys of the fields from which a layer's labels are chosen: all for a layer of the theme, id and name for another
/// one, whose labels can be combined too when they are so already.
[[nodiscard]] QStringList FieldsOffered(bool ofTheme, const QString& current);

/// The formula of a combined label (AdvancedLabelFormula): Trim(areaid)+' '+Trim(datavalue)+' '. Empty without keys.
[[nodiscard]] QString FormulaOf(const QStringList& formulaKeys);
/// The keys of a formula in order, as LabelFields spells them; whatever else stands in it is left out.
[[nodiscard]] QStringList KeysOfFormula(const QString& formula);
/// The captions of a formula's fields, as a sample of what its labels show.
[[nodiscard]] QString CaptionsOfFormula(const QString& formula);
/// Lets the database evaluate a formula for all rows of `_MapData`. An empty one changes nothing. False when it failed;
/// the log tells why.
[[nodiscard]] bool ApplyFormula(const QString& formula);

} // namespace tessaro
