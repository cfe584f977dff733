#include "jet/emit/Emitter.h"
#include "jet/rewrite/ColumnScans.h"

namespace jet {

using namespace tree;

void Emitter::declareScan(const ScanTable& scan, Source& source) {
    ScanPlan plan = scan.plan;
    for (std::size_t i = 0; i < scan.keys.size(); ++i)
        plan.keys[i].sql = emitQuery(*scan.keys[i], nullptr).sql;
    std::string fields;
    for (std::size_t i = 0; i < scan.fields.size(); ++i) {
        const ColumnInfo& field = scan.fields[i];
        source.columns.push_back({field.name, field.type, KindOfColumn(field.name, field.type)});
        fields += ", g" + std::to_string(i) + " AS " + QuotedName(field.name);
    }
    for (std::size_t i = 0; i < plan.figures.size(); ++i) {
        if (plan.figures[i].kind == ScanFigureKind::Rows)
            source.columns.push_back({ScanFigureName(i), ColumnType::Long, CompareKind::Number});
        fields += ", a" + std::to_string(i) + " AS " + QuotedName(ScanFigureName(i));
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

Typed Emitter::emitNode(const ScannedAggregate& node, const Scope&, Position) {
    const std::string figure = QuotedName(node.table) + "." + QuotedName(ScanFigureName(node.figure));
    if (node.function == "count") return {"ifnull(SUM(" + figure + "), 0)", CompareKind::Number, ColumnType::Long};
    if (node.function != "min" && node.function != "max")
        return {"jet_scan" + node.function + "(" + figure + ")", CompareKind::Number, ColumnType::Double};
    if (node.kind == CompareKind::ValueText) return {"jet_" + node.function + "(" + figure + ")", node.kind, node.type};
    return {(node.function == "min" ? "MIN(" : "MAX(") + figure + Collate(node.kind) + ")", node.kind, node.type};
}

} // namespace jet
