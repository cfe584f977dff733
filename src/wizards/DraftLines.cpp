#include "wizards/DraftLines.h"

#include <QUrl>

#include <utility>

namespace tessaro {

namespace {

const QChar kPart(QLatin1Char('|'));
constexpr qsizetype kFontParts = 4;

QString FontText(const SheetFont& font) {
    return QStringList{PlainLineText(font.name), QString::number(font.size),
                       font.bold ? QStringLiteral("bold") : QString(),
                       font.italic ? QStringLiteral("italic") : QString()}
        .join(kPart);
}

} // namespace

QString PlainLineText(const QString& text) {
    return QString::fromLatin1(QUrl::toPercentEncoding(text, " "));
}

QString FromPlainLineText(const QString& text) {
    return QUrl::fromPercentEncoding(text.toLatin1());
}

DraftLine OneLine(const char* name, std::function<QString()> write, std::function<bool(const QString&)> read) {
    return {name, [write = std::move(write)] { return QStringList{write()}; }, std::move(read)};
}

DraftLine TextLine(const char* name, QString& value) {
    return OneLine(
        name, [&value] { return PlainLineText(value); },
        [&value](const QString& text) {
            value = FromPlainLineText(text);
            return true;
        });
}

DraftLine FlagLine(const char* name, bool& value) {
    return OneLine(
        name, [&value] { return value ? QStringLiteral("yes") : QStringLiteral("no"); },
        [&value](const QString& text) {
            value = text == QLatin1String("yes");
            return value || text == QLatin1String("no");
        });
}

DraftLine FontLine(const char* name, SheetFont& font) {
    return OneLine(
        name, [&font] { return FontText(font); },
        [&font](const QString& text) {
            const QStringList parts = text.split(kPart);
            bool good = false;
            font = {FromPlainLineText(parts.value(0)), parts.value(1).toDouble(&good), !parts.value(2).isEmpty(),
                    !parts.value(3).isEmpty()};
            return good && parts.size() == kFontParts;
        });
}

DraftLine NumberLine(const char* name, int& value, int most) {
    return OneLine(
        name, [&value] { return QString::number(value); },
        [&value, most](const QString& text) {
            bool good = false;
            value = text.toInt(&good);
            return good && value >= 0 && value <= most;
        });
}

DraftLine ChoiceLine(const char* name, std::vector<const char*> names, std::function<int()> get,
                     std::function<void(int)> set) {
    return OneLine(
        name, [names, get = std::move(get)] { return QString::fromLatin1(names[static_cast<std::size_t>(get())]); },
        [names, set = std::move(set)](const QString& text) {
            for (std::size_t i = 0; i < names.size(); ++i) {
                if (text != QLatin1String(names[i])) continue;
                set(static_cast<int>(i));
                return true;
            }
            return false;
        });
}

QString WrittenLines(const DraftLines& lines) {
    QString all;
    for (const DraftLine& line : lines)
        for (const QString& text : line.write())
            all += QLatin1String(line.name) + QLatin1Char('=') + text + QLatin1Char('\n');
    return all;
}

bool ReadDraftLines(const QString& text, const DraftLines& lines) {
    for (const QString& line : text.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        const qsizetype at = line.indexOf(QLatin1Char('='));
        if (at < 1) return false;
        for (const DraftLine& one : lines)
            if (line.left(at) == QLatin1String(one.name) && !one.read(line.mid(at + 1))) return false;
    }
    return true;
}

} // namespace tessaro
