#pragma once

#include "sheets/SheetFont.h"

#include <QFont>
#include <QPainter>
#include <QString>

namespace tessaro {

/// A font with its size in pixels of a page that has so many to the point.
[[nodiscard]] QFont PageFont(const SheetFont& font, double pixelsOfPoint);

/// Measures and writes texts on a painter, wrapped at words, in its layout direction: they begin on the left or, from
/// right to left, on the right.
class PageText final {
  public:
    PageText(QString text, QFont font) : text_(std::move(text)), font_(std::move(font)) {}

    [[nodiscard]] bool IsEmpty() const { return text_.isEmpty(); }
    [[nodiscard]] double Height(QPainter& painter, double width) const; ///< 0 for no text
    [[nodiscard]] double NaturalWidth() const;                          ///< of its longest line, unwrapped
    /// `alignment` tells where it stands vertically.
    void Paint(QPainter& painter, const QRectF& place, Qt::Alignment alignment = Qt::AlignTop) const;

  private:
    QString text_;
    QFont font_;
};

} // namespace tessaro
