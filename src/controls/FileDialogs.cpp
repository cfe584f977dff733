#include "controls/FileDialogs.h"

#include "controls/ArrowPointer.h"
#include "session/Messages.h"
#include "session/Strings.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QRegularExpression>
#include <QSplitter>
#include <QTreeView>

#include <algorithm>
#include <utility>

namespace tessaro {

namespace {

FileAnswerer& TheAnswerer() {
    static FileAnswerer answerer;
    return answerer;
}

constexpr int kPlaceLetters = 18; ///< that the names of places, such as the home folder, have room for

/// Runs the dialog; gives the chosen path, or nothing.
QString Chosen(QFileDialog& dialog) {
    FitParts(dialog);
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

} // namespace

// In the toolkit's own dialog only.
void FitParts(QFileDialog& dialog) {
    if (auto* list = dialog.findChild<QTreeView*>(QStringLiteral("treeView"))) {
        QHeaderView* head = list->header();
        head->setStretchLastSection(false);
        head->setSectionResizeMode(QHeaderView::ResizeToContents);
        head->setSectionResizeMode(0, QHeaderView::Stretch);
    }
    if (auto* halves = dialog.findChild<QSplitter*>(QStringLiteral("splitter"))) {
        const int places = dialog.fontMetrics().averageCharWidth() * kPlaceLetters;
        halves->setSizes({places, std::max(halves->width(), dialog.sizeHint().width()) - places});
    }
}

QString FilterToShow(QString filter) {
    constexpr char16_t kLeftToRightMark = 0x200E;
    if (!LanguageIsRightToLeft()) return filter;
    return filter.replace(QLatin1String(" ("), QLatin1String(" ") + QChar(kLeftToRightMark) + QLatin1Char('('));
}

std::optional<QString> AnsweredFile(const FileQuestion& question) {
    return TheAnswerer() ? std::optional(TheAnswerer()(question)) : std::nullopt;
}

QString WithEndingOf(const QString& file, const QString& filter, const QString& suggested) {
    static const QRegularExpression pattern(QStringLiteral("\\*((?:\\.[A-Za-z0-9]+)+)"));
    QStringList endings;
    for (auto match = pattern.globalMatch(filter); match.hasNext();)
        endings << match.next().captured(1);
    if (file.isEmpty() || endings.isEmpty()) return file;
    for (const QString& ending : std::as_const(endings))
        if (file.endsWith(ending, Qt::CaseInsensitive)) return file;
    const QString own = QFileInfo(file).suffix();
    if (own.isEmpty()) return file + endings.first();
    // "*.wide.csv" makes "Name.wide.csv" of "Name.csv".
    for (const QString& ending : std::as_const(endings))
        if (ending.endsWith(QLatin1Char('.') + own, Qt::CaseInsensitive)) return file.chopped(own.size() + 1) + ending;
    // A suggested ending is replaced by that of the chosen filter; one that was typed stays.
    const bool typed = own.compare(QFileInfo(suggested).suffix(), Qt::CaseInsensitive) != 0;
    return typed ? file : file.chopped(own.size() + 1) + endings.first();
}

QString AskForFile(QWidget* parent, const FileQuestion& question) {
    if (TheAnswerer()) return TheAnswerer()(question);
    const ArrowPointer arrow;
    QFileDialog dialog(parent, question.title, question.folder, FilterToShow(question.filter));
    dialog.setFileMode(QFileDialog::ExistingFile);
    return Chosen(dialog);
}

QString AskForNewFile(QWidget* parent, const FileQuestion& question) {
    if (TheAnswerer()) return TheAnswerer()(question);
    const ArrowPointer arrow;
    QFileDialog dialog(parent, question.title, question.folder, FilterToShow(question.filter));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.selectFile(question.name);
    const QString file = Chosen(dialog);
    const QString named = WithEndingOf(file, dialog.selectedNameFilter(), question.name);
    // The dialog itself has asked about replacing only the name without the ending.
    const bool taken = named != file && QFileInfo::exists(named);
    if (taken && AskBeforeLoss(QStringLiteral("285")) != MessageCode::Yes) return {};
    return named;
}

QString AskForFolder(QWidget* parent, const FileQuestion& question) {
    if (TheAnswerer()) return TheAnswerer()(question);
    const ArrowPointer arrow;
    QFileDialog dialog(parent, question.title, question.folder);
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    return Chosen(dialog);
}

void SetFileAnswerer(FileAnswerer answerer) {
    TheAnswerer() = std::move(answerer);
}

} // namespace tessaro
