#pragma once

#include "layers/LayerStack.h"
#include "map/classes/ClassTable.h"
#include "map/project/ProjectHead.h"

namespace tessaro {

/// The objects of one layer: its theme, files, table, legend, and where its labels stand. Polygons of the theme are
/// joined to the project's table and have a symbol for each class; other layers have one symbol.
void PutLayer(ProjectObjects& objects, const ProjectRefs& refs, ObjectRef theme, const StackedLayer& layer,
              const ClassTable& classes);

} // namespace tessaro
