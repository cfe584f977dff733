#pragma once

#include <QList>
#include <QWidget>

class QToolButton;

namespace tessaro {

/// picToolBar: the ten buttons of Toolbar1.
class StandardToolBar final : public QWidget {
    Q_OBJECT

  public:
    enum Item { Back, Forward, Stop, Refresh, Home, Search, Favourites, History, Mail, Print, ItemCount };

    explicit StandardToolBar(QWidget* parent = nullptr);

    [[nodiscard]] QToolButton* Button(int item) const { return buttons_.at(item); }
    /// Enables or disables an item, with its picture. Items without a command stay disabled.
    void SetEnabled(int item, bool enabled);
    /// Pictures of all items (ChangeToolBar), and their tool tips.
    void ChangeToolBar();
    void SetToolTips();

  Q_SIGNALS:
    void Chosen(int item);

  private:
    QList<QToolButton*> buttons_;
};

} // namespace tessaro
