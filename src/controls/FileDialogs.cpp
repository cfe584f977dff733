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

void SetFileAnswerer(FileAnswerer answerer) {
    TheAnswerer() = std::move(answerer);
}

} // namespace tessaro
