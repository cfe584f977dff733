#include "jet/emit/Translator.h"

#include "jet/emit/Emitter.h"
#include "jet/rewrite/Rewrites.h"
#include "jet/sql/Parser.h"

namespace jet {

using namespace tree;

Translation Translate(std::string_view sql, const Catalogue& catalogue, const LeftOutSteps& leftOut) {
    Statement statement = Parse(sql);
    const std::vector<std::string_view> steps = TakeSteps(statement, catalogue, leftOut);
    Translation made = Emitter(catalogue, sql.size()).translate(statement);
    made.steps = steps;
    return made;
}

} // namespace jet
