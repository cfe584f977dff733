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
    /// The formula without the marks that keep it in order between Arabic names.
    [[nodiscard]] QString Formula() const;
    /// Puts a text in at the caret, in place of what is highlighted.
    void InsertAtCaret(const QString& text);
    /// Underlines so many characters from a place on; a negative place takes the line away. At the end of the text the
    /// character before it is underlined.
    void MarkFault(int position, int length);

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    /// Puts an invisible mark behind each reference of a formula with Arabic or Hebrew letters: "{...} * 2 + 1" would
    /// show as "{...} * 1 + 2".
    void MarkBraces();
    /// Backspace and Delete take a mark together with its neighbour. False when there is none, or the key is another.
    bool DeletesPastMark(int key);
    /// Where a place of Formula() is in the field's text.
    [[nodiscard]] int PlaceOf(int position) const;
    void OfferNames();
    void TakeName(const QString& reference);
    /// Where the name begins that the caret stands behind, with the brace before it.
    [[nodiscard]] int StartOfName() const;

    QCompleter* completer_;
};

} // namespace tessaro
