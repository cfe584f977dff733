#pragma once

#include <QDialog>

namespace tessaro {

/// The disclaimer of the product: "Bin/Disclaimer.Doc" of the application folder, when it is there.
class frmDisclaimer final : public QDialog {
    Q_OBJECT

  public:
    explicit frmDisclaimer(QWidget* parent = nullptr);
};

/// What the program runs on, as a list that can be copied.
class frmSystemInfo final : public QDialog {
    Q_OBJECT

  public:
    explicit frmSystemInfo(QWidget* parent = nullptr);
};

} // namespace tessaro
