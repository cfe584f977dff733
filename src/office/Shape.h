#pragma once

#include "office/CellStyle.h"

#include <QByteArray>
#include <QColor>
#include <QRectF>
#include <QString>

#include <array>
#include <memory>
#include <vector>

namespace tessaro::office {

class Document;

/// Plain forms that can be drawn on a sheet.
enum class ShapeKind { Rectangle, Ellipse, Triangle, Cross, Diamond, Star, Hexagon, RoundRectangle };

/// A pattern of 8 by 8 dots: a row from the top each, its left dot the highest bit.
using FillPattern = std::array<quint8, 8>;

/// A picture or form on a sheet, found by its name. Places and sizes are points from the sheet's corner.
class Shape final {
  public:
    Shape(std::shared_ptr<Document> document, int sheet, QString name);

    static Shape AddPicture(const std::shared_ptr<Document>& document, int sheet, const QString& name,
                            const QByteArray& picture, const QRectF& place);
    static Shape Add(const std::shared_ptr<Document>& document, int sheet, const QString& name, ShapeKind kind,
                     const QRectF& place);
    [[nodiscard]] static bool IsOn(const std::shared_ptr<Document>& document, int sheet, const QString& name);
    /// Failure::Call when there is none of that name.
    [[nodiscard]] static Shape Named(const std::shared_ptr<Document>& document, int sheet, const QString& name);
    [[nodiscard]] static std::vector<QString> NamesOn(const std::shared_ptr<Document>& document, int sheet);

    [[nodiscard]] QString Name() const { return name_; }
    [[nodiscard]] QRectF Place() const;
    void SetPlace(const QRectF& place);
    void SetFill(int colorIndex);
    void SetLine(int colorIndex, double points);
    /// Any colour, also one that the palette hasn't got; an invalid one for none.
    void SetFillColor(const QColor& color);
    void SetLineColor(const QColor& color, double points);
    /// Fills with tiles of a pattern; an invalid background lets the sheet show through.
    void SetPattern(const FillPattern& pattern, const QColor& foreground, const QColor& background);
    void SetText(const QString& text, const CellStyle& font);
    /// The picture as PNG, this many pixels wide.
    [[nodiscard]] QByteArray AsPng(int pixelWidth) const;
    void Remove();

  private:
    std::shared_ptr<Document> document_;
    int sheet_;
    QString name_;
};

} // namespace tessaro::office
