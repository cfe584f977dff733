#include "controls/SaveDialog.h"

#include "controls/ArrowPointer.h"
#include "controls/FileDialogs.h"
#include "session/ExportChoice.h"
#include "session/Messages.h"
#include "session/Strings.h"
#include "session/WriteFailure.h"

#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QStandardPaths>

#include <algorithm>

namespace tessaro {

namespace {

/// The ending of a kind that a name has; empty for none.
QString EndingOf(const SaveKind& kind, const QString& name) {
    QString found;
    for (const QString& ending : kind.endings)
        if (ending.size() > found.size() && name.endsWith(ending, Qt::CaseInsensitive)) found = ending;
    return found;
}

/// The longest ending of any kind that a name has, and the number of its kind.
std::pair<QString, std::size_t> AnyEndingOf(const std::vector<SaveKind>& kinds, const QString& name) {
    std::pair<QString, std::size_t> found{{}, kinds.size()};
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        const QString ending = EndingOf(kinds[i], name);
        if (ending.size() > found.first.size()) found = {ending, i};
    }
    return found;
}

/// "Web page (*.htm *.html)"
QString FilterOf(const SaveKind& kind) {
    QStringList patterns;
    for (const QString& ending : kind.endings)
        patterns << QLatin1Char('*') + ending;
    return kind.caption + QStringLiteral(" (") + patterns.join(QLatin1Char(' ')) + QLatin1Char(')');
}

QStringList FiltersOf(const SaveQuestion& question) {
    QStringList filters;
    for (const SaveKind& kind : question.kinds)
        filters << FilterOf(kind);
    return filters;
}

std::size_t KindOfLastTime(const SaveQuestion& question) {
    for (std::size_t i = 0; i < question.kinds.size(); ++i)
        if (question.kinds[i].endings.front() == LastExport().ending) return i;
    return 0;
}

QString FolderOfLastTime() {
    const QString& folder = LastExport().folder;
    if (!folder.isEmpty() && QFileInfo(folder).isDir()) return folder;
    return QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
}

/// Names of files as a list, each read from left to right, also within Arabic.
QString ListOf(const QStringList& names) {
    if (!LanguageIsRightToLeft()) return names.join(QStringLiteral(", "));
    QStringList apart;
    for (const QString& name : names)
        apart << QChar(0x2068) + name + QChar(0x2069);
    return apart.join(QStringLiteral("\u060C "));
}

} // namespace

std::size_t KindOfName(const std::vector<SaveKind>& kinds, const QString& name, std::size_t chosen) {
    const auto [ending, kind] = AnyEndingOf(kinds, name);
    if (ending.isEmpty()) return chosen;
    const QStringList& own = kinds.at(chosen).endings;
    const bool fits =
        std::ranges::any_of(own, [&ending = ending](const QString& each) { return each.endsWith(ending); });
    return fits ? chosen : kind;
}

QString WithKind(const std::vector<SaveKind>& kinds, const QString& name, std::size_t kind) {
    if (name.isEmpty()) return name;
    const QString any = AnyEndingOf(kinds, name).first;
    if (!any.isEmpty() && any == EndingOf(kinds.at(kind), name)) return name;
    return name.chopped(any.size()) + kinds.at(kind).endings.front();
}

QStringList FilesBesideName(const std::vector<SaveKind>& kinds, const QString& file, std::size_t kind) {
    const QString stem = file.chopped(EndingOf(kinds.at(kind), file).size());
    QStringList files;
    for (const QString& ending : kinds[kind].beside)
        files << stem + ending;
    return files;
}

SaveDialog::SaveDialog(const SaveQuestion& question, QWidget* parent)
    : QFileDialog(parent, question.title, FolderOfLastTime()), question_(question), lblBeside_(new QLabel(this)) {
    setWindowTitle(QString(question.title).remove(QStringLiteral("..."))); // of a menu entry
    setOption(DontUseNativeDialog);                                        // it has no place for what is told here
    setOption(DontConfirmOverwrite);
    setAcceptMode(AcceptSave);
    setFileMode(AnyFile);
    QStringList filters;
    for (const QString& filter : FiltersOf(question))
        filters << FilterToShow(filter);
    setNameFilters(filters);
    const std::size_t kind = KindOfLastTime(question);
    selectNameFilter(filters.at(static_cast<qsizetype>(kind)));
    name_ = findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    selectFile(WithKind(question.kinds, question.stem, kind));
    AddBesideLine();
    connect(this, &QFileDialog::filterSelected, this, &SaveDialog::TakeKind);
    connect(name_, &QLineEdit::textChanged, this, &SaveDialog::ShowBeside);
    constexpr int wide = 96; // letters
    resize(std::max(sizeHint().width(), fontMetrics().averageCharWidth() * wide), sizeHint().height());
    FitParts(*this);
    ShowBeside();
    ReturnToName();
}

