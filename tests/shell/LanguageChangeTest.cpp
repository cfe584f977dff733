#include "platform/SingleInstance.h"
#include "session/Session.h"
#include "shell/FrameTest.h"
#include "shell/SettingsChange.h"
#include "shell/frmProperties.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>

namespace tessaro {

namespace {

/// Everything of a widget that a language changes, as one line; an empty one says nothing.
QString FaceOf(const QWidget& control) {
    QStringList texts{control.toolTip(), control.accessibleName(), control.accessibleDescription()};
    if (const auto* button = qobject_cast<const QAbstractButton*>(&control)) texts << button->text();
    if (const auto* label = qobject_cast<const QLabel*>(&control)) texts << label->text();
    if (const auto* field = qobject_cast<const QLineEdit*>(&control)) texts << field->placeholderText();
    if (const auto* list = qobject_cast<const QListWidget*>(&control))
        for (int row = 0; row < list->count(); ++row)
            texts << list->item(row)->text();
    texts.removeAll(QString());
    if (texts.isEmpty()) return {};
    return texts.join(QStringLiteral(" | ")) + QStringLiteral(" | %1 %2 pt %3")
                                                   .arg(control.font().family())
                                                   .arg(control.font().pointSizeF())
                                                   .arg(control.layoutDirection() == Qt::RightToLeft ? "rtl" : "ltr");
}

} // namespace

/// A language that is changed while the program runs must look as if the program had started in it.
class LanguageChangeTest : public test::FrameTest {
  protected:
    /// The whole window as it stands, a line for each control and menu entry that can be seen.
    QStringList Faces() {
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QStringList faces{window->windowTitle()};
        for (const QWidget* control : window->findChildren<QWidget*>()) {
            const QString face = control->isVisibleTo(window.get()) ? FaceOf(*control) : QString();
            if (!face.isEmpty()) faces << control->objectName() + QStringLiteral(": ") + face;
        }
        for (const QAction* entry : window->findChildren<QAction*>())
            if (entry->objectName().startsWith(QLatin1String("mnu")))
                faces << entry->objectName() + QStringLiteral(": ") + entry->text() + entry->toolTip();
        faces.sort();
        return faces;
    }
    /// The home page and the first three stages.
    QList<QStringList> AllFaces() {
        QList<QStringList> all{Faces()};
        for (int stage = 0; stage < 3; ++stage) {
            window->GoToStage(stage);
            all << Faces();
        }
        window->GoToHome();
        return all;
    }
    void StartAgain() {
        answers = {MessageCode::Yes};
        ASSERT_TRUE(window->close());
        window.reset();
        ASSERT_TRUE(StartInstalled());
        window->GoToHome();
    }
    void ChooseInProperties(const QString& label) {
        const auto made = window->Settings().MakeProperties();
        frmProperties& form = *made;
        form.findChild<QComboBox*>(QStringLiteral("cmbLanguages"))->setCurrentText(label);
        QMetaObject::invokeMethod(
            form.findChild<QComboBox*>(QStringLiteral("cmbLanguages")), "activated",
            Q_ARG(int, form.findChild<QComboBox*>(QStringLiteral("cmbLanguages"))->currentIndex()));
        form.cmdOK_Click();
    }
    static void ExpectSame(const QList<QStringList>& found, const QList<QStringList>& wanted, const std::string& how) {
        ASSERT_EQ(found.size(), wanted.size());
        for (int page = 0; page < found.size(); ++page) {
            for (const QString& face : found.at(page))
                EXPECT_TRUE(wanted.at(page).contains(face)) << how << ", page " << page << ": " << face.toStdString();
            EXPECT_EQ(found.at(page).size(), wanted.at(page).size()) << how << ", page " << page;
        }
    }
};

TEST_F(LanguageChangeTest, LooksAsAfterAStartInTheLanguage) {
    ASSERT_TRUE(StartInstalled());
    for (const QString& language : {QStringLiteral("French [fr]"), QStringLiteral("Arabic [ar]")}) {
        const QString english = QStringLiteral("English [en]");
        window->Settings().ChangeLanguage(language);
        StartAgain();
        ASSERT_EQ(Language, language);
        const QList<QStringList> wanted = AllFaces();
        for (const QString& route : {QStringLiteral("menu, home page"), QStringLiteral("menu, stage"),
                                     QStringLiteral("properties, home page"), QStringLiteral("properties, stage")}) {
            window->Settings().ChangeLanguage(english);
            window->GoToHome();
            if (route.endsWith(QLatin1String("stage"))) window->GoToStage(2);
            if (route.startsWith(QLatin1String("menu")))
                window->Settings().ChangeLanguage(language);
            else
                ChooseInProperties(language);
            const QStringList onRoute = Faces();
            EXPECT_FALSE(onRoute.isEmpty());
            window->Stages().UnloadStages(); // the stage that stayed has popups that a fresh start has not
            window->GoToHome();
            ExpectSame(AllFaces(), wanted, (language + QStringLiteral(" by ") + route).toStdString());
        }
    }
}

// The clock reads the same in its first minute as after it.
TEST_F(LanguageChangeTest, TheClockKeepsItsFormat) {
    ASSERT_TRUE(Start());
    const auto* date = Find<QLabel>(QStringLiteral("panelDate"));
    const QString before = date->text();
    ASSERT_FALSE(before.isEmpty());
    for (int second = 0; second < 130; ++second) {
        window->Timer1_Timer();
        ASSERT_EQ(date->text(), before) << second;
    }
}

} // namespace tessaro
