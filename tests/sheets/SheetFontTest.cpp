#include "sheets/SheetFont.h"

#include "session/LanguageName.h"
#include "session/Session.h"
#include "session/Settings.h"
#include "support/TestSession.h"

namespace tessaro {

namespace {

/// The sample's settings: DEFAULT FONT "Noto Sans" in 10 points, used outside English, too.
class SheetFontTest : public test::SessionTest {
  protected:
    void SetUp() override {
        StartSample();
        ProductFont = QStringLiteral("Noto Sans Arabic");
        ProductFontSize = 14;
        ProductFontStyle = 2;
    }
};

} // namespace

TEST_F(SheetFontTest, FollowsTheLanguage) {
    const SheetFont body{QStringLiteral("Liberation Serif"), 8, false, true};
    Language = QStringLiteral("ENGLISH [en]");
    EXPECT_TRUE(LanguageIsEnglish());
    EXPECT_EQ(ListFont(), (SheetFont{QStringLiteral("Noto Sans"), 14, true, false}));
    EXPECT_EQ(TextFont(body), body);
    Language = QStringLiteral("Arabic [ar]");
    EXPECT_FALSE(LanguageIsEnglish());
    EXPECT_EQ(ListFont(), (SheetFont{QStringLiteral("Noto Sans Arabic"), 10, true, false}));
    EXPECT_EQ(TextFont(body), (SheetFont{QStringLiteral("Noto Sans Arabic"), 14, false, true}));
    ProductFont.clear();
    ProductFontSize = 0;
    ProductFontStyle = 3;
    EXPECT_EQ(TextFont(body), body) << "no font of its own";
    EXPECT_TRUE(ListFont().bold && ListFont().italic);
}

TEST_F(SheetFontTest, LettersOfAnotherScriptStandBesideLatinOnes) {
    const office::CellStyle arabic = SheetFont{QStringLiteral("Noto Sans Arabic"), 9}.Style();
    EXPECT_EQ(arabic.fontName, QStringLiteral("Noto Sans Arabic"));
    EXPECT_EQ(arabic.latinFontName, QStringLiteral("Noto Sans"));
    EXPECT_FALSE((SheetFont{QStringLiteral("Noto Sans"), 9}.Style().latinFontName));
    const office::CellStyle open = SheetFont{{}, 0}.Style();
    EXPECT_FALSE(open.fontName || open.latinFontName || open.fontSize);
}

} // namespace tessaro
