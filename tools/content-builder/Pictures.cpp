#include "Pictures.h"

#include "CsvTable.h"
#include "Languages.h"

#include <QFont>
#include <QImage>
#include <QPainter>
#include <QSaveFile>
#include <QSvgRenderer>

#include <optional>
#include <stdexcept>

namespace tessaro::content {

namespace fs = std::filesystem;

namespace {

const char* FormatOf(const std::string& file) {
    const std::string extension = fs::path(file).extension().string();
    if (extension == ".jpg" || extension == ".jpeg") return "JPG";
    if (extension == ".bmp") return "BMP";
    return "PNG"; // readers look at the data, not at the name
}

/// The strings in all languages, for the words on banner pictures.
class BannerWords {
  public:
    explicit BannerWords(const fs::path& content)
        : languages_(ReadLanguages(content)), strings_(CsvTable::Read(content / "strings.csv")) {}

    /// The text of a key in the language of "[fr]_file.jpg", without its mnemonic; empty when there is none.
    [[nodiscard]] QString Text(const std::string& key, const std::string& file) const {
        for (const ContentLanguage& language : languages_) {
            if (!file.starts_with("[" + language.code + "]_")) continue;
            for (std::size_t row = 0; row < strings_.rowCount(); ++row) {
                if (strings_.Cell(row, "VariableName") == key)
                    return QString::fromStdString(strings_.Cell(row, language.textColumn)).remove(QLatin1Char('&'));
            }
        }
        return {};
    }

  private:
    std::vector<ContentLanguage> languages_;
    CsvTable strings_;
};

void DrawText(QPainter& painter, const QSize& size, const QString& text) {
    QFont font(QStringLiteral("Noto Sans"));
    font.setWeight(QFont::DemiBold);
    font.setPixelSize(std::max(9, size.height() / 3));
    while (QFontMetrics(font).horizontalAdvance(text) > size.width() - 16 && font.pixelSize() > 8)
        font.setPixelSize(font.pixelSize() - 1);
    painter.setFont(font);
    painter.setPen(QColor(0x1f, 0x2d, 0x3a));
    painter.drawText(QRect(QPoint(0, 0), size), Qt::AlignCenter, text);
}

QImage Render(QSvgRenderer& drawing, const QSize& size, bool opaque, const QString& text) {
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(opaque ? Qt::white : Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    drawing.render(&painter, QRectF(QPointF(0, 0), size));
    if (!text.isEmpty()) DrawText(painter, size, text);
    painter.end();
    return opaque ? image.convertToFormat(QImage::Format_RGB32) : image;
}

void Save(const QImage& image, const fs::path& file, const char* format) {
    fs::create_directories(file.parent_path());
    QSaveFile target(QString::fromStdString(file.string()));
    if (!target.open(QIODevice::WriteOnly) || !image.save(&target, format, 92) || !target.commit())
        throw std::runtime_error("can't write " + file.string());
}

} // namespace

std::vector<std::string> BuildPictures(const fs::path& content, const fs::path& folder) {
    const CsvTable manifest = CsvTable::Read(content / "pictures" / "manifest.csv");
    const BannerWords words(content);
    std::vector<std::string> passedOver;
    for (std::size_t row = 0; row < manifest.rowCount(); ++row) {
        const fs::path svg = content / "pictures" / manifest.Cell(row, "svg");
        const std::string& file = manifest.Cell(row, "file");
        QSvgRenderer drawing;
        if (!fs::exists(svg) || !drawing.load(QString::fromStdString(svg.string()))) {
            passedOver.push_back("no drawing " + svg.string() + " for " + file);
            continue;
        }
        const QSize size(std::stoi(manifest.Cell(row, "width")), std::stoi(manifest.Cell(row, "height")));
        const char* format = FormatOf(file);
        const std::string& key = manifest.Cell(row, "text");
        const QString text = key.empty() ? QString() : words.Text(key, file);
        if (!key.empty() && text.isEmpty()) passedOver.push_back("no text " + key + " for " + file);
        Save(Render(drawing, size, std::string_view(format) != "PNG", text), folder / file, format);
        fs::copy_file(svg, folder / fs::path(file).replace_extension(".svg"), fs::copy_options::overwrite_existing);
    }
    return passedOver;
}

} // namespace tessaro::content
