#pragma once

#include "exchange/ImportDraft.h"
#include "exchange/RowPreview.h"

#include <QWidget>

#include <array>
#include <vector>

class QCheckBox;
class QComboBox;
class QFormLayout;
class QLineEdit;
class QSpinBox;

namespace tessaro {

class ChoiceTableModel;
class DataTable;
class TextTableModel;

/// What the columns of a file and its head rows mean, and the texts for what no column tells.
class MappingPage final : public QWidget {
    Q_OBJECT

  public:
    static constexpr std::size_t kMostHeadRows = 4;

    explicit MappingPage(QWidget* parent = nullptr);

    /// `samples` are the first texts of each column.
    void ShowDraft(const ImportDraft& draft, const QStringList& samples);
    void TakeInto(ImportDraft& draft) const;
    /// The first values as the draft says that they are understood; remarks stand before them where there are some.
    void ShowPreview(const std::vector<PreviewedValue>& values);

  Q_SIGNALS:
    /// Other rows are the heads: the columns are to be shown anew.
    void RowsChanged();
    /// Something else has been changed.
    void Changed();
    void KeepMapping();
    void UseMapping();

  private:
    QWidget* MakeTable();
    QWidget* MakeSettings();
    QWidget* MakePreview();
    QWidget* MakeRows();
    QWidget* MakeConstants();
    QSpinBox* AddSpin(QFormLayout& form, const char* name, const char* key, int most);

    ChoiceTableModel* columns_;
    QSpinBox* spnSkipped_;
    QSpinBox* spnHeads_;
    QSpinBox* spnLast_;
    QComboBox* cmbDates_;
    QCheckBox* chkRepeats_;
    std::array<QComboBox*, kMostHeadRows> headTells_{};
    std::array<QLineEdit*, kRoles> constants_{};
    QLineEdit* txtSector_;
    QLineEdit* txtClass_;
    QFormLayout* rowsForm_;
    DataTable* grdPreview_;
    TextTableModel* preview_;
};

} // namespace tessaro
