#pragma once

#include "jet/sql/Tree.h"
#include "jet/values/Catalogue.h"

#include <string>
#include <vector>

namespace jet {

/// The tables of a FROM clause, for steps that must know which field a name means.
class FieldsOfTables final {
  public:
    FieldsOfTables(const std::vector<tree::TableReferencePtr>& from, const Catalogue& catalogue);

    /// True when the clause has tables of the catalogue alone, joined by inner joins.
    [[nodiscard]] bool plain() const { return plain_; }
    /// The field that a name means; nullptr when no table of the catalogue has it, or more than one.
    [[nodiscard]] const ColumnInfo* field(const tree::ColumnName& name) const;
    /// True when a table of the catalogue has the field, or several have.
    [[nodiscard]] bool knows(const tree::ColumnName& name) const { return !fields(name).empty(); }

  private:
    struct Named {
        std::string alias;
        const TableInfo* info = nullptr;
    };
    void Add(const tree::TableReference& reference, const Catalogue& catalogue);
    [[nodiscard]] std::vector<const ColumnInfo*> fields(const tree::ColumnName& name) const;

    std::vector<Named> tables_;
    bool plain_ = true;
};

} // namespace jet
