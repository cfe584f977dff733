#include "platform/SingleInstance.h"
#include "session/Session.h"
#include "shell/FrameTest.h"

#include <QAbstractButton>
#include <QColorDialog>
#include <QFileDialog>
#include <QFontDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPrintDialog>
#include <QPrinter>

namespace tessaro {

namespace {

/// What a window says on its buttons and labels, and a field in its popup, without letters of access.
QStringList TextsOf(QWidget& form) {
    QStringList texts;
    for (const auto* button : form.findChildren<QAbstractButton*>())
        texts << button->text();
    for (const auto* label : form.findChildren<QLabel*>())
        texts << label->text();
    texts.replaceInStrings(QStringLiteral("&"), QString());
    texts.removeAll(QString());
    return texts;
}

QStringList TextsOfAll() {
    QFileDialog files;
    files.setOption(QFileDialog::DontUseNativeDialog);
    QColorDialog colors;
    colors.setOption(QColorDialog::DontUseNativeDialog);
    QFontDialog fonts;
    fonts.setOption(QFontDialog::DontUseNativeDialog);
    QStringList texts;
    for (QWidget* form : std::initializer_list<QWidget*>{&files, &colors, &fonts})
        texts << TextsOf(*form);
    QLineEdit field;
    const std::unique_ptr<QMenu> popup(field.createStandardContextMenu());
    for (const QAction* entry : popup->actions())
        texts << entry->text().remove(QLatin1Char('&')).section(QLatin1Char('\t'), 0, 0);
    return texts;
}

} // namespace

class ToolkitTextsTest : public test::FrameTest {};

// The dialogs are made anew each time they are shown, so what counts is what a new one says.
TEST_F(ToolkitTextsTest, DialogsFollowTheLanguageWhileTheProgramRuns) {
    ASSERT_TRUE(StartInstalled());
    const QStringList english = TextsOfAll();
    ASSERT_GT(english.size(), 30);
    for (const LanguageFile& language : QList<LanguageFile>(LanguageFiles)) {
        window->Settings().ChangeLanguage(language.label);
        if (language.label.contains(QLatin1String("[en]"))) continue;
        QStringList same;
        for (const QString& text : TextsOfAll())
            if (english.contains(text) && text != text.toUpper()) same << text;
        EXPECT_TRUE(same.isEmpty()) << language.label.toStdString() << ": "
                                    << same.join(QStringLiteral(" | ")).toStdString();
    }
    window->Settings().ChangeLanguage(QStringLiteral("English [en]"));
    EXPECT_EQ(TextsOfAll(), english);
}

} // namespace tessaro
