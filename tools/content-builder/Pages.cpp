#include "Pages.h"

#include "CsvTable.h"
#include "Languages.h"

#include <QCoreApplication>
#include <QFile>
#include <QHash>
#include <QKeySequence>
#include <QLibraryInfo>
#include <QLocale>
#include <QRegularExpression>
#include <QTranslator>

#include <functional>
#include <stdexcept>

namespace tessaro::content {

namespace fs = std::filesystem;

namespace {

constexpr const char* kFrame = "page.htm";
constexpr int kSectionsOfContents = 4; ///< fewer need no list

QString PathText(const fs::path& path) {
    return QString::fromStdString(path.string());
}

QString ReadText(const fs::path& path) {
    QFile file(PathText(path));
    if (!file.open(QIODevice::ReadOnly)) throw std::runtime_error("can't read " + path.string());
    return QString::fromUtf8(file.readAll());
}

void WriteText(const fs::path& path, const QString& text) {
    QFile file(PathText(path));
    const QByteArray bytes = text.toUtf8();
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush())
        throw std::runtime_error("can't write " + path.string());
}

/// Every match of a pattern replaced by what `give` makes of its first group.
QString Replaced(const QString& text, const char* pattern, const std::function<QString(const QString&)>& give) {
    QString result;
    qsizetype end = 0;
    auto matches = QRegularExpression(QLatin1String(pattern)).globalMatch(text);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        result += QStringView(text).mid(end, match.capturedStart() - end);
        result += give(match.captured(1));
        end = match.capturedEnd();
    }
    result += QStringView(text).mid(end);
    return result;
}

/// A caption as a text names it: without the letter of access and the dots of an entry that opens a window.
QString PlainCaption(QString caption) {
    caption.replace(QLatin1String("&&"), QString(QChar(0)));
    caption.remove(QLatin1Char('&')).replace(QChar(0), QLatin1Char('&'));
    if (caption.endsWith(QLatin1String("..."))) caption.chop(3);
    return caption;
}

/// The pages of one language. The toolkit's texts of the language are in use while it lives: the names of keys are
/// theirs, in the menus as well.
class LanguagePages final {
  public:
    LanguagePages(const ContentLanguage& language, const CsvTable& strings)
        : language_(language), locale_(QString::fromStdString(language.code)) {
        for (std::size_t row = 0; row < strings.rowCount(); ++row)
            captions_.insert(QString::fromStdString(strings.Cell(row, "VariableName")).toLower(),
                             PlainCaption(QString::fromStdString(strings.Cell(row, language.textColumn))));
        if (translator_.load(locale_, QStringLiteral("qtbase"), QStringLiteral("_"),
                             QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
            QCoreApplication::installTranslator(&translator_);
    }
    ~LanguagePages() { QCoreApplication::removeTranslator(&translator_); }
    LanguagePages(const LanguagePages&) = delete;
    LanguagePages& operator=(const LanguagePages&) = delete;

    [[nodiscard]] QString NameOf(const QString& folder) const {
        return folder + QLatin1Char(' ') + QString::fromStdString(language_.stringsColumn) + QLatin1String(".htm");
    }

    /// The whole page of a text.
    [[nodiscard]] QString Page(const QString& text, QString frame) const {
        QString body = Replaced(text, "\\{\\{([^{}]+)\\}\\}", [this](const QString& keys) { return Keys(keys); });
        body = Replaced(body, "\\{([^{}]+)\\}", [this](const QString& key) { return Caption(key); });
        const QRegularExpressionMatch head =
            QRegularExpression(QStringLiteral("<h1>(.*?)</h1>"), QRegularExpression::DotMatchesEverythingOption)
                .match(body);
        if (!head.hasMatch()) throw std::runtime_error("there is no title");
        const bool mirrored = locale_.textDirection() == Qt::RightToLeft;
        frame.replace(QLatin1String("%language%"), QString::fromStdString(language_.code));
        frame.replace(QLatin1String("%direction%"), mirrored ? QStringLiteral("rtl") : QStringLiteral("ltr"));
        frame.replace(QLatin1String("%title%"), head.captured(1));
        return frame.replace(QLatin1String("%body%"), WithContents(body));
    }

  private:
    [[nodiscard]] QString Caption(const QString& key) const {
        const auto found = captions_.constFind(key.toLower());
        if (found == captions_.cend()) throw std::runtime_error("there is no caption {" + key.toStdString() + "}");
        return QStringLiteral("<b>%1</b>").arg(found->toHtmlEscaped());
    }

    [[nodiscard]] static QString Keys(const QString& keys) {
        // A key that only counts together with another one is none of its own.
        const bool alone =
            keys == QLatin1String("Alt") || keys == QLatin1String("Ctrl") || keys == QLatin1String("Shift");
        const QString whole = alone ? keys + QLatin1String("+A") : keys;
        const QKeySequence sequence = QKeySequence::fromString(whole, QKeySequence::PortableText);
        if (sequence.isEmpty() || sequence.toString(QKeySequence::PortableText) != whole)
            throw std::runtime_error("there are no keys {{" + keys.toStdString() + "}}");
        QStringList names = sequence.toString(QKeySequence::NativeText).split(QLatin1Char('+'));
        if (alone) names.removeLast();
        for (QString& name : names)
            name = QStringLiteral("<kbd>%1</kbd>").arg(name.toHtmlEscaped());
        return QStringLiteral("<span class=\"keys\" dir=\"ltr\">%1</span>").arg(names.join(QLatin1Char('+')));
    }

    /// The sections get anchors, and their list stands before the first one.
    [[nodiscard]] static QString WithContents(const QString& body) {
        QString list;
        int sections = 0;
        QString anchored = Replaced(body, "<h2>(.*?)</h2>", [&](const QString& title) {
            ++sections;
            list += QStringLiteral("<li><a href=\"#s%1\">%2</a></li>\n").arg(sections).arg(title);
            return QStringLiteral("<h2><a name=\"s%1\" id=\"s%1\"></a>%2</h2>").arg(sections).arg(title);
        });
        if (sections < kSectionsOfContents) return anchored;
        return anchored.insert(anchored.indexOf(QLatin1String("<h2>")),
                               QStringLiteral("<ul class=\"contents\">\n%1</ul>\n").arg(list));
    }

    ContentLanguage language_;
    QLocale locale_;
    QHash<QString, QString> captions_;
    QTranslator translator_;
};

void BuildPage(const LanguagePages& pages, const fs::path& source, const fs::path& target, const QString& frame) {
    try {
        WriteText(target, pages.Page(ReadText(source), frame));
    } catch (const std::exception& error) {
        throw std::runtime_error(source.filename().string() + ": " + error.what());
    }
}

} // namespace

void BuildPages(const fs::path& content, const fs::path& target) {
    const fs::path documents = content / "documents";
    const CsvTable strings = CsvTable::Read(content / "strings.csv");
    const QString frame = ReadText(documents / kFrame);
    for (const fs::directory_entry& folder : fs::directory_iterator(documents))
        if (folder.is_directory())
            fs::copy(folder, target / folder.path().filename(),
                     fs::copy_options::recursive | fs::copy_options::overwrite_existing);
    for (const ContentLanguage& language : ReadLanguages(content)) {
        const LanguagePages pages(language, strings);
        for (const fs::directory_entry& folder : fs::directory_iterator(documents)) {
            const fs::path place = folder.path().filename();
            const std::string name = pages.NameOf(PathText(place)).toStdString();
            if (fs::exists(folder.path() / name)) BuildPage(pages, folder.path() / name, target / place / name, frame);
        }
    }
}

} // namespace tessaro::content
