#include "controls/MessageBox.h"

#include "session/Session.h"
#include "support/TestSession.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTimer>

namespace tessaro {

class MessageBoxTest : public test::SessionTest {
  protected:
    static Message Of(MessageType type) {
        Message message;
        message.text = QStringLiteral("Text");
        message.type = type;
        message.title = QStringLiteral("Title");
        return message;
    }
    /// Asks, and does something to the window once it is up.
    static int Ask(MessageType type, const std::function<void(MessageBox&)>& act) {
        MessageBox box(Of(type));
        QTimer::singleShot(0, &box, [&] { act(box); });
        return box.Ask();
    }
    static void Press(QWidget& window, int key) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        QApplication::sendEvent(&window, &event);
    }
};

TEST_F(MessageBoxTest, ButtonsAndClosingGiveTheirCodes) {
    struct Case {
        MessageType type;
        std::vector<int> buttons;
        int closing;
    };
    const Case cases[] = {
        {MessageType::Ok, {3}, 3},       {MessageType::OkCancel, {3, 4}, 4},
        {MessageType::YesNo, {1, 2}, 2}, {MessageType::YesNoCancel, {1, 0, 4}, 4},
        {MessageType::Done, {5}, 5},     {MessageType::LocateIgnore, {3, 4}, 0},
    };
    for (const Case& c : cases) {
        const int number = static_cast<int>(c.type);
        for (std::size_t button = 0; button < c.buttons.size(); ++button)
            EXPECT_EQ(Ask(c.type,
                          [&](MessageBox& box) {
                              box.findChild<QPushButton*>(QStringLiteral("cmdMessage_%1").arg(button))->click();
                          }),
                      c.buttons[button])
                << number << " button " << button;
        EXPECT_EQ(Ask(c.type, [](MessageBox& box) { Press(box, Qt::Key_Escape); }), c.closing) << number;
        EXPECT_EQ(Ask(c.type, [](MessageBox& box) { box.close(); }), c.closing) << number;
        EXPECT_EQ(Ask(c.type, [](MessageBox& box) { Press(box, Qt::Key_Return); }), c.buttons.front()) << number;
    }
}

TEST_F(MessageBoxTest, AMessageOfAnyLengthIsCut) {
    Message message = Of(MessageType::Ok);
    message.text = QStringLiteral("<b>name</b> ").repeated(100000);
    MessageBox box(message);
    const auto* label = box.findChild<QLabel*>(QStringLiteral("lblMessage"));
    EXPECT_EQ(label->textFormat(), Qt::PlainText);
    EXPECT_EQ(label->text().size(), 5001);
}

TEST_F(MessageBoxTest, EnterKeepsWhatACarefulQuestionWouldLose) {
    const struct {
        MessageType type;
        int code;
    } cases[] = {{MessageType::YesNo, MessageCode::No}, {MessageType::YesNoCancel, MessageCode::Cancel}};
    for (const auto& [type, code] : cases) {
        for (const int key : {Qt::Key_Return, Qt::Key_Space}) {
            Message message = Of(type);
            message.careful = true;
            MessageBox box(message);
            QTimer::singleShot(0, &box, [&] { QTest::keyClick(box.focusWidget(), static_cast<Qt::Key>(key)); });
            EXPECT_EQ(box.Ask(), code) << key;
        }
    }
    bool careful = false;
    SetMessageAnswerer([&](const Message& message) { return (careful = message.careful) ? 2 : 1; });
    EXPECT_EQ(AskBeforeLoss(QStringLiteral("315")), MessageCode::No);
    EXPECT_TRUE(careful);
}

TEST_F(MessageBoxTest, LongTextsWrapAndStayOnTheScreen) {
    Message message = Of(MessageType::YesNo);
    message.text = QString(3000, QLatin1Char('x')).replace(7, 1, QLatin1Char(' ')) + QStringLiteral(" <b>not bold</b>");
    message.text.replace(QLatin1String("xxxxxxxxx"), QLatin1String("xxxxxxxx "));
    MessageBox box(message);
    box.show();
    EXPECT_LE(box.width(), 800);
    EXPECT_TRUE(
        box.findChild<QLabel*>(QStringLiteral("lblMessage"))->text().endsWith(QLatin1String("<b>not bold</b>")));
    EXPECT_EQ(box.findChild<QLabel*>(QStringLiteral("lblMessage"))->textFormat(), Qt::PlainText);
}

TEST_F(MessageBoxTest, EveryButtonHasATextEvenWithoutALanguageFile) {
    for (int type = 1; type <= 6; ++type) {
        MessageBox box(Of(static_cast<MessageType>(type)));
        const auto buttons = box.findChildren<QPushButton*>();
        for (const QPushButton* button : buttons)
            EXPECT_FALSE(button->text().isEmpty()) << type;
    }
}

TEST_F(MessageBoxTest, AWaitCursorIsPutAsideForTheQuestion) {
    QApplication::setOverrideCursor(Qt::WaitCursor);
    QTimer::singleShot(0, qApp, [] {
        EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::ArrowCursor);
        QApplication::activeModalWidget()->close();
    });
    AskWithMessageBox(Of(MessageType::Ok));
    ASSERT_NE(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    QApplication::restoreOverrideCursor();
}

TEST_F(MessageBoxTest, ANumberStandsWhereReadingBegins) {
    for (const auto& [language, side] :
         {std::pair{QStringLiteral("English [en]"), Qt::AlignLeft}, {QStringLiteral("Arabic [ar]"), Qt::AlignRight}}) {
        Language = language;
        Message message = Of(MessageType::Ok);
        message.text = QStringLiteral("2");
        const MessageBox box(message);
        const auto* label = box.findChild<QLabel*>(QStringLiteral("lblMessage"));
        EXPECT_TRUE(label->alignment().testFlags(side | Qt::AlignAbsolute)) << language.toStdString();
    }
}

} // namespace tessaro