void SaveDialog::AddBesideLine() {
    lblBeside_->setObjectName(QStringLiteral("lblBeside"));
    lblBeside_->setWordWrap(true);
    lblBeside_->setTextFormat(Qt::PlainText);
    auto* grid = qobject_cast<QGridLayout*>(layout());
    if (grid != nullptr) grid->addWidget(lblBeside_, grid->rowCount(), 0, 1, grid->columnCount());
}

std::size_t SaveDialog::ChosenKind() const {
    const qsizetype kind = nameFilters().indexOf(selectedNameFilter());
    return static_cast<std::size_t>(std::max<qsizetype>(kind, 0));
}

std::size_t SaveDialog::KindOfTyped() const {
    return KindOfName(question_.kinds, name_->text().trimmed(), ChosenKind());
}

/// Another kind was chosen: the name follows.
void SaveDialog::TakeKind() {
    name_->setText(WithKind(question_.kinds, name_->text().trimmed(), ChosenKind()));
    ShowBeside();
}

void SaveDialog::ShowBeside() {
    const QString name = name_->text().trimmed();
    QStringList names;
    if (!name.isEmpty()) {
        const std::size_t kind = KindOfTyped();
        for (const QString& file : FilesBesideName(question_.kinds, WithKind(question_.kinds, name, kind), kind))
            names << QFileInfo(file).fileName();
    }
    name_->setAccessibleDescription(names.join(QLatin1Char(' ')));
    // The line stays where it is, also while it has nothing to tell.
    lblBeside_->setText(names.isEmpty() ? QStringLiteral(" ")
                                        : FilledText(QStringLiteral("TS_SaveBeside"), {ListOf(names)}));
}

void SaveDialog::ReturnToName() {
    name_->setFocus(Qt::OtherFocusReason);
    const QString ending = AnyEndingOf(question_.kinds, name_->text()).first;
    name_->setSelection(0, static_cast<int>(name_->text().size() - ending.size()));
}

bool SaveDialog::MayReplace(const QString& file, std::size_t kind) const {
    QStringList names;
    for (const QString& each : QStringList{file} + FilesBesideName(question_.kinds, file, kind))
        if (QFileInfo::exists(each)) names << QFileInfo(each).fileName();
    if (names.isEmpty()) return true;
    if (names == QStringList{QFileInfo(file).fileName()})
        return AskBeforeLoss(QStringLiteral("285")) == MessageCode::Yes;
    const QString question = FilledText(QStringLiteral("TS_ReplaceFiles"), {ListOf(names)});
    return AskBeforeLoss(question, MessageType::YesNo, {}, false) == MessageCode::Yes;
}

// A name that can't be used leads back to its field, with everything else as it was.
void SaveDialog::accept() {
    const QString typed = name_->text().trimmed();
    if (typed.isEmpty()) return ReturnToName();
    const QString path = selectedFiles().value(0);
    if (QFileInfo(path).isDir()) return QFileDialog::accept(); // goes into it
    const std::size_t kind = KindOfTyped();
    const QString file = WithKind(question_.kinds, path, kind);
    if (!WhyNotWritable(file).isEmpty()) {
        TellNotWritten(file);
        return ReturnToName();
    }
    if (!MayReplace(file, kind)) return ReturnToName();
    file_ = file;
    LastExport() = {QFileInfo(file).absolutePath(), question_.kinds[kind].endings.front()};
    QDialog::accept();
}

QString AskWhereToSave(QWidget* parent, const SaveQuestion& question) {
    const ArrowPointer arrow;
    const QString name = WithKind(question.kinds, question.stem, KindOfLastTime(question));
    const FileQuestion plain{question.title, FolderOfLastTime(), FiltersOf(question).join(QStringLiteral(";;")), name};
    if (const std::optional<QString> answer = AnsweredFile(plain)) return *answer;
    SaveDialog dialog(question, parent);
    return dialog.exec() == QDialog::Accepted ? dialog.File() : QString();
}

} // namespace tessaro
