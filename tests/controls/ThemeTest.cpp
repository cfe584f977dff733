#include "controls/Theme.h"

#include "controls/ThemeSetup.h"
#include "controls/TintedIcon.h"
#include "support/TestSession.h"

#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QPalette>
#include <QPushButton>
#include <QRadioButton>
#include <QTableWidget>

#include <cmath>

namespace tessaro {

class ThemeTest : public test::SessionTest {
  protected:
    ThemeTest() { StartSample(); }
    ~ThemeTest() override {
        qunsetenv("TESSARO_THEME");
        theme::Apply(*static_cast<QApplication*>(QApplication::instance()));
    }
    static void Use(const char* name) {
        qputenv("TESSARO_THEME", name);
        theme::Apply(*static_cast<QApplication*>(QApplication::instance()));
    }
    /// Contrast of two colours as the accessibility guidelines count it, 1 to 21.
    static double Contrast(const QColor& a, const QColor& b) {
        const auto light = [](const QColor& color) {
            const auto part = [](double x) { return x <= 0.03928 ? x / 12.92 : std::pow((x + 0.055) / 1.055, 2.4); };
            return 0.2126 * part(color.redF()) + 0.7152 * part(color.greenF()) + 0.0722 * part(color.blueF());
        };
        const double x = light(a), y = light(b);
        return (std::max(x, y) + 0.05) / (std::min(x, y) + 0.05);
    }
    QString WriteSvg(const char* name, const QByteArray& body) const {
        QFile file(Folder() + QLatin1Char('/') + QLatin1String(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"20\" height=\"20\" viewBox=\"0 0 20 20\">" +
                   body);
        return file.fileName();
    }
    static QColor Middle(const QIcon& icon, QIcon::Mode mode) {
        return icon.pixmap(QSize(20, 20), mode).toImage().pixelColor(10, 10);
    }
};

TEST_F(ThemeTest, TextsAreReadableInLightAndDark) {
    for (const char* name : {"light", "dark"}) {
        Use(name);
        EXPECT_EQ(theme::IsDark(), QLatin1String(name) == QLatin1String("dark"));
        const QPalette palette = QApplication::palette();
        const QColor ground = palette.color(QPalette::Window);
        EXPECT_GE(Contrast(palette.color(QPalette::WindowText), ground), 7.0) << name;
        EXPECT_GE(Contrast(theme::MutedText(), ground), 4.5) << name;
        EXPECT_GE(Contrast(theme::Accent(), palette.color(QPalette::Base)), 4.5) << name;
        EXPECT_GE(Contrast(palette.color(QPalette::HighlightedText), palette.color(QPalette::Highlight)), 4.5) << name;
    }
}

TEST_F(ThemeTest, AColourOfTheUserIsReadableAsATextOfItsHue) {
    const QColor dim(23, 105, 128);
    Use("light");
    EXPECT_EQ(theme::TextColor(dim), dim);
    Use("dark");
    const QColor shown = theme::TextColor(dim);
    EXPECT_GE(Contrast(shown, QApplication::palette().color(QPalette::Base)), 4.5);
    EXPECT_NEAR(shown.hslHue(), dim.hslHue(), 3);
    EXPECT_EQ(theme::TextColor(Qt::white), QColor(Qt::white));
    EXPECT_FALSE(theme::TextColor(QColor()).isValid());
}

TEST_F(ThemeTest, BoxesAndTheButtonOfReturnStandOut) {
    for (const char* name : {"light", "dark"}) {
        Use(name);
        QDialog form;
        auto* box = new QCheckBox(&form);
        auto* choice = new QRadioButton(&form);
        auto* accept = new QPushButton(&form);
        accept->setDefault(true);
        accept->setGeometry(0, 60, 80, 24);
        choice->move(0, 30);
        form.resize(100, 100);
        const QImage picture = form.grab().toImage();
        const QColor ground = form.palette().color(QPalette::Window);
        for (const QWidget* empty : {static_cast<QWidget*>(box), static_cast<QWidget*>(choice)}) {
            double most = 1;
            for (int x = 0; x < 20; ++x)
                most = std::max(most, Contrast(picture.pixelColor(x, empty->geometry().center().y()), ground));
            EXPECT_GE(most, 3.0) << name;
        }
        EXPECT_EQ(picture.pixel(accept->geometry().center()), form.palette().color(QPalette::Highlight).rgb()) << name;
    }
}

TEST_F(ThemeTest, PicturesTakeTheColoursOfTheirState) {
    Use("light");
    const QIcon icon = TintedIcon(WriteSvg("ink.svg", R"(<path fill="#3b4a5a" d="M0 0h20v20H0z"/></svg>)"));
    const QPalette palette = QApplication::palette();
    EXPECT_EQ(Middle(icon, QIcon::Normal), QColor(0x3b, 0x4a, 0x5a));
    EXPECT_EQ(Middle(icon, QIcon::Disabled), palette.color(QPalette::Disabled, QPalette::ButtonText));
    EXPECT_EQ(Middle(icon, QIcon::Selected), palette.color(QPalette::HighlightedText));
    Use("dark");
    EXPECT_GT(Middle(icon, QIcon::Normal).lightness(), 150);
}

TEST_F(ThemeTest, AFileThatIsNoPictureGivesNoIcon) {
    EXPECT_TRUE(TintedIcon(Folder() + QLatin1String("/missing.svg")).isNull());
    EXPECT_TRUE(TintedIcon(WriteSvg("broken.svg", "<path d=")).isNull());
    EXPECT_TRUE(theme::Icon(QString()).isNull());
    EXPECT_TRUE(theme::Icon(QStringLiteral("nowhere.gif")).isNull());
}

// A database from elsewhere may have names of any length; laying one out whole takes a second.
TEST_F(ThemeTest, NamesOfAnyLengthArePaintedAtOnce) {
    Use("light");
    QTableWidget table(20, 5);
    const QString name = QStringLiteral("long name ").repeated(20000);
    for (int row = 0; row < table.rowCount(); ++row)
        for (int column = 0; column < table.columnCount(); ++column)
            table.setItem(row, column, new QTableWidgetItem(name));
    table.resize(800, 600);
    QElapsedTimer clock;
    clock.start();
    table.resizeRowsToContents();
    const QImage image = table.grab().toImage();
    EXPECT_LT(clock.elapsed(), 3000);
    EXPECT_FALSE(image.isNull());
}

} // namespace tessaro
