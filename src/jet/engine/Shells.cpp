// The filters drop and make the same working tables again and again. Here a table that is dropped stays as a shell, and
// the query that makes the like of it fills it: the statements that were compiled for it stay good.
#include "jet/emit/Scope.h"
#include "jet/engine/Engine.h"
#include "jet/values/Collation.h"

#include <utility>

namespace jet {

bool Engine::LeavesShell(const Translation& translation) const {
    return scoped_ && translation.change == TargetChange::Drop && catalogue_->canBeShell(translation.target);
}

bool Engine::FillsShell(const Translation& translation) const {
    if (translation.change != TargetChange::Make) return false;
    const TableInfo* const shell = catalogue_->shell(translation.target);
    return shell != nullptr && LiveCatalogue::Fits(*shell, translation.columns);
}

std::int64_t Engine::LeaveShell(Seen& seen) {
    const std::string name = seen.translation.target;
    AsOne([&] {
        PreparedStatement emptying = std::exchange(seen.prepared, {});
        if (emptying.statement == nullptr) emptying = PrepareNoting("DELETE FROM " + seen.translation.droppedTable, {});
        RunKept(markShell_,
                "INSERT OR REPLACE INTO main.MSysLinks (Name, File, Password, SourceTable) VALUES (?, '', '', '')",
                {name});
        const std::int64_t rows = RunOne(emptying);
        seen.prepared = std::move(emptying);
        return rows;
    });
    catalogue_->NoteEmptied(name);
    return 0;
}

std::int64_t Engine::FillShell(Seen& seen) {
    const std::string name = seen.translation.target;
    const std::int64_t rows = AsOne([&] {
        UnmarkShell(name);
        PreparedStatement filling = TakePrepared(seen);
        const std::int64_t filled = RunOne(filling);
        seen.prepared = std::move(filling);
        return filled;
    });
    catalogue_->NoteShellGone(name);
    catalogue_->NoteMade(name, seen.translation.columns);
    TakeFiguresOf(name, rows);
    return rows;
}

// Under the lock that stands the figures of a new table cost little.
void Engine::TakeFiguresOf(const std::string& table, std::int64_t rows) {
    const std::string figures = LowerCased("main." + table);
    if (sizes_->Refilled(figures, rows)) return;
    sizes_->Forget(figures);
    if (scoped_) sizes_->Made(figures, rows);
}

void Engine::UnmarkShell(const std::string& name) {
    RunKept(unmarkShell_, "DELETE FROM main.MSysLinks WHERE Name = ? AND File = ''", {name});
}

void Engine::DropShell(const std::string& name) {
    const TableInfo* const shell = catalogue_->shell(name);
    if (shell == nullptr) return;
    TakeInAll();
    AsOne([&]() -> std::int64_t {
        UnmarkShell(name);
        Run(database(), "DROP TABLE " + TableSql(*shell));
        return 0;
    });
    catalogue_->NoteShellGone(name);
    sizes_->Forget(LowerCased("main." + name));
}

} // namespace jet
