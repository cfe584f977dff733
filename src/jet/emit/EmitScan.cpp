#include "jet/emit/Emitter.h"
#include "jet/rewrite/ScanNames.h"
#include "jet/sql/VisitOperands.h"

#include <algorithm>

namespace jet {

using namespace tree;

namespace {

/// Counts stand in columns of their own, in whose order the groups can be had.
std::string FigureColumn(ScanFigureKind kind) {
    const bool count =
        kind == ScanFigureKind::Rows || kind == ScanFigureKind::Values || kind == ScanFigureKind::CountOf;
    return count ? "n" : "a";
}

/// Puts the sources of the fields that an expression reads into the list; False when it reads anything else.
bool ReadsFields(const Expression& expression, const Scope& scope, std::vector<const Source*>& sources) {
    if (const auto* column = std::get_if<ColumnName>(&expression.node)) {
        const Scope::Found found = scope.lookUp(*column, expression.at);
        if (found.source == nullptr || found.level != &scope) return false;
        sources.push_back(found.source);
    }
    return VisitOperands(expression, [&](const Expression& part) { return ReadsFields(part, scope, sources); });
}

} // namespace

void Emitter::declareScan(const ScanTable& scan, Source& source) {
    ScanPlan plan = scan.plan;
    for (std::size_t i = 0; i < scan.keys.size(); ++i)
        plan.keys[i].sql = emitQuery(*scan.keys[i], nullptr).sql;
    for (std::size_t i = 0; i < scan.sides.size(); ++i)
        plan.sides[i].sql = emitQuery(*scan.sides[i], nullptr).sql;
    std::string fields;
    for (std::size_t i = 0; i < scan.fields.size(); ++i) {
        const ColumnInfo& field = scan.fields[i];
        source.columns.push_back({field.name, field.type, KindOfColumn(field.name, field.type)});
        fields += ", g" + std::to_string(i) + " AS " + QuotedName(field.name);
    }
    for (std::size_t i = 0; i < plan.figures.size(); ++i) {
        if (plan.figures[i].kind == ScanFigureKind::Rows)
            source.columns.push_back({ScanFigureName(i), ColumnType::Long, CompareKind::Number});
        fields +=
            ", " + FigureColumn(plan.figures[i].kind) + std::to_string(i) + " AS " + QuotedName(ScanFigureName(i));
    }
    for (const ScanField& field : scan.further) {
        source.columns.push_back({field.name, field.type, field.kind});
        fields += ", " + field.column + " AS " + QuotedName(field.name);
    }
    source.alias = scan.alias;
    source.sql = "(SELECT " + (fields.empty() ? "g0" : fields.substr(2)) + " FROM jet_scan(?" +
                 std::to_string(parameterFor(std::move(plan))) + ")) AS " + QuotedName(source.alias);
}

// Queries of a union over the same groups share one plan, so that the image is read once for all.
std::size_t Emitter::parameterFor(ScanPlan plan) {
    for (std::size_t i = 0; i < lists_.size(); ++i)
        if (lists_[i].scan != nullptr && lists_[i].scan->sameAs(plan)) return i + 1;
    lists_.push_back({nullptr, {}, std::make_shared<const ScanPlan>(std::move(plan))});
    return lists_.size();
}

Typed Emitter::emitNode(const ScannedAggregate& node, const Scope& scope, Position) {
    const std::string figure = QuotedName(node.table) + "." + QuotedName(ScanFigureName(node.figure));
    if (node.argument != nullptr) {
        Typed value = emit(*node.argument, scope);
        if (node.whole) return value;
        return {"jet_firstof(" + AsValue(value) + ", " + figure + ")", value.kind, value.type};
    }
    const bool extreme = node.function == "min" || node.function == "max";
    if (node.whole) return {figure, extreme ? node.kind : CompareKind::Number, extreme ? node.type : ColumnType::Long};
    if (node.function == "count") return {"ifnull(SUM(" + figure + "), 0)", CompareKind::Number, ColumnType::Long};
    if (!extreme) return {"jet_scan" + node.function + "(" + figure + ")", CompareKind::Number, ColumnType::Double};
    if (node.kind == CompareKind::ValueText) return {"jet_" + node.function + "(" + figure + ")", node.kind, node.type};
    return {(node.function == "min" ? "MIN(" : "MAX(") + figure + Collate(node.kind) + ")", node.kind, node.type};
}

// The first row of a table of values is that which stands first in the table, in whatever order SQLite joins.
std::optional<std::string> Emitter::rowOfFirst(const Call& node, const Scope& scope) const {
    if (node.name != "first" || scope.projected != nullptr || !aggregateFilter_.empty()) return std::nullopt;
    std::vector<const Source*> sources;
    if (!ReadsFields(*node.arguments.front(), scope, sources) || sources.empty()) return std::nullopt;
    const Source& source = *sources.front();
    const auto isValue = [](const OutputColumn& column) { return column.kind == CompareKind::ValueText; };
    const bool values = source.table != nullptr && std::ranges::any_of(source.columns, isValue);
    const bool one = std::ranges::all_of(sources, [&](const Source* each) { return each == &source; });
    return values && one ? std::optional(source.rowId()) : std::nullopt;
}

} // namespace jet
