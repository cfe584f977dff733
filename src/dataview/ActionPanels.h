#pragma once

#include <QWidget>

class QLabel;
class QListWidget;

namespace tessaro {

/// The panel with the six calculations (lstCalculate) or the three ways to present (picPresentationOptions). What the
/// frame doesn't offer is shown, but can't be chosen.
class ActionPanel final : public QWidget {
    Q_OBJECT

  public:
    enum class Kind { Calculate, Present };
    explicit ActionPanel(Kind kind, QWidget* parent = nullptr);

    /// FillCalculateList or FillPresentIcons.
    void Fill();

  Q_SIGNALS:
    /// Key of the item: "C0" … "C5"; "T", "G", "M".
    void Chosen(const QString& key);

  private:
    void Choose();

    Kind kind_;
    QLabel* lblHint_;
    QListWidget* list_;
};

} // namespace tessaro
