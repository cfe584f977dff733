#pragma once

#include <QTextBrowser>

namespace tessaro {

/// Shows sheets of information from a database. Nothing is loaded from outside the sheet: pictures only when they stand
/// in it ("data:", PNG, JPEG or GIF, 16 million points altogether). A link opens after a question that shows its
/// address, and only for http, https and mailto.
class SheetBrowser final : public QTextBrowser {
    Q_OBJECT

  public:
    explicit SheetBrowser(QWidget* parent = nullptr);

    /// Shows one sheet as the database has it; it is bounded here.
    void ShowSheet(const QString& sheet);
    /// Shows markup that is within bounds already; it may hold several sheets.
    void ShowHtml(const QString& html);

  private:
    void Follow(const QUrl& url);

    QTextDocument* sheet_ = nullptr; ///< the document shown; a child of this
};

} // namespace tessaro
