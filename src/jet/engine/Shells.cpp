#include "jet/engine/Shells.h"

namespace jet {

bool Shells::canBeLeftBy(const Translation& translation) const {
    return translation.change == TargetChange::Drop && catalogue_.canBeShell(translation.target);
}

bool Shells::canBeFilledBy(const Translation& translation) const {
    if (translation.change != TargetChange::Make) return false;
    const TableInfo* const shell = catalogue_.shell(translation.target);
    return shell != nullptr && LiveCatalogue::Fits(*shell, translation.columns);
}

void Shells::Mark(const std::string& name) {
    if (mark_ == nullptr)
        mark_ = Prepare(database_, "INSERT OR REPLACE INTO main.MSysLinks (Name, File, Password, SourceTable) VALUES "
                                   "(?, '', '', '')");
    RunAgain(database_, mark_.get(), {name});
}

void Shells::Unmark(const std::string& name) {
    if (unmark_ == nullptr) unmark_ = Prepare(database_, "DELETE FROM main.MSysLinks WHERE Name = ? AND File = ''");
    RunAgain(database_, unmark_.get(), {name});
}

} // namespace jet
