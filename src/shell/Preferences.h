#pragma once

#include "session/Session.h"

#include <QString>
#include <QStringList>

#include <array>
#include <optional>

namespace tessaro {

/// The values that the preferences dialog edits, as a draft apart from the session, so that Cancel has nothing to undo.
struct Preferences {
    QString language;
    QString font;
    int fontSize = 0;
    int fontStyle = 0;
    bool collapseTree = false;
    bool autoSelectForm = false;
    bool gridLines = false;
    bool systemNumbers = false;
    bool footnotes = false;
    bool showGlobalColor = false;
    long globalColor = 0;
    long dataExists = 0;
    QString sound;
    bool mute = false;
    std::array<bool, 7> views{};
    int openWith = 0; ///< number of the view that opens first
    bool byCombination = false;

    bool operator==(const Preferences&) const = default;

    [[nodiscard]] static Preferences OfSession();
    /// Puts the values into the session. An empty language becomes "en"; sectors stay on, and the view that opens first
    /// is one that is on.
    void TakeIntoSession() const;

    /// True when the lists of the stages must be filled anew.
    [[nodiscard]] bool ChangesLists(const Preferences& before) const;
    /// True when the indicator screen has other views, or other items in its lists.
    [[nodiscard]] bool ChangesIndicatorViews(const Preferences& before) const;
};

/// Whether the product offers a classification view (row 0 to 6).
[[nodiscard]] bool IsViewOffered(int view);

/// The font that a language file recommends, and a sample text.
struct LanguageFace {
    QString font; ///< empty when the file names none
    int size = 0;
    QString sample; ///< a text in the language
};
[[nodiscard]] LanguageFace FaceOfLanguage(const QString& label);

/// Families of the fonts that this machine can draw at any size.
[[nodiscard]] QStringList FontFamilies();

/// Shown in the dialog: the name of the open database and its areas of level 1; empty while none is open.
struct ProductScope {
    QString subject;
    QStringList areas;
};
[[nodiscard]] ProductScope ScopeOfDatabase();

/// Names of the product's sounds.
[[nodiscard]] QStringList Sounds();
/// The path of a sound by its name in the list; any other text is taken for a path.
[[nodiscard]] QString PathOfSound(const QString& name);
/// How the list shows a sound file: by its name when it is one of the product's, otherwise by its path.
[[nodiscard]] QString NameOfSound(const QString& path);

/// Copies a language file into the language folder, asking (message "285") before one of that name is replaced, and
/// fills LanguageFiles again. False, and the user is told, when it is no readable language file or can't be copied;
/// False also when the answer is No.
bool ImportLanguageFile(const QString& file);

} // namespace tessaro
