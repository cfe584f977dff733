#pragma once

#include "exchange/ImportCheck.h"

#include <QWidget>

class QCheckBox;
class QLineEdit;

namespace tessaro {

class ChoiceTableModel;
class DataTable;

/// The areas of a file that the database has not, each with the areas that it may be.
class AreasPage final : public QWidget {
    Q_OBJECT

  public:
    explicit AreasPage(QWidget* parent = nullptr);

    void ShowCheck(const CheckedImport& checked);
    void TakeInto(ImportDraft& draft) const;

  private:
    ChoiceTableModel* areas_;
    DataTable* table_;
    QCheckBox* chkMake_;
    QLineEdit* txtParent_;
    std::vector<UnknownArea> unknown_;
};

} // namespace tessaro
