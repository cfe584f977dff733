#include "controls/AccessLetter.h"

#include "controls/FlatStyle.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

namespace tessaro {

namespace {

constexpr QRect kPlace(10, 10, 300, 60);

QImage Drawn(const QString& text, int flags) {
    QImage picture(320, 80, QImage::Format_RGB32);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    QFont font(QStringLiteral("Noto Sans Arabic"));
    font.setPixelSize(32);
    painter.setFont(font);
    QPalette palette;
    palette.setColor(QPalette::WindowText, Qt::black);
    FlatStyle().drawItemText(&painter, kPlace, flags, palette, true, text, QPalette::WindowText);
    return picture;
}

int Baseline() {
    QFont font(QStringLiteral("Noto Sans Arabic"));
    font.setPixelSize(32);
    return kPlace.top() + QFontMetrics(font).ascent();
}

} // namespace

TEST(AccessLetterTest, TakesTheLetterOutOfACaption) {
    const struct {
        const char* caption;
        const char* plain;
        int position;
        bool joins;
    } cases[] = {
        {"&Save", "Save", 0, false},
        {"Sa&ve", "Save", 2, false},
        {"Save", "Save", -1, false},
        {"A && B", "A & B", -1, false},
        {"A && &B", "A & B", 4, false},
        {"Save&", "Save&", -1, false},
        {"", "", -1, false},
        {"&تطبيق", "تطبيق", 0, true},
        {"&Сохранить", "Сохранить", 0, false},
    };
    for (const auto& c : cases) {
        const AccessLetter letter(QString::fromUtf8(c.caption));
        EXPECT_EQ(letter.plain, QString::fromUtf8(c.plain)) << c.caption;
        EXPECT_EQ(letter.position, c.position) << c.caption;
        EXPECT_EQ(letter.JoinsItsNeighbours(), c.joins) << c.caption;
    }
}

// An underlined letter in the middle of an Arabic word leaves the word as it is written.
TEST(AccessLetterTest, ArabicWordsStayWhole) {
    const int flags = Qt::AlignLeft | Qt::AlignTop | Qt::TextSingleLine;
    const QImage plain = Drawn(QStringLiteral("تطبيق"), flags);
    ASSERT_NE(plain, Drawn(QString(), flags));
    for (const char* caption : {"&تطبيق", "تط&بيق"}) {
        const QImage marked = Drawn(QString::fromUtf8(caption), flags | Qt::TextShowMnemonic);
        const QRect above(0, 0, plain.width(), Baseline());
        EXPECT_EQ(marked.copy(above), plain.copy(above)) << caption;
        EXPECT_NE(marked, plain) << caption << " has no line";
        EXPECT_EQ(Drawn(QString::fromUtf8(caption), flags | Qt::TextShowMnemonic | Qt::TextHideMnemonic), plain);
    }
}

} // namespace tessaro
