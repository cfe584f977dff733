#include "controls/MessageBox.h"

#include "controls/ArrowPointer.h"
#include "controls/Captions.h"
#include "controls/Theme.h"
#include "controls/TintedIcon.h"
#include "session/Strings.h"

#include <QApplication>
#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMainWindow>
#include <QPushButton>
#include <QVBoxLayout>

#include <array>

namespace tessaro {

namespace {

using Buttons = std::vector<MessageButton>;

/// The buttons of each type of message, with their codes. In Yes, No, Cancel the code of No is 0, as the callers of
/// that type expect.
const std::array<Buttons, 7> ButtonSets{{
    {},
    {{"OK BUTTON", MessageCode::Ok}},
    {{"OK BUTTON", MessageCode::Ok}, {"CANCEL BUTTON", MessageCode::Cancel}},
    {{"Yes", MessageCode::Yes}, {"No", MessageCode::No}},
    {{"Yes", MessageCode::Yes}, {"No", 0}, {"CANCEL BUTTON", MessageCode::Cancel}},
    {{"Comm_Done", MessageCode::Done}},
    {{"Locate", MessageCode::Ok}, {"Ignore", MessageCode::Cancel}},
}};

struct IconPicture {
    MessageIcon code;
    const char* file;
    const char* nameKey;
};
constexpr std::array<IconPicture, 4> kPictures{{
    {MessageIcon::Refused, "error.png", "TS_Warning"},
    {MessageIcon::Note, "info.png", "TS_Message"},
    {MessageIcon::Warning, "warning.png", "TS_Warning"},
    {MessageIcon::Question, "question.png", "TS_Question"},
}};

const IconPicture& PictureOf(MessageIcon icon) {
    for (const IconPicture& picture : kPictures)
        if (picture.code == icon) return picture;
    return kPictures[2];
}

/// The frame, as parent of a message while no window is active.
QWidget* VisibleMainWindow() {
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows)
        if (window->isVisible() && qobject_cast<QMainWindow*>(window)) return window;
    return nullptr;
}

/// The caption of a button; its key while no language file has been read yet.
QString CaptionOf(const char* key) {
    const QString text = GetText(QLatin1String(key));
    return text.isEmpty() ? QString::fromLatin1(key).section(QLatin1Char(' '), 0, 0) : text;
}

} // namespace

const std::vector<MessageButton>& ButtonsOf(MessageType type) {
    const auto place = static_cast<std::size_t>(type);
    return ButtonSets.at(place < ButtonSets.size() && place > 0 ? place : 1);
}

MessageBox::MessageBox(const Message& message, QWidget* parent)
    : QDialog(parent), text_(message.text), code_(CodeOfClosing(message.type)) {
    setObjectName(QStringLiteral("frmMessage"));
    setWindowTitle(message.title);
    setModal(true);
    setLayoutDirection(LanguageIsRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(3 * theme::kGrid, 3 * theme::kGrid, 3 * theme::kGrid, 2 * theme::kGrid);
    layout->setSpacing(3 * theme::kGrid);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    AddText(message);
    AddButtons(message);
}

void MessageBox::AddText(const Message& message) {
    auto* row = new QHBoxLayout;
    row->setSpacing(2 * theme::kGrid);
    const IconPicture& icon = PictureOf(message.icon);
    auto* picture = new QLabel(this);
    picture->setObjectName(QStringLiteral("picMessage"));
    picture->setPixmap(theme::Icon(QLatin1String(icon.file)).pixmap(4 * theme::kGrid, 4 * theme::kGrid));
    picture->setAccessibleName(PlainText(QLatin1String(icon.nameKey)));
    row->addWidget(picture, 0, Qt::AlignTop);
    // A message may hold a very long name from a database; what fits on no screen is left out, Copy copies all.
    constexpr qsizetype kMostCharacters = 5000;
    const QString text =
        message.text.size() <= kMostCharacters ? message.text : message.text.left(kMostCharacters) + QChar(0x2026);
    auto* label = new QLabel(text, this);
    label->setObjectName(QStringLiteral("lblMessage"));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setAlignment(ReadingSide()); // also a bare number, which has no direction of its own
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setFont(message.key.isEmpty() ? DefaultFont() : LanguageFont());
    const int wide = label->fontMetrics().averageCharWidth() * 56;
    const QRect needed = label->fontMetrics().boundingRect(QRect(0, 0, wide, 10000), Qt::TextWordWrap, text);
    label->setFixedWidth(qBound(30 * theme::kGrid, needed.width() + theme::kGrid, wide + theme::kGrid));
    label->setMinimumHeight(label->heightForWidth(label->width()));
    row->addWidget(label, 1, Qt::AlignVCenter);
    static_cast<QVBoxLayout*>(layout())->addLayout(row);
}

void MessageBox::AddButtons(const Message& message) {
    auto* row = new QHBoxLayout;
    row->setSpacing(theme::kGrid);
    row->addStretch(1);
    const Buttons& buttons = ButtonsOf(message.type);
    const int standard = message.careful ? static_cast<int>(buttons.size()) - 1 : 0;
    int place = 0;
    for (const MessageButton& spec : buttons) {
        auto* button = new QPushButton(CaptionOf(spec.captionKey), this);
        button->setObjectName(QStringLiteral("cmdMessage_%1").arg(place));
        button->setFont(LanguageFont());
        button->setMinimumWidth(11 * theme::kGrid);
        button->setDefault(place == standard);
        connect(button, &QPushButton::clicked, this, [this, code = spec.code] {
            code_ = code;
            accept();
        });
        row->addWidget(button);
        if (place++ == standard) button->setFocus();
    }
    static_cast<QVBoxLayout*>(layout())->addLayout(row);
}

void MessageBox::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy)) {
        QGuiApplication::clipboard()->setText(text_);
        return;
    }
    QDialog::keyPressEvent(event);
}

int MessageBox::Ask() {
    exec();
    return code_;
}

int AskWithMessageBox(const Message& message) {
    QWidget* over = QApplication::activeModalWidget();
    if (!over) over = QApplication::activeWindow();
    if (!over) over = VisibleMainWindow();
    const ArrowPointer arrow;
    return MessageBox(message, over).Ask();
}

} // namespace tessaro
