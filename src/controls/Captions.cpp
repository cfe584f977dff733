#include "controls/Captions.h"

#include "session/LanguageName.h"
#include "session/Session.h"
#include "session/Settings.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QFont>
#include <QLabel>
#include <QLocale>
#include <QToolBar>
#include <QTreeView>

namespace tessaro {

namespace {

bool KeepsItsFont(const QWidget* control) {
    return qobject_cast<const QToolBar*>(control) != nullptr ||
           control->objectName().compare(QLatin1String("Toolbar1"), Qt::CaseInsensitive) == 0;
}

/// The tree of sources shows data of the base language, whatever the language of the screens.
bool ShowsBaseLanguage(const QWidget* control) {
    return control->objectName().compare(QLatin1String("TV_Sources"), Qt::CaseInsensitive) == 0 && !LanguageIsEnglish();
}

} // namespace

void SetCaption(QAbstractButton* control, const QString& key) {
    control->setText(GetText(key));
    control->setAccessibleName(PlainText(key));
}

void SetCaption(QLabel* control, const QString& key) {
    // A label without a partner has no use for a letter of access, and would show its "&".
    control->setText(control->buddy() ? GetText(key) : PlainText(key));
    control->setAccessibleName(PlainText(key));
}

void SetCaption(QAction* action, const QString& key) {
    action->setText(GetText(key));
}

void SetToolTip(QWidget* control, const QString& key) {
    control->setToolTip(PlainText(key));
}

QString InReadingOrder(const QString& text) {
    constexpr char16_t kRightToLeftMark = 0x200F;
    return LanguageIsRightToLeft() ? QChar(kRightToLeftMark) + text : text;
}

QString InOnePiece(const QString& text) {
    constexpr char16_t kFirstStrongIsolate = 0x2068;
    constexpr char16_t kEndOfIsolate = 0x2069;
    return LanguageIsRightToLeft() ? QChar(kFirstStrongIsolate) + text + QChar(kEndOfIsolate) : text;
}

Qt::Alignment ReadingSide() {
    return (LanguageIsRightToLeft() ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignAbsolute | Qt::AlignVCenter;
}

void SetFormFonts(QWidget* form) {
    const QFont font = LanguageFont();
    form->setLayoutDirection(LanguageIsRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    form->setFont(font);
    const auto controls = form->findChildren<QWidget*>();
    for (QWidget* control : controls)
        if (!KeepsItsFont(control)) control->setFont(ShowsBaseLanguage(control) ? DefaultFont() : font);
}

QFont LanguageFont() {
    if (ProductFont.trimmed().isEmpty()) return DefaultFont();
    QFont font(ProductFont);
    if (ProductFontSize > 0) font.setPointSize(qBound(6, ProductFontSize, 72));
    font.setItalic(ProductFontStyle == 1 || ProductFontStyle == 3);
    font.setBold(ProductFontStyle == 2 || ProductFontStyle == 3);
    return font;
}

QFont DefaultFont() {
    const QString family = Setting(QStringLiteral("DEFAULT FONT"));
    QFont font = family.isEmpty() ? QApplication::font() : QFont(family);
    const int size = SettingNumber(QStringLiteral("DEFAULT FONT SIZE"));
    if (size > 0) font.setPointSize(qBound(6, size, 72));
    return font;
}

} // namespace tessaro
