#pragma once

#include <QStringList>
#include <QWidget>

class QComboBox;
class QLabel;
class QToolButton;

namespace tessaro {

/// frmAddressBar: the database that is open, as an address; the list of databases; the go button.
class AddressBar final : public QWidget {
    Q_OBJECT

  public:
    explicit AddressBar(QWidget* parent = nullptr);

    [[nodiscard]] QString Text() const;
    [[nodiscard]] QStringList Items() const;
    void SetItems(const QStringList& items);
    void AddItem(const QString& item);
    void RemoveItem(const QString& item);
    /// Shows a text: selects the item that equals it ignoring case, otherwise the text stands by itself. No event comes
    /// of it.
    void Show(const QString& text);
    /// The same, but the text becomes an item first when there is none of that name.
    void ShowAsItem(const QString& text);
    void SetCaptions();
    void SetPictures();

  Q_SIGNALS:
    /// Enter in the field, or an item was chosen from the list.
    void Entered();
    /// The go button was pressed.
    void GoPressed();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    [[nodiscard]] int Find(const QString& text) const;
    bool SuggestionKey(const class QKeyEvent& event);
    bool FieldKey(const class QKeyEvent& event);

    QLabel* lblAddress_;
    QComboBox* cmbAddress_;
    QToolButton* picGo_;
    bool suppressed_ = false; ///< the list is being filled: its events mean nothing
};

} // namespace tessaro
