#pragma once

#include "sheets/SheetFont.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>
#include <vector>

/// A wizard's draft as lines of text.
namespace tessaro {

/// One value of a wizard's draft as it stands in lines "name=text". A list has a line for each of its elements.
struct DraftLine {
    const char* name;
    std::function<QStringList()> write;       ///< the texts behind the "=" of its lines
    std::function<bool(const QString&)> read; ///< takes over one such text; False when it is none
};
using DraftLines = std::vector<DraftLine>;

/// A text in letters, digits, blanks and "%" alone, which no sign that parts lines or parts can occur in; and back.
[[nodiscard]] QString PlainLineText(const QString& text);
[[nodiscard]] QString FromPlainLineText(const QString& text);

// Lines for the usual kinds of values. Each refers to the value, which must outlive it.
[[nodiscard]] DraftLine TextLine(const char* name, QString& value);
[[nodiscard]] DraftLine FlagLine(const char* name, bool& value);
/// A font of sheets: name, size and style.
[[nodiscard]] DraftLine FontLine(const char* name, SheetFont& font);
/// A whole number from 0 to `most`.
[[nodiscard]] DraftLine NumberLine(const char* name, int& value, int most);
/// One of several values, by the name of each in the order of their numbers.
[[nodiscard]] DraftLine ChoiceLine(const char* name, std::vector<const char*> names, std::function<int()> get,
                                   std::function<void(int)> set);
/// A value whose text is one line.
[[nodiscard]] DraftLine OneLine(const char* name, std::function<QString()> write,
                                std::function<bool(const QString&)> read);
/// A line for each element of a list; `from` gives nothing for a text that is no element.
template <class Element>
[[nodiscard]] DraftLine ListLine(const char* name, std::vector<Element>& list, QString (*text)(const Element&),
                                 std::optional<Element> (*from)(const QString&)) {
    return {name,
            [&list, text] {
                QStringList texts;
                for (const Element& element : list)
                    texts << text(element);
                return texts;
            },
            [&list, from](const QString& line) {
                auto element = from(line);
                if (element) list.push_back(std::move(*element));
                return element.has_value();
            }};
}

/// All lines of a draft.
[[nodiscard]] QString WrittenLines(const DraftLines& lines);
/// Reads such lines into the values behind `lines`. Names that are unknown are passed over. False when a line has no
/// name or its text can't be read.
[[nodiscard]] bool ReadDraftLines(const QString& text, const DraftLines& lines);

} // namespace tessaro
