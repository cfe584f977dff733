#pragma once

#include <QFont>
#include <QStaticText>

#include <vector>

namespace tessaro {

/// The letters of a layer's labels, laid out once for a font and kept while the map is drawn again and again. Texts
/// stand on one line and mean nothing but themselves (no markup).
class LabelLayouts final {
  public:
    /// Those of another font are forgotten.
    void SetFont(const QFont& font);
    /// The letters of a label by its number, laid out anew when its text is another one. The reference holds until the
    /// next call.
    [[nodiscard]] const QStaticText& Of(std::size_t label, const QString& text);

  private:
    struct Layout {
        QString text;
        QStaticText letters;
    };
    QFont font_;
    std::vector<Layout> layouts_;
};

} // namespace tessaro
