#pragma once

#include <QPlainTextEdit>
#include <QStringList>

class QCompleter;

namespace tessaro {

/// The field of a formula: one line of text that wraps, read from left to right in every language. While a name is
/// typed it offers those that have the letters somewhere; the chosen one goes in as a reference.
class FormulaEdit final : public QPlainTextEdit {
    Q_OBJECT

  public:
    explicit FormulaEdit(QWidget* parent = nullptr);

    /// The references that names are completed to, "{Literacy  ~  Female}".
    void SetReferences(const QStringList& references);
    /// Puts a text in at the caret, in place of what is highlighted.
    void InsertAtCaret(const QString& text);
    /// Underlines so many characters from a place on; a negative place takes the line away. At the end of the text the
    /// character before it is underlined.
    void MarkFault(int position, int length);

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    void OfferNames();
    void TakeName(const QString& reference);
    /// Where the name begins that the caret stands behind, with the brace before it.
    [[nodiscard]] int StartOfName() const;

    QCompleter* completer_;
};

} // namespace tessaro
