#include "session/Session.h"
#include "shell/FrameTest.h"

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QHeaderView>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>

namespace tessaro {

/// The frame over the application folder that the build made, in all its languages.
class AccessTest : public test::FrameTest {
  protected:
    static QString NameOf(const QWidget* control) {
        if (!control->accessibleName().isEmpty()) return control->accessibleName();
        const auto* button = qobject_cast<const QAbstractButton*>(control);
        return button ? button->text() : QString();
    }

    void CheckControls(const QString& where) {
        const auto controls = window->findChildren<QWidget*>();
        for (const QWidget* control : controls) {
            const bool wanted = qobject_cast<const QAbstractButton*>(control) ||
                                qobject_cast<const QComboBox*>(control) ||
                                qobject_cast<const QAbstractItemView*>(control);
            if (!wanted || !control->isVisible() || control->objectName().startsWith(QLatin1String("qt_"))) continue;
            if (qobject_cast<const QHeaderView*>(control) ||
                control->objectName() == QLatin1String("ScrollLeftButton") ||
                control->objectName() == QLatin1String("ScrollRightButton") ||
                control->metaObject()->className() == std::string("QTableCornerButton"))
                continue;
            EXPECT_FALSE(NameOf(control).isEmpty())
                << where.toStdString() << ": " << control->objectName().toStdString() << " "
                << control->metaObject()->className();
            if (control->isEnabled()) {
                EXPECT_NE(control->focusPolicy() & Qt::TabFocus, 0)
                    << where.toStdString() << ": " << control->objectName().toStdString();
            }
        }
    }
};

TEST_F(AccessTest, EveryControlHasANameAndTakesTheFocus) {
    ASSERT_TRUE(StartInstalled());
    CheckControls(QStringLiteral("home"));
    for (int stage = 0; stage < 3; ++stage) {
        window->GoToStage(stage);
        CheckControls(QStringLiteral("stage %1").arg(stage));
    }
}

TEST_F(AccessTest, EveryMenuEntryHasACaptionInEveryLanguage) {
    ASSERT_TRUE(StartInstalled());
    const auto languages = LanguageFiles;
    for (const auto& language : languages) {
        window->Settings().ChangeLanguage(language.label);
        const auto entries = window->menuBar()->findChildren<QAction*>();
        int named = 0;
        for (const QAction* entry : entries) {
            if (entry->isSeparator() || entry->objectName().isEmpty()) continue;
            ++named;
            EXPECT_FALSE(entry->text().trimmed().isEmpty())
                << language.label.toStdString() << ": " << entry->objectName().toStdString();
        }
        EXPECT_GT(named, 35);
        const bool rightToLeft = language.label.contains(QLatin1String("[ar]"));
        EXPECT_EQ(window->layoutDirection(), rightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
    }
}

TEST_F(AccessTest, LettersOfAccessAreUniqueInTheMenuBar) {
    ASSERT_TRUE(StartInstalled());
    const auto languages = LanguageFiles;
    for (const auto& language : languages) {
        window->Settings().ChangeLanguage(language.label);
        QStringList keys;
        const auto titles = window->menuBar()->actions();
        for (const QAction* title : titles) {
            const QString key = QKeySequence::mnemonic(title->text()).toString();
            if (!key.isEmpty()) keys << key;
        }
        const auto before = keys.size();
        keys.removeDuplicates();
        EXPECT_EQ(keys.size(), before) << language.label.toStdString();
    }
}

TEST_F(AccessTest, ShortcutsAreUnique) {
    ASSERT_TRUE(StartInstalled());
    QStringList keys;
    const auto entries = window->findChildren<QAction*>();
    for (const QAction* entry : entries)
        if (!entry->shortcut().isEmpty()) keys << entry->shortcut().toString();
    const auto buttons = window->findChildren<QAbstractButton*>();
    for (const QAbstractButton* button : buttons)
        if (button->objectName().startsWith(QLatin1String("Toolbar1_")) && !button->shortcut().isEmpty())
            keys << button->shortcut().toString();
    const auto before = keys.size();
    keys.removeDuplicates();
    EXPECT_EQ(keys.size(), before);
}

} // namespace tessaro
