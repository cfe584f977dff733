#pragma once

#include "exchange/ImportReport.h"

#include <QWidget>

#include <vector>

class QComboBox;

namespace tessaro {

class TextTableModel;

/// What a check has found, before anything is written: the report's tables, one at a time.
class CheckPage final : public QWidget {
    Q_OBJECT

  public:
    explicit CheckPage(QWidget* parent = nullptr);

    /// The check must stay while it is shown.
    void ShowCheck(const CheckedImport& checked);
    void Clear();

  Q_SIGNALS:
    void SaveReport();

  private:
    void ShowTable(int number);

    QComboBox* cmbTable_;
    TextTableModel* rows_;
    std::vector<ImportTable> tables_;
};

} // namespace tessaro
