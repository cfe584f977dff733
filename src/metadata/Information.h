#pragma once

#include <QString>

#include <optional>
#include <vector>

/// The information sheets of items: which there are, and their texts.
namespace tessaro::metadata {

/// The statement that reads an item's information, by its code ("IND", "GOALS", "CF", "THEMES", "SOURCES", "RIGHTS");
/// empty for an unknown code. `idIsGId`: an indicator's id is its GId and not the number of a combination.
[[nodiscard]] QString InformationSql(const QString& id, const QString& code, const QString& formName, bool idIsGId);
/// The text; nothing when there is none worth showing.
[[nodiscard]] std::optional<QString> InformationOf(const QString& id, const QString& code, const QString& formName,
                                                   bool idIsGId);

/// An item of the browser of all information.
struct InformationItem {
    QString gid;
    QString name;
};
/// The items of a code that have information, by name.
[[nodiscard]] QString InformationListSql(const QString& code);
[[nodiscard]] std::vector<InformationItem> InformationList(const QString& code);
/// The text of one item of such a list.
[[nodiscard]] QString InformationText(const QString& code, const QString& gid);

} // namespace tessaro::metadata
