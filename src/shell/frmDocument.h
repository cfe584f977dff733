#pragma once

#include <QDialog>

#include <functional>

class QPushButton;
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
/// within the page and to pages in its folder open in the same window; others open outside.
class frmDocument final : public QDialog {
    Q_OBJECT

  public:
    /// `find` gives the path of the page in the language of the session.
    explicit frmDocument(std::function<QString()> find, QWidget* parent = nullptr);
    /// Captions and page in the current language.
    void SetFormCaptions();

  private:
    void Load(const QString& path);
    void Follow(const QUrl& link);

    std::function<QString()> find_;
    QTextBrowser* page_;
    QPushButton* close_;
    QString path_;
};

/// Shows a page over the window in front; `find` as for frmDocument.
void ShowPage(std::function<QString()> find);
/// Shows all pages that are open in the current language.
void ShowPagesInLanguage();

/// What the program runs on, as a list that can be copied.
class frmSystemInfo final : public QDialog {
    Q_OBJECT

  public:
    explicit frmSystemInfo(QWidget* parent = nullptr);
};

} // namespace tessaro
