#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

/// Sources and footnotes of the values in view.
namespace tessaro {

/// The texts of the sources that the values in view come from.
[[nodiscard]] QStringList SourcesOfSelection();
/// What the open database tells of its sources, by their texts.
[[nodiscard]] QHash<QString, QString> TextsOfSources();
/// The text of a footnote; a null text when there is none.
[[nodiscard]] QString FootnoteText(qint64 id);

} // namespace tessaro
