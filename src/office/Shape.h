#pragma once

#include "office/CellStyle.h"

#include <QByteArray>
#include <QColor>
#include <QImage>
#include <QRectF>
#include <QString>

#include <array>
#include <memory>
#include <optional>
#include <vector>

namespace tessaro::office {

class Document;

/// Plain forms that can be drawn on a sheet.
enum class ShapeKind { Rectangle, Ellipse, Triangle, Cross, Diamond, Star, Hexagon, RoundRectangle };

/// A pattern of 8 by 8 dots: a row from the top each, its left dot the highest bit.
using FillPattern = std::array<quint8, 8>;

/// How a form is drawn. Any colours, also those that the palette hasn't got; an invalid one for none.
struct ShapeLook {
    QColor fill = {};
    std::optional<FillPattern> pattern = {}; ///< drawn in `fill`
    QColor ground = {};                      ///< behind a pattern; none lets the sheet show through
    QColor line = {};
    double linePoints = 0.5;
};

/// A form that is to be drawn.
struct ShapePlan {
    QString name;
    ShapeKind kind = ShapeKind::Rectangle;
    QRectF place;
    ShapeLook look = {};
};

/// A picture or form on a sheet, found by its name. Places and sizes are points from the corner where the sheet's
/// columns begin.
class Shape final {
  public:
    Shape(std::shared_ptr<Document> document, int sheet, QString name);

    static Shape AddPicture(const std::shared_ptr<Document>& document, int sheet, const QString& name,
                            const QByteArray& picture, const QRectF& place);
    static Shape Add(const std::shared_ptr<Document>& document, int sheet, const QString& name, ShapeKind kind,
                     const QRectF& place);
    /// Draws many at once, a later one over an earlier.
    static void AddAll(const std::shared_ptr<Document>& document, int sheet, const std::vector<ShapePlan>& plans);
    [[nodiscard]] static bool IsOn(const std::shared_ptr<Document>& document, int sheet, const QString& name);
    /// Failure::Call when there is none of that name.
    [[nodiscard]] static Shape Named(const std::shared_ptr<Document>& document, int sheet, const QString& name);
    [[nodiscard]] static std::vector<QString> NamesOn(const std::shared_ptr<Document>& document, int sheet);

    [[nodiscard]] QString Name() const { return name_; }
    [[nodiscard]] QRectF Place() const;
    void SetPlace(const QRectF& place);
    void SetFill(int colorIndex);
    void SetLine(int colorIndex, double points);
    /// As in ShapeLook.
    void SetFillColor(const QColor& color);
    void SetLineColor(const QColor& color, double points);
    void SetPattern(const FillPattern& pattern, const QColor& foreground, const QColor& background);
    void SetText(const QString& text, const CellStyle& font);
    /// The form; a rectangle where it is none of these.
    [[nodiscard]] ShapeKind Kind() const;
    /// The colour of an even fill; an invalid one for a pattern, and where nothing is filled.
    [[nodiscard]] QColor FillColor() const;
    /// The tile of a pattern; a null picture when there is none.
    [[nodiscard]] QImage PatternTile() const;
    /// The picture as PNG, this many pixels wide.
    [[nodiscard]] QByteArray AsPng(int pixelWidth) const;
    void Remove();

  private:
    std::shared_ptr<Document> document_;
    int sheet_;
    QString name_;
};

} // namespace tessaro::office
