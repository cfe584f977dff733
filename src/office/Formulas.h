#pragma once

#include "office/Document.h"

#include <QString>

#include <com/sun/star/sheet/XFormulaParser.hpp>
#include <com/sun/star/table/CellAddress.hpp>

namespace tessaro::office {

/// Formulas as spreadsheet programs write them ("=SUM(A1,Sheet1!B2)") and as this one's cells have them
/// ("=SUM(A1;$Sheet1.B2)"). What is no formula is the same in both. On the worker thread only.
class FormulaTranslator final {
  public:
    explicit FormulaTranslator(const Document::Model& model) : model_(model) {}

    using Address = com::sun::star::table::CellAddress;
    /// Addresses in the formula count from this cell.
    [[nodiscard]] rtl::OUString ToCell(const QString& formula, const Address& cell) const;
    [[nodiscard]] QString FromCell(const rtl::OUString& formula, const Address& cell) const;

  private:
    using Parser = com::sun::star::uno::Reference<com::sun::star::sheet::XFormulaParser>;
    [[nodiscard]] const Parser& Own() const;
    [[nodiscard]] const Parser& Usual() const;

    const Document::Model& model_;
    mutable Parser own_; ///< made when a formula needs one
    mutable Parser usual_;
};

/// True for an error of a cell that comes from the wording of its formula, not from the values it works on.
[[nodiscard]] bool IsBrokenFormula(sal_Int32 error);

} // namespace tessaro::office
