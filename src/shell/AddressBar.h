#pragma once

#include <QStringList>
#include <QWidget>

class QComboBox;
class QLabel;
class QToolButton;

namespace tessaro {

/// frmAddressBar: an editable list of databases that shows the open one as an address, and the go button beside it.
class AddressBar final : public QWidget {
    Q_OBJECT

  public:
    explicit AddressBar(QWidget* parent = nullptr);

    [[nodiscard]] QString Text() const;
    [[nodiscard]] QStringList Items() const;
    void SetItems(const QStringList& items);
    void AddItem(const QString& item);
    void RemoveItem(const QString& item);
    /// Shows a text: selects the item that equals it ignoring case, otherwise puts the text into the field. Emits
    /// nothing.
    void Show(const QString& text);
    /// The same; a text that is no item yet is added to the list first.
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
    bool suppressed_ = false; ///< the program itself changes the list: its signals are ignored
};

} // namespace tessaro
