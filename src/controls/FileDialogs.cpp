#include "controls/FileDialogs.h"

#include <QFileDialog>

#include <utility>

namespace tessaro {

namespace {

FileAnswerer& TheAnswerer() {
    static FileAnswerer answerer;
    return answerer;
}

} // namespace

QString AskForFile(QWidget* parent, const FileQuestion& question) {
    if (TheAnswerer()) return TheAnswerer()(question);
    return QFileDialog::getOpenFileName(parent, question.title, question.folder, question.filter);
}

QString AskForNewFile(QWidget* parent, const FileQuestion& question) {
    if (TheAnswerer()) return TheAnswerer()(question);
    const QString place =
        question.folder.isEmpty() ? question.name : question.folder + QLatin1Char('/') + question.name;
    return QFileDialog::getSaveFileName(parent, question.title, place, question.filter);
}

QString AskForFolder(QWidget* parent, const FileQuestion& question) {
    if (TheAnswerer()) return TheAnswerer()(question);
    return QFileDialog::getExistingDirectory(parent, question.title, question.folder);
}

void SetFileAnswerer(FileAnswerer answerer) {
    TheAnswerer() = std::move(answerer);
}

} // namespace tessaro
