#pragma once

#include <string>
#include <vector>

/// Choices for opening files, cursors and links.
namespace jet {

enum class CursorType {
    ForwardOnly, ///< rows are fetched as they are asked for; MoveNext only
    Static,      ///< a snapshot of all rows on the client; moves freely
    Keyset,      ///< moves freely; rows are fetched as far as they are asked for, RecordCount and MoveLast fetch all
};

/// What a file is opened as.
enum class Use {
    Data, ///< any file, also a stranger's: links in it count for nothing, and it is refused when it computes something
    Working, ///< a file of the program's own, which keeps links to others
};

/// Whether what a link names can be changed through it.
enum class LinkAccess { Read, Write };

/// How a statement is run.
struct Explanation {
    std::vector<std::string> steps; ///< names of the rewrites that changed it
    std::vector<std::string> texts; ///< for SQLite, in order; a crosstab's with %VALUE% and %NAME% for its columns
};

} // namespace jet
