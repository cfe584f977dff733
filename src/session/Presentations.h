#pragma once

#include <QChar>
#include <QList>
#include <QString>
#include <QStringList>

namespace tessaro {

// The names and the place of finished presentations: the gallery lists them, the wizards save them.

/// The folder of finished presentations; where the application folder can't be written, the user's own in its place.
/// It is made when it is the product's own and missing.
[[nodiscard]] QString GalleryFolder();
/// Takes another folder into use, for this session and the preferences.
void SetGalleryFolder(const QString& folder);

/// Names of the workbooks of the folder without ".xls", whatever its case, sorted. Subfolders are left out.
[[nodiscard]] QStringList PresentationsOf(const QString& folder);

/// 'T', 'G' or 'M', told by the name of the file, in whatever case: " - table.xls", " - graph.xls", " - map.xls",
/// "table -", "graph -", "map -", the last of these that it holds. A name without any of them is looked through for the
/// words of the current language in the same way. Null when nothing tells.
[[nodiscard]] QChar PresentationKind(const QString& name);
/// All kinds whose words the name holds, each once; the one that decides first.
[[nodiscard]] QList<QChar> PresentationKinds(const QString& name);
/// Tells the kinds of many names with the words of the language looked up once.
class KindTeller final {
  public:
    KindTeller();
    [[nodiscard]] QList<QChar> KindsOf(const QString& name) const;
    [[nodiscard]] QChar KindOf(const QString& name) const { return KindsOf(name).value(0); }

  private:
    QStringList words_; ///< of tables, graphs and maps
};
/// The word that stands before the names of a kind ("Table", "Graph", "Map"), in the current language.
[[nodiscard]] QString KindWord(QChar type);

/// A file's name without ".xls", whatever its case.
[[nodiscard]] QString WithoutExtension(const QString& file);

/// True when a presentation can have this name: not blank, without \ / : * ? " < > | and control characters, and short
/// enough for a file's name together with kind word and extension.
[[nodiscard]] bool IsPresentationName(const QString& name);
/// folder + kind word + " - " + name + ".Xls".
[[nodiscard]] QString PresentationFile(const QString& folder, QChar type, const QString& name);

} // namespace tessaro
