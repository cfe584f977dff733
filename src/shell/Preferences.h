#pragma once

#include "session/Session.h"

#include <QString>
#include <QStringList>

#include <array>
#include <optional>

namespace tessaro {

/// What the preferences dialog edits: a draft of the session's values. Taking it over is one step, so that Cancel needs
/// none.
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

/// How a language file wants its language shown.
struct LanguageFace {
    QString font; ///< empty when it doesn't say
    int size = 0;
    QString sample; ///< a text in the language
};
[[nodiscard]] LanguageFace FaceOfLanguage(const QString& label);

/// Families of the fonts that this machine can draw at any size.
[[nodiscard]] QStringList FontFamilies();

/// What the open database is about: its name, and the areas of its top level; empty while none is open.
struct ProductScope {
    QString subject;
    QStringList areas;
};
[[nodiscard]] ProductScope ScopeOfDatabase();

/// Names of the product's sounds.
[[nodiscard]] QStringList Sounds();
/// The path of a listed sound; any other text is a path already.
[[nodiscard]] QString PathOfSound(const QString& name);
/// What stands for a sound file in the list: its name when it is one of the product's, otherwise its path.
[[nodiscard]] QString NameOfSound(const QString& path);

/// Copies a language file into the language folder, asking (message "285") before one of that name is replaced, and
/// lists the languages anew. False when the name holds no "]", when the answer is No or the file can't be copied.
bool ImportLanguageFile(const QString& file);

} // namespace tessaro
