#pragma once

#include <QListView>
#include <QStyledItemDelegate>

#include <functional>

namespace tessaro {

struct GalleryEntry;
class GalleryModel;

/// The list of the gallery: several can be selected; a hint where it is empty. Works with the keyboard alone.
class PresentationList final : public QListView {
    Q_OBJECT

  public:
    explicit PresentationList(QWidget* parent = nullptr);

    void SetEmptyHint(const QString& hint);

  Q_SIGNALS:
    void EnterPressed(); ///< also a double click
    void DeletePressed();
    void UpPressed();
    void RefreshPressed();

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    QString hint_;
};

/// Draws one entry of the list: the workbook's picture, its name, its kind and date.
class PresentationDelegate final : public QStyledItemDelegate {
    Q_OBJECT

  public:
    /// The small picture of a workbook; a null one where there is none (yet).
    using PictureOf = std::function<QImage(const GalleryEntry&)>;

    PresentationDelegate(const GalleryModel& model, PictureOf pictureOf, QObject* parent);

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

  private:
    void PaintPicture(QPainter* painter, const QRect& place, const GalleryEntry& entry, bool selected) const;
    void PaintTexts(QPainter* painter, const QStyleOptionViewItem& item, const QRect& place,
                    const GalleryEntry& entry) const;

    const GalleryModel& model_;
    PictureOf pictureOf_;
};

/// The icon of a folder or of a workbook's kind.
[[nodiscard]] QIcon IconOf(const GalleryEntry& entry);

} // namespace tessaro
