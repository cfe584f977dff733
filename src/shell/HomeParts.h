#pragma once

#include <QAbstractButton>
#include <QColor>
#include <QListWidget>
#include <QPixmap>
#include <QWidget>

/// The widgets of the home page.
namespace tessaro {

/// The coloured strip at the top, with a picture at its end (the right, or the left in right-to-left languages). An
/// animated GIF plays.
class HeroStrip final : public QWidget {
    Q_OBJECT

  public:
    explicit HeroStrip(QWidget* parent = nullptr);
    void SetColor(const QColor& color);
    /// An empty path leaves the strip without a picture.
    void SetPicture(const QString& file);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QColor color_;
    QString file_;
    QPixmap picture_; ///< drawn for the height that the strip had last
    class QMovie* movie_ = nullptr;
};

/// One of picIndicators: a button with a picture and a caption below it, which opens a stage.
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

/// The list of databases on the home page: one click or Enter opens.
class DatabaseList final : public QListWidget {
    Q_OBJECT

  public:
    explicit DatabaseList(QWidget* parent = nullptr);
    /// The text shown while the list is empty.
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
