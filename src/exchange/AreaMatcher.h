#pragma once

#include "exchange/ImportDraft.h"
#include "exchange/TargetItems.h"

#include <QString>

#include <string>
#include <string_view>
#include <vector>

namespace tessaro {

enum class AreaFound {
    One, ///< exactly one area
    None,
    Several, ///< areas share the name
    LeftOut  ///< by the user's choice
};

struct AreaMatch {
    AreaFound found = AreaFound::None;
    int number = 0; ///< AreaNId
};

/// Finds areas of a database by what files call them: the user's choices first, then the id, the global identifier,
/// the codes of countries
/// (ISO 3166: three letters, two letters, number), the name in any language as it stands, the name by its spelling
/// key, and at last the usual names of countries. An id goes before a name.
class AreaMatcher final {
  public:
    AreaMatcher(const std::vector<TargetArea>& areas, const std::vector<AreaChoice>& choices);

    [[nodiscard]] AreaMatch Match(std::string_view id, std::string_view name);
    /// The areas whose names are most like a text, the nearest first; at most `count`. Compares with every name of the
    /// database: see Names.
    [[nodiscard]] std::vector<const TargetArea*> Nearest(const std::string& text, std::size_t count) const;
    /// How many names there are.
    [[nodiscard]] std::size_t Names() const { return nameKeys_.size(); }

  private:
    [[nodiscard]] AreaMatch Look(std::string_view text) const;
    void KnowCodes();
    void KnowCode(const std::string& code, int number);

    const std::vector<TargetArea>& areas_;
    TextMap<AreaMatch> choices_; ///< by the folded text
    TextMap<AreaMatch> ids_;     ///< ids, and the codes that no id is
    TextMap<AreaMatch> names_;
    TextMap<AreaMatch> keys_;
    TextMap<AreaMatch> seen_;
    std::vector<std::pair<QString, const TargetArea*>> nameKeys_; ///< of each name
    std::string last_;
    AreaMatch lastMatch_;
};

} // namespace tessaro
