#pragma once

#include <QButtonGroup>
#include <QFrame>

namespace tessaro {

/// The strip of the eight options of the data view (PicDataOptions). The settings of the product say which are offered.
class DataOptionStrip final : public QFrame {
    Q_OBJECT

  public:
    enum Option { View, Stats, Sources, Units, Subpops, Sort, Calculate, Present };

    explicit DataOptionStrip(QWidget* parent = nullptr);

    [[nodiscard]] int Current() const { return buttons_.checkedId(); }
    /// Marks an option as the one that is shown; nothing is told.
    void SetCurrent(int option);
    void SetFormCaptions();
    /// Key of an option's caption.
    [[nodiscard]] static QString CaptionKey(int option);

  Q_SIGNALS:
    void Chosen(int option); ///< by the user

  private:
    QButtonGroup buttons_;
};

} // namespace tessaro
