#pragma once

#include <QAbstractButton>
#include <QColor>
#include <QListWidget>
#include <QPixmap>
#include <QWidget>

/// The pieces that the home page is put together from.
namespace tessaro {

/// The coloured strip at the top, with the product's picture along its far end. A picture that moves plays; a still one
/// stands.
class HeroStrip final : public QWidget {
    Q_OBJECT

  public:
    explicit HeroStrip(QWidget* parent = nullptr);
    void SetColor(const QColor& color);
    /// The picture of the animation's role; an empty path leaves the strip plain.
    void SetPicture(const QString& file);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QColor color_;
    QString file_;
    QPixmap picture_; ///< as last drawn, for one height
    class QMovie* movie_ = nullptr;
};

/// One of picIndicators: a picture with its caption below it, into a stage.
class PictureButton final : public QAbstractButton {
    Q_OBJECT

  public:
    explicit PictureButton(QWidget* parent = nullptr);
    void SetNumber(int number) { number_ = number; }
    [[nodiscard]] QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

  private:
    int number_ = 0;
};

/// A link of the home page: a text that is underlined and coloured under the mouse or with the focus.
class LinkButton final : public QAbstractButton {
    Q_OBJECT

  public:
    explicit LinkButton(QWidget* parent = nullptr);
    void SetHotColor(const QColor& color);
    [[nodiscard]] QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

  private:
    QColor hot_;
};

/// The databases to choose from: one click or Enter opens.
class DatabaseList final : public QListWidget {
    Q_OBJECT

  public:
    explicit DatabaseList(QWidget* parent = nullptr);
    /// What the empty list says.
    void SetHint(const QString& hint);

  Q_SIGNALS:
    void Chosen(const QString& address);

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    QString hint_;
};

} // namespace tessaro
