#pragma once

#include "session/SaveKind.h"

#include <QFileDialog>
#include <QString>
#include <QStringList>

#include <vector>

class QLabel;
class QLineEdit;

namespace tessaro {

struct SaveQuestion {
    QString title;
    QString stem; ///< suggested name, without an ending
    std::vector<SaveKind> kinds;
};

/// The number of the kind that a name asks for: by its ending, or else, and where both endings fit, the chosen one.
[[nodiscard]] std::size_t KindOfName(const std::vector<SaveKind>& kinds, const QString& name, std::size_t chosen);
/// The name with an ending of the kind: it takes the place of one of another kind.
[[nodiscard]] QString WithKind(const std::vector<SaveKind>& kinds, const QString& name, std::size_t kind);
/// The files that may be made beside a file of a kind.
[[nodiscard]] QStringList FilesBesideName(const std::vector<SaveKind>& kinds, const QString& file, std::size_t kind);

/// Asks where and as what something is to be saved. The name's ending follows the kind; below the name it tells which
/// files are made beside it. It asks before any of them is replaced.
class SaveDialog final : public QFileDialog {
    Q_OBJECT

  public:
    SaveDialog(const SaveQuestion& question, QWidget* parent);
    /// The chosen file, its ending included.
    [[nodiscard]] const QString& File() const { return file_; }

    void accept() override;

  private:
    void AddBesideLine();
    void TakeKind();
    void ShowBeside();
    void ReturnToName();
    [[nodiscard]] std::size_t ChosenKind() const;
    [[nodiscard]] std::size_t KindOfTyped() const;
    [[nodiscard]] bool MayReplace(const QString& file, std::size_t kind) const;

    const SaveQuestion question_;
    QLineEdit* name_;
    QLabel* lblBeside_;
    QString file_;
};

/// Shows the dialog in the folder and with the kind of the last time, and keeps both for the next; empty when it was
/// cancelled.
[[nodiscard]] QString AskWhereToSave(QWidget* parent, const SaveQuestion& question);

} // namespace tessaro
