#pragma once

#include <QDialog>

class QTextBrowser;
class QUrl;

namespace tessaro {

/// The disclaimer of the product: "Bin/Disclaimer.Doc" of the application folder, when it is there.
class frmDisclaimer final : public QDialog {
    Q_OBJECT

  public:
    explicit frmDisclaimer(QWidget* parent = nullptr);
};

/// A page of the product, such as the help, in a window of the program's own. It stays open beside the work. Links
/// within the page and to pages beside it lead there; others open outside.
class frmDocument final : public QDialog {
    Q_OBJECT

  public:
    explicit frmDocument(const QString& path, QWidget* parent = nullptr);

  private:
    void Load(const QString& path);
    void Follow(const QUrl& link);

    QTextBrowser* page_;
    QString path_;
};

/// Shows a page over the window in front.
void ShowPage(const QString& path);

/// What the program runs on, as a list that can be copied.
class frmSystemInfo final : public QDialog {
    Q_OBJECT

  public:
    explicit frmSystemInfo(QWidget* parent = nullptr);
};

} // namespace tessaro
