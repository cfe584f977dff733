#include "controls/FileDialogs.h"

#include "controls/ArrowPointer.h"
#include "session/Messages.h"
#include "session/Strings.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QRegularExpression>

#include <utility>

namespace tessaro {

namespace {

FileAnswerer& TheAnswerer() {
    static FileAnswerer answerer;
    return answerer;
}

/// The filter with its patterns from left to right, also behind Arabic words: "(*.mdb)" would show as "(mdb.*)".
QString FilterToShow(QString filter) {
    constexpr char16_t kLeftToRightMark = 0x200E;
    if (!LanguageIsRightToLeft()) return filter;
    return filter.replace(QLatin1String(" ("), QLatin1String(" ") + QChar(kLeftToRightMark) + QLatin1Char('('));
}

} // namespace

QString WithEndingOf(const QString& file, const QString& filter, const QString& suggested) {
    static const QRegularExpression pattern(QStringLiteral("\\*(\\.[A-Za-z0-9]+)"));
    QStringList endings;
    for (auto match = pattern.globalMatch(filter); match.hasNext();)
        endings << match.next().captured(1);
    if (file.isEmpty() || endings.isEmpty()) return file;
    for (const QString& ending : std::as_const(endings))
        if (file.endsWith(ending, Qt::CaseInsensitive)) return file;
    const QString own = QFileInfo(file).suffix();
    if (own.isEmpty()) return file + endings.first();
    // What was only suggested gives way to the kind that was chosen; what was typed stands.
    const bool typed = own.compare(QFileInfo(suggested).suffix(), Qt::CaseInsensitive) != 0;
    return typed ? file : file.chopped(own.size() + 1) + endings.first();
}

QString AskForFile(QWidget* parent, const FileQuestion& question) {
    if (TheAnswerer()) return TheAnswerer()(question);
    const ArrowPointer arrow;
    return QFileDialog::getOpenFileName(parent, question.title, question.folder, FilterToShow(question.filter));
}

QString AskForNewFile(QWidget* parent, const FileQuestion& question) {
    if (TheAnswerer()) return TheAnswerer()(question);
    const ArrowPointer arrow;
    const QString place =
        question.folder.isEmpty() ? question.name : question.folder + QLatin1Char('/') + question.name;
    QString chosenFilter;
    const QString file =
        QFileDialog::getSaveFileName(parent, question.title, place, FilterToShow(question.filter), &chosenFilter);
    const QString named = WithEndingOf(file, chosenFilter, question.name);
    // The dialog has asked about the name that it knew.
    const bool taken = named != file && QFileInfo::exists(named);
    if (taken && AskBeforeLoss(QStringLiteral("285")) != MessageCode::Yes) return {};
    return named;
}

QString AskForFolder(QWidget* parent, const FileQuestion& question) {
    if (TheAnswerer()) return TheAnswerer()(question);
    const ArrowPointer arrow;
    return QFileDialog::getExistingDirectory(parent, question.title, question.folder);
}

void SetFileAnswerer(FileAnswerer answerer) {
    TheAnswerer() = std::move(answerer);
}

} // namespace tessaro
