#pragma once

#include <QString>

#include <functional>
#include <optional>

class QFileDialog;
class QWidget;

/// The dialogs that ask for files and folders; tests can answer in their place.
namespace tessaro {

/// What a file dialog is asked to show. `filter` is in the platform's form: "Database files (*.mdb)".
struct FileQuestion {
    QString title;
    QString folder;
    QString filter;
    QString name = {}; ///< suggested name of a file to be made
};

/// Lets the user choose a file that exists; empty when the dialog was cancelled.
[[nodiscard]] QString AskForFile(QWidget* parent, const FileQuestion& question);

/// The name with an ending of the chosen filter ("Text (*.txt)"): a name without one gets it, and the ending of the
/// name that was only suggested gives way to it; one that the user typed stands.
[[nodiscard]] QString WithEndingOf(const QString& file, const QString& filter, const QString& suggested);
/// Lets the user name a file to be made, asking before an existing one is taken; empty when cancelled. The name has an
/// ending of the kind that was chosen.
[[nodiscard]] QString AskForNewFile(QWidget* parent, const FileQuestion& question);
/// Lets the user choose a folder; empty when cancelled.
[[nodiscard]] QString AskForFolder(QWidget* parent, const FileQuestion& question);

/// Who answers file dialogs instead of the user (tests); an empty one brings the dialogs back.
using FileAnswerer = std::function<QString(const FileQuestion&)>;
void SetFileAnswerer(FileAnswerer answerer);
/// The answer to a question while somebody answers instead of the user.
[[nodiscard]] std::optional<QString> AnsweredFile(const FileQuestion& question);

/// Gives the columns of sizes and dates in a dialog's list the room of their texts, and names the rest.
void FitParts(QFileDialog& dialog);
/// The filter with its patterns from left to right, also behind Arabic words: "(*.mdb)" would show as "(mdb.*)".
[[nodiscard]] QString FilterToShow(QString filter);

} // namespace tessaro
