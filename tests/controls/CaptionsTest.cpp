#include "controls/Captions.h"

#include "session/Session.h"
#include "session/Strings.h"
#include "support/TestSession.h"

#include <QFont>
#include <QLabel>
#include <QPushButton>
#include <QToolBar>
#include <QTreeView>
#include <QVBoxLayout>

namespace tessaro {

class CaptionsTest : public test::SessionTest {};

TEST_F(CaptionsTest, DirectionFollowsTheLanguagesCode) {
    const std::pair<const char*, bool> cases[] = {
        {"Arabic [ar]", true},     {"Hebrew [he]", true}, {"Farsi [fa]", true}, {"English [en]", false},
        {"Russian [ru]", false},   {"No code", false},    {"", false},          {"Broken [", false},
        {"Nobody's [zzz]", false},
    };
    for (const auto& [label, expected] : cases) {
        Language = QString::fromUtf8(label);
        EXPECT_EQ(LanguageIsRightToLeft(), expected) << label;
    }
}

TEST_F(CaptionsTest, CaptionsKeepTheLetterOfAccessAndNamesDoNot) {
    StartSample();
    QPushButton button;
    SetCaption(&button, QStringLiteral("Comm_Browse"));
    EXPECT_EQ(button.text(), QStringLiteral("Browse... and open..."));
    EXPECT_EQ(button.accessibleName(), QStringLiteral("Browse... and open..."));
    SetCaption(&button, QStringLiteral("no such key"));
    EXPECT_TRUE(button.text().isEmpty());
}

TEST_F(CaptionsTest, FontOfTheLanguage) {
    struct Case {
        int style;
        bool bold, italic;
    };
    for (const Case& c :
         {Case{0, false, false}, {1, false, true}, {2, true, false}, {3, true, true}, {9, false, false}}) {
        ProductFont = QStringLiteral("Noto Sans");
        ProductFontSize = 11;
        ProductFontStyle = c.style;
        const QFont font = LanguageFont();
        EXPECT_EQ(font.family(), QStringLiteral("Noto Sans"));
        EXPECT_EQ(font.pointSize(), 11);
        EXPECT_EQ(font.bold(), c.bold) << c.style;
        EXPECT_EQ(font.italic(), c.italic) << c.style;
    }
    ProductFontSize = 100000;
    EXPECT_LE(LanguageFont().pointSize(), 72);
}

TEST_F(CaptionsTest, AFormGetsTheFontAndTheDirectionButItsToolBarsKeepTheirs) {
    StartSample();
    ProductFontSize = 17;
    Language = QStringLiteral("Arabic [ar]");
    QWidget form;
    QVBoxLayout layout(&form);
    QLabel label;
    QToolBar bar;
    QTreeView sources;
    sources.setObjectName(QStringLiteral("TV_Sources"));
    for (QWidget* control : std::initializer_list<QWidget*>{&label, &bar, &sources})
        layout.addWidget(control);
    const int barSize = bar.font().pointSize();
    QFont fixed = bar.font();
    fixed.setPointSize(barSize);
    bar.setFont(fixed);
    SetFormFonts(&form);
    EXPECT_EQ(label.font().pointSize(), 17);
    EXPECT_EQ(bar.font().pointSize(), barSize);
    EXPECT_EQ(sources.font().pointSize(), 10) << "its data stay in the base language";
    EXPECT_EQ(label.layoutDirection(), Qt::RightToLeft);
}

} // namespace tessaro
