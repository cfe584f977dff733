#include "metadata/SheetBrowser.h"

#include "controls/Theme.h"
#include "metadata/SheetText.h"
#include "platform/ShellOpen.h"
#include "session/ErrorSink.h"
#include "session/Messages.h"
#include "session/Strings.h"

#include <QBuffer>
#include <QImage>
#include <QImageReader>
#include <QTextDocument>

namespace tessaro {

namespace {

constexpr qint64 kMostPoints = 16000000;
constexpr qsizetype kShownOfAddress = 500;

/// The document of one sheet or of all. It loads nothing but pictures that the sheet itself holds.
class SheetDocument final : public QTextDocument {
  public:
    using QTextDocument::QTextDocument;

  protected:
    QVariant loadResource(int type, const QUrl& url) override {
        if (type != ImageResource) return QString();
        QImage picture = PictureIn(url);
        if (picture.isNull()) picture = NoPicture();
        addResource(type, url, picture);
        return picture;
    }

  private:
    /// A transparent pixel. For a null picture Qt would load a file of that name by itself.
    static QImage NoPicture() {
        QImage point(1, 1, QImage::Format_ARGB32_Premultiplied);
        point.fill(Qt::transparent);
        return point;
    }
    QImage PictureIn(const QUrl& url) {
        if (url.scheme().toLower() != QLatin1String("data")) return {};
        const QString path = url.path(QUrl::FullyDecoded);
        const QString kind = path.section(QLatin1Char(','), 0, 0).toLower();
        if (!kind.endsWith(QLatin1String(";base64"))) return {};
        QByteArray bytes = QByteArray::fromBase64(path.section(QLatin1Char(','), 1).toLatin1());
        QBuffer buffer(&bytes);
        for (const char* format : {"png", "jpeg", "gif"})
            if (kind.startsWith(QLatin1String("image/") + QLatin1String(format))) return Read(buffer, format);
        return {};
    }
    QImage Read(QBuffer& buffer, const char* format) {
        QImageReader reader(&buffer, format);
        reader.setAutoDetectImageFormat(false);
        const QSize size = reader.size();
        if (!size.isValid() || size.isEmpty()) return {};
        const qint64 points = qint64{size.width()} * size.height();
        if (points > left_) return {};
        left_ -= points;
        return reader.read();
    }

    qint64 left_ = kMostPoints;
};

bool MayOpen(const QUrl& url) {
    const QString scheme = url.scheme().toLower();
    return scheme == QLatin1String("http") || scheme == QLatin1String("https") || scheme == QLatin1String("mailto");
}

} // namespace

SheetBrowser::SheetBrowser(QWidget* parent) : QTextBrowser(parent) {
    setOpenLinks(false);
    setOpenExternalLinks(false);
    connect(this, &QTextBrowser::anchorClicked, this, &SheetBrowser::Follow);
    ShowHtml({});
}

void SheetBrowser::ShowSheet(const QString& sheet) {
    metadata::SheetBounds bounds;
    ShowHtml(metadata::SheetAsHtml(sheet, bounds));
}

void SheetBrowser::ShowHtml(const QString& html) {
    QTextDocument* before = sheet_;
    auto* sheet = new SheetDocument(this); // a new one, so that the pictures of the last sheet are freed
    sheet->setDefaultFont(document()->defaultFont());
    sheet->setDocumentMargin(theme::kGrid * 2);
    sheet->setHtml(html);
    setDocument(sheet);
    sheet_ = sheet;
    delete before;
}

void SheetBrowser::Follow(const QUrl& url) {
    const ErrorTrap trap("txtInformation_Link");
    if (url.isRelative() && url.path().isEmpty()) return scrollToAnchor(url.fragment());
    const QString address = QString::fromLatin1(url.toEncoded());
    const QString shown = address.size() > kShownOfAddress ? address.left(kShownOfAddress) + QChar(0x2026) : address;
    const auto text = [&](const char* key) { return GetText(QLatin1String(key)).replace(QLatin1String("%1"), shown); };
    if (!MayOpen(url)) {
        ShowMessage(text("TS_LinkRefused"), MessageType::Ok, MessageIcon::Note, {}, false);
        return;
    }
    if (ShowMessage(text("TS_OpenLink"), MessageType::YesNo, MessageIcon::Refused, {}, false) != MessageCode::Yes)
        return;
    if (!ShellOpen(address)) ShowMessage(text("TS_LinkNotOpened"), MessageType::Ok, MessageIcon::Note, {}, false);
}

} // namespace tessaro
