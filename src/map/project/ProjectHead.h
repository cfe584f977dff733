#pragma once

#include "layers/MapLayer.h"
#include "map/project/GeoProjTable.h"
#include "map/project/ProjectObjects.h"

#include <QDateTime>

#include <array>
#include <vector>

namespace tessaro {

/// What the first objects of a project tell.
struct ProjectFacts {
    QString path; ///< of the .apr
    QDateTime created;
    int records = 0; ///< of the table
    MapBox extent;   ///< what the map shows
};

/// Places of kProjectFields that layers refer to.
enum class ProjectColumn { AreaId = 1, Value = 5, Break = 8, Label = 9, Color = 10 };

/// What the first objects refer to, or others to them.
struct ProjectRefs {
    ObjectRef view;
    ObjectRef table; ///< the dBase table that all layers of the theme are joined to
    std::array<ObjectRef, kProjectFields.size()> fields;
    std::vector<ObjectRef> themes; ///< one for each layer, the topmost first
    ObjectRef names;               ///< the last objects
    ObjectRef workFolder;

    [[nodiscard]] ObjectRef Field(ProjectColumn column) const { return fields[static_cast<std::size_t>(column)]; }
};

/// Objects that blocks announce for each other. `layers` is the number of themes.
[[nodiscard]] ProjectRefs AnnounceObjects(ProjectObjects& objects, int layers);

/// The objects before those of the layers: project, table, and view.
void PutHead(ProjectObjects& objects, const ProjectRefs& refs, const ProjectFacts& facts);
/// The objects behind them.
void PutTail(ProjectObjects& objects, const ProjectRefs& refs);

/// A file's place in a project.
void PutFileName(ProjectObjects& objects, ObjectRef file, const QString& path);
/// A column of a table in a project. `type` 4 is text, 9 a number.
void PutField(ProjectObjects& objects, ObjectRef field, ObjectRef table, const QString& name, int type, int pixels);
/// Which records of a table are chosen: none of so many.
void PutSelection(ProjectObjects& objects, ObjectRef selection, int records);

} // namespace tessaro
