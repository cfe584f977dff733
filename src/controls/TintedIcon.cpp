#include "controls/TintedIcon.h"

#include "controls/Theme.h"
#include "platform/Files.h"
#include "session/Strings.h"

#include <QGuiApplication>
#include <QHash>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>

namespace tessaro {

namespace {

/// The two colours that the pictures of the family are drawn in.
const QByteArray Ink = QByteArrayLiteral("#3b4a5a");
const QByteArray PictureAccent = QByteArrayLiteral("#176980");

QByteArray Hex(const QColor& color) {
    return color.name().toLatin1();
}

QByteArray Tinted(QByteArray svg, QIcon::Mode mode) {
    const QPalette palette = QGuiApplication::palette();
    const QColor pale = palette.color(QPalette::Disabled, QPalette::ButtonText);
    const QColor bright = palette.color(QPalette::HighlightedText);
    switch (mode) {
    case QIcon::Disabled:
        return svg.replace(Ink, Hex(pale)).replace(PictureAccent, Hex(pale));
    case QIcon::Selected:
        return svg.replace(Ink, Hex(bright)).replace(PictureAccent, Hex(bright));
    default:
        return svg.replace(Ink, theme::IsDark() ? QByteArrayLiteral("#c3ced6") : Ink)
            .replace(PictureAccent, Hex(theme::Accent()));
    }
}

class TintedEngine final : public QIconEngine {
  public:
    TintedEngine(QString file, QByteArray svg) : file_(std::move(file)), svg_(std::move(svg)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        QSvgRenderer(Tinted(svg_, mode)).render(painter, rect);
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        const QString key = QStringLiteral("%1|%2x%3|%4|%5|%6")
                                .arg(file_)
                                .arg(size.width())
                                .arg(size.height())
                                .arg(mode)
                                .arg(theme::IsDark())
                                .arg(theme::Accent().rgb());
        QPixmap picture;
        if (QPixmapCache::find(key, &picture)) return picture;
        picture = QPixmap(size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        paint(&painter, QRect(QPoint(), size), mode, state);
        painter.end();
        QPixmapCache::insert(key, picture);
        return picture;
    }

    [[nodiscard]] QIconEngine* clone() const override { return new TintedEngine(*this); }

  private:
    QString file_;
    QByteArray svg_;
};

} // namespace

QIcon TintedIcon(const QString& svgFile) {
    static QHash<QString, QIcon> icons;
    const auto known = icons.constFind(svgFile);
    if (known != icons.constEnd()) return *known;
    const std::optional<QByteArray> svg = ReadWholeFile(svgFile, 4 * 1024 * 1024);
    if (!svg || !QSvgRenderer(*svg).isValid()) return {};
    return *icons.insert(svgFile, QIcon(new TintedEngine(svgFile, *svg)));
}

} // namespace tessaro

namespace tessaro::theme {

QIcon Icon(const QString& fileName) {
    const QString path = PictureFile(fileName);
    if (path.isEmpty()) return {};
    if (!path.endsWith(QLatin1String(".svg"), Qt::CaseInsensitive)) return QIcon(path);
    return TintedIcon(path);
}

} // namespace tessaro::theme
