#pragma once

#include <QDialog>

namespace tessaro {

class SheetBrowser;

/// The information text of one item, plain or marked up.
class frmInformationSheet final : public QDialog {
    Q_OBJECT

  public:
    explicit frmInformationSheet(QWidget* parent = nullptr);
    void SetText(const QString& text);

  private:
    SheetBrowser* txtInformation_;
};

/// Shows the information of an item, or says that there is none. `formName` is the calling screen.
void ShowInformationInBROW(const QString& idValue, const QString& code, const QString& formName, bool idIsGId,
                           QWidget* parent = nullptr);

} // namespace tessaro
