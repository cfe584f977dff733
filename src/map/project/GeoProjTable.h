#pragma once

#include "platform/Files.h"

#include <QByteArray>
#include <QString>

#include <array>
#include <optional>
#include <vector>

namespace tessaro {

/// A column of the project's table as the project declares it.
struct ProjectField {
    const char* name;
    bool isNumber;
    int pixels; ///< of its width on the screen
};
inline constexpr std::array<ProjectField, 11> kProjectFields{{{"Year", false, 29},
                                                              {"Areaid", false, 150},
                                                              {"Areaname", false, 150},
                                                              {"Indicator", false, 150},
                                                              {"Subpopulat", false, 150},
                                                              {"Datavalue", true, 125},
                                                              {"Unit", false, 150},
                                                              {"Source", false, 150},
                                                              {"Breakvalue", true, 71},
                                                              {"Label", false, 150},
                                                              {"Color", true, 71}}};

/// The path of a file beside the project, of its name with another ending (".dbf").
[[nodiscard]] QString BesideProject(const QString& aprPath, const char* ending);

/// A dBase table of kProjectFields in another's place: the same rows, the names as the project has them, fields of text
/// as wide as their longest one, and texts in fields of numbers as numbers (at most 20 characters; what is no number is
/// blank). Nothing when the bytes are no
/// table of so many fields.
[[nodiscard]] std::optional<QByteArray> WithProjectFields(const QByteArray& table);

/// Makes the table of `_MapData` (in UTF-8, which the .cpg tells) that goes beside a project, and puts both behind the
/// files that are to be written together. Gives the number of rows; nothing when it can't be made, which was reported.
[[nodiscard]] std::optional<int> ExportGeoProjTable(const QString& aprPath, std::vector<NewFile>& files);

} // namespace tessaro
