#pragma once

#include "exchange/ImportReport.h"

#include <QWidget>

#include <array>

class QComboBox;
class QFormLayout;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace tessaro {

class DataTable;
class TextTableModel;

/// Which file is imported, how it is read, and where its values go; shows its first rows.
class SourcePage final : public QWidget {
    Q_OBJECT

  public:
    explicit SourcePage(QWidget* parent = nullptr);

    [[nodiscard]] QString File() const;
    void SetFile(const QString& file);
    [[nodiscard]] ImportInto Into() const;
    /// The file with the areas of a new database; empty for none, and for other databases.
    [[nodiscard]] QString AreaTree() const;
    void SetAreaTree(const QString& file);
    void SetInto(ImportInto into);
    /// Without an open database only a new one can be made; one of another maker can't be changed.
    void SetDatabase(bool isOpen, bool mayChange);

    /// Shows how a file is read, and its first rows.
    void ShowDraft(const ImportDraft& draft, const QStringList& sheets, const ImportTable& rows);
    void TakeInto(ImportDraft& draft) const;

  Q_SIGNALS:
    void Browse();
    void BrowseTree();
    /// Another way to read the file was chosen.
    void Changed();

  private:
    QComboBox* AddBox(QFormLayout& form, const char* name, const char* key, const QStringList& texts);
    void MakeTargets(QFormLayout& form);
    void MakeTree(QFormLayout& form);
    QPushButton* MakeButton(const char* name, const char* key);

    QLineEdit* txtFile_;
    QLineEdit* txtAreaTree_;
    QWidget* treeRow_;
    QComboBox* cmbSheet_;
    QComboBox* cmbEncoding_;
    QComboBox* cmbDelimiter_;
    QComboBox* cmbDecimal_;
    QComboBox* cmbThousands_;
    std::array<QRadioButton*, 4> targets_{};
    QFormLayout* form_;
    DataTable* table_;
    TextTableModel* rows_;
};

} // namespace tessaro
