#include "controls/FlatStyle.h"

#include "controls/AccessLetter.h"
#include "controls/Theme.h"
#include "controls/TintedIcon.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QLabel>
#include <QListView>
#include <QPainter>
#include <QPainterPath>
#include <QStyleFactory>
#include <QStyleOption>

#include <algorithm>

namespace tessaro {

namespace {

constexpr qreal kRadius = 4;

bool Has(const QStyleOption& option, QStyle::StateFlag flag) {
    return (option.state & flag) != 0;
}

/// A rounded, filled place with a hairline around it, on whole pixels.
void DrawPlace(QPainter& painter, const QRect& rect, const QColor& fill, const QColor& line) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(line.isValid() ? QPen(line, 1) : QPen(Qt::NoPen));
    painter.setBrush(fill);
    painter.drawRoundedRect(QRectF(rect).adjusted(0.5, 0.5, -0.5, -0.5), kRadius, kRadius);
    painter.restore();
}

QColor LineColor(const QStyleOption& option) {
    const bool focus = Has(option, QStyle::State_HasFocus) && Has(option, QStyle::State_Enabled);
    return focus ? theme::Accent() : option.palette.color(QPalette::Mid);
}

/// The default button, which Return presses, has the accent colour.
bool IsDefault(const QStyleOption& option) {
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(&option);
    return button && (button->features & QStyleOptionButton::DefaultButton) && Has(option, QStyle::State_Enabled);
}

void DrawDefaultButton(const QStyleOption& option, QPainter& painter) {
    const bool pressed = Has(option, QStyle::State_Sunken) || Has(option, QStyle::State_On);
    QColor fill = option.palette.color(QPalette::Active, QPalette::Highlight);
    if (pressed) fill = fill.darker(115);
    if (!pressed && Has(option, QStyle::State_MouseOver)) fill = fill.lighter(112);
    const bool focus = Has(option, QStyle::State_HasFocus);
    if (focus) DrawPlace(painter, option.rect, option.palette.color(QPalette::Window), theme::Accent());
    DrawPlace(painter, focus ? option.rect.adjusted(2, 2, -2, -2) : option.rect, fill, {});
}

void DrawPushButton(const QStyleOption& option, QPainter& painter) {
    if (IsDefault(option)) return DrawDefaultButton(option, painter);
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(&option);
    const bool enabled = Has(option, QStyle::State_Enabled);
    const bool pressed = Has(option, QStyle::State_Sunken) || Has(option, QStyle::State_On);
    QColor fill = option.palette.color(QPalette::Button);
    if (!enabled) fill = option.palette.color(QPalette::Window);
    if (enabled && Has(option, QStyle::State_MouseOver)) fill = theme::HoverSurface();
    if (pressed) fill = theme::IsDark() ? theme::HoverSurface().lighter(115) : theme::HoverSurface().darker(108);
    if (button && (button->features & QStyleOptionButton::Flat) && !pressed && !Has(option, QStyle::State_MouseOver))
        return;
    DrawPlace(painter, option.rect, fill, enabled ? LineColor(option) : theme::HairLine());
}

void DrawToolButton(const QStyleOption& option, QPainter& painter) {
    const bool on = Has(option, QStyle::State_On);
    const bool hot = Has(option, QStyle::State_MouseOver) && Has(option, QStyle::State_Enabled);
    const bool focus = Has(option, QStyle::State_HasFocus) && Has(option, QStyle::State_KeyboardFocusChange);
    if (!on && !hot && !focus && !Has(option, QStyle::State_Sunken)) {
        if (!Has(option, QStyle::State_AutoRaise))
            DrawPlace(painter, option.rect, option.palette.color(QPalette::Button),
                      option.palette.color(QPalette::Mid));
        return;
    }
    QColor fill = theme::HoverSurface();
    if (on || Has(option, QStyle::State_Sunken)) fill = theme::IsDark() ? fill.lighter(115) : fill.darker(105);
    DrawPlace(painter, option.rect, fill, focus ? theme::Accent() : on ? theme::HairLine() : QColor());
}

/// A colour for the frame of an empty check box, strong enough to be seen on fields and on windows.
QColor BoxLine(const QStyleOption& option) {
    if (!Has(option, QStyle::State_Enabled)) return option.palette.color(QPalette::Mid);
    return Has(option, QStyle::State_MouseOver) ? theme::Accent() : theme::MutedText();
}

/// The box of a check or, when `round`, of one choice of several.
void DrawBox(const QStyleOption& option, QPainter& painter, bool round) {
    const bool enabled = Has(option, QStyle::State_Enabled);
    const bool on = Has(option, QStyle::State_On) || Has(option, QStyle::State_NoChange);
    const QColor ground = option.palette.color(enabled ? QPalette::Base : QPalette::Window);
    const QColor fill = !on ? ground : enabled ? theme::Accent() : option.palette.color(QPalette::Mid);
    const int side = qMin(option.rect.width(), option.rect.height());
    QRectF box(0, 0, side - 1, side - 1);
    box.moveCenter(QRectF(option.rect).center());
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(on ? fill : BoxLine(option), 1));
    painter.setBrush(fill);
    const qreal radius = round ? side / 2.0 : kRadius / 2;
    painter.drawRoundedRect(box, radius, radius);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ground);
    const QPen mark(ground, side / 7.0, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    if (on && round) {
        painter.drawEllipse(box.center(), side / 5.0, side / 5.0);
    } else if (Has(option, QStyle::State_NoChange)) {
        painter.setPen(mark);
        painter.drawLine(box.center() - QPointF(side / 4.0, 0), box.center() + QPointF(side / 4.0, 0));
    } else if (on) {
        painter.setPen(mark);
        const QPointF at(box.left(), box.top());
        painter.drawPolyline(QPolygonF({at + QPointF(side * 0.22, side * 0.48), at + QPointF(side * 0.41, side * 0.67),
                                        at + QPointF(side * 0.72, side * 0.29)}));
    }
    painter.restore();
}

/// The ring around what the keyboard acts on. Chosen rows of a list show it by their colour already.
void DrawFocus(const QStyleOption& option, QPainter& painter) {
    if (Has(option, QStyle::State_Selected) || !Has(option, QStyle::State_Enabled)) return;
    QColor line = theme::Accent();
    line.setAlphaF(0.6F);
    DrawPlace(painter, option.rect, Qt::transparent, line);
}

void DrawFrame(const QStyleOption& option, QPainter& painter) {
    painter.save();
    painter.setPen(LineColor(option));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(option.rect.adjusted(0, 0, -1, -1));
    painter.restore();
}

void DrawHead(const QStyleOption& option, QPainter& painter) {
    painter.fillRect(option.rect, Has(option, QStyle::State_MouseOver) && Has(option, QStyle::State_Enabled)
                                      ? theme::HoverSurface()
                                      : theme::SurfaceRaised());
    painter.save();
    painter.setPen(theme::HairLine());
    const QRect rect = option.rect.adjusted(0, 0, -1, -1);
    painter.drawLine(rect.bottomLeft(), rect.bottomRight());
    const QPoint corner = option.direction == Qt::RightToLeft ? rect.topLeft() : rect.topRight();
    painter.drawLine(corner + QPoint(0, 4), QPoint(corner.x(), rect.bottom() - 4));
    painter.restore();
}

void DrawChevron(QPainter& painter, const QRect& rect, const QColor& color, bool up = false) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const QPointF middle = QRectF(rect).center();
    const qreal down = up ? -1.75 : 1.75;
    QPainterPath path(middle + QPointF(-3.5, -down));
    path.lineTo(middle + QPointF(0, down));
    path.lineTo(middle + QPointF(3.5, -down));
    painter.drawPath(path);
    painter.restore();
}

/// The arrow of a tree's branch: to where its children stand while it is closed, down while it is open.
void DrawBranch(const QStyleOption& option, QPainter& painter) {
    if (!Has(option, QStyle::State_Children)) return;
    painter.save();
    painter.translate(QRectF(option.rect).center());
    if (!Has(option, QStyle::State_Open)) painter.rotate(option.direction == Qt::RightToLeft ? 90 : -90);
    const bool chosen = Has(option, QStyle::State_Selected);
    DrawChevron(painter, QRect(-4, -4, 8, 8),
                option.palette.color(chosen ? QPalette::HighlightedText : QPalette::Text));
    painter.restore();
}

/// Picture and text of a button, together in its middle, the picture where reading begins. From right to left the base
/// style puts the text at the button's edge, away from its picture.
void DrawButtonLabel(const QProxyStyle& style, const QStyleOptionButton& button, QPainter& painter,
                     const QWidget* widget) {
    const bool mirrored = button.direction == Qt::RightToLeft;
    const bool enabled = Has(button, QStyle::State_Enabled);
    QRect place = button.rect;
    if (button.features & QStyleOptionButton::HasMenu) {
        const int arrow = style.pixelMetric(QStyle::PM_MenuButtonIndicator, &button, widget);
        place.adjust(mirrored ? arrow : 0, 0, mirrored ? 0 : -arrow, 0);
    }
    const int text = button.fontMetrics.size(Qt::TextShowMnemonic, button.text).width();
    const int width = button.iconSize.width() + theme::kGrid / 2 + text;
    const int left = place.left() + (place.width() - width) / 2;
    const int iconLeft = mirrored ? left + text + theme::kGrid / 2 : left;
    const int textLeft = mirrored ? left : left + button.iconSize.width() + theme::kGrid / 2;
    const int iconTop = place.center().y() - button.iconSize.height() / 2;
    button.icon.paint(&painter, QRect(QPoint(iconLeft, iconTop), button.iconSize), Qt::AlignCenter,
                      enabled ? QIcon::Normal : QIcon::Disabled);
    int flags = Qt::AlignCenter | Qt::TextShowMnemonic | Qt::TextDontClip | Qt::TextSingleLine;
    if (!style.styleHint(QStyle::SH_UnderlineShortcut, &button, widget)) flags |= Qt::TextHideMnemonic;
    style.drawItemText(&painter, QRect(textLeft, place.top(), text, place.height()), flags, button.palette, enabled,
                       button.text, QPalette::ButtonText);
}

/// A tab is a text with the accent below it while it is chosen.
void DrawTab(const QStyleOption& option, QPainter& painter) {
    const auto* tab = qstyleoption_cast<const QStyleOptionTab*>(&option);
    if (!tab) return;
    const bool chosen = Has(option, QStyle::State_Selected);
    const bool hot = Has(option, QStyle::State_MouseOver) && Has(option, QStyle::State_Enabled);
    if (hot && !chosen) DrawPlace(painter, option.rect.adjusted(2, 2, -2, -4), theme::HoverSurface(), {});
    if (Has(option, QStyle::State_HasFocus))
        DrawPlace(painter, option.rect.adjusted(2, 2, -2, -4), Qt::transparent, theme::Accent());
    if (chosen)
        painter.fillRect(QRect(option.rect.left() + 4, option.rect.bottom() - 2, option.rect.width() - 8, 3),
                         theme::Accent());
}

void DrawMenuBarItem(const QProxyStyle& style, const QStyleOption& option, QPainter& painter, const QWidget* widget) {
    const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(&option);
    if (!item) return;
    painter.fillRect(option.rect, option.palette.window());
    if (Has(option, QStyle::State_Selected))
        DrawPlace(painter, option.rect.adjusted(0, 1, 0, -1), theme::HoverSurface(), {});
    int flags = Qt::AlignCenter | Qt::TextShowMnemonic | Qt::TextDontClip | Qt::TextSingleLine;
    if (!style.styleHint(QStyle::SH_UnderlineShortcut, &option, widget)) flags |= Qt::TextHideMnemonic;
    style.drawItemText(&painter, option.rect, flags, option.palette, Has(option, QStyle::State_Enabled), item->text,
                       QPalette::WindowText);
}

void DrawProgress(const QStyleOption& option, QPainter& painter) {
    const auto* bar = qstyleoption_cast<const QStyleOptionProgressBar*>(&option);
    if (!bar) return;
    const qreal part =
        bar->maximum > bar->minimum ? qreal(bar->progress - bar->minimum) / (bar->maximum - bar->minimum) : 1.0;
    QRect filled = option.rect;
    filled.setWidth(static_cast<int>(option.rect.width() * qBound(0.0, part, 1.0)));
    if (option.direction == Qt::RightToLeft) filled.moveRight(option.rect.right());
    if (filled.width() > 2) DrawPlace(painter, filled, theme::Accent(), {});
}

void DrawScrollBar(const QProxyStyle& style, const QStyleOptionSlider& option, QPainter& painter,
                   const QWidget* widget) {
    painter.fillRect(option.rect, option.palette.color(QPalette::Base));
    const QRect slider = style.subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider, widget);
    const bool hot = (option.activeSubControls & QStyle::SC_ScrollBarSlider) != 0;
    if (!Has(option, QStyle::State_Enabled) || option.maximum <= option.minimum) return;
    QColor color = theme::MutedText();
    color.setAlphaF(hot ? 0.75F : 0.4F);
    DrawPlace(painter, slider.adjusted(2, 2, -2, -2), color, {});
}

void DrawComboBox(const QProxyStyle& style, const QStyleOptionComboBox& option, QPainter& painter,
                  const QWidget* widget) {
    const bool enabled = Has(option, QStyle::State_Enabled);
    QColor fill = option.palette.color(option.editable ? QPalette::Base : QPalette::Button);
    if (!option.editable && enabled && Has(option, QStyle::State_MouseOver)) fill = theme::HoverSurface();
    if (!enabled) fill = option.palette.color(QPalette::Window);
    DrawPlace(painter, option.rect, fill, LineColor(option));
    const QRect arrow = style.subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxArrow, widget);
    DrawChevron(painter, arrow,
                option.palette.color(enabled ? QPalette::Normal : QPalette::Disabled, QPalette::ButtonText));
}

void DrawSpinBox(const QProxyStyle& style, const QStyleOptionSpinBox& option, QPainter& painter,
                 const QWidget* widget) {
    const bool enabled = Has(option, QStyle::State_Enabled);
    DrawPlace(painter, option.rect, option.palette.color(enabled ? QPalette::Base : QPalette::Window),
              LineColor(option));
    const auto arrow = [&](QStyle::SubControl part, QAbstractSpinBox::StepEnabledFlag step) {
        const QRect place = style.subControlRect(QStyle::CC_SpinBox, &option, part, widget);
        const bool can = enabled && option.stepEnabled.testFlag(step);
        if (can && option.activeSubControls.testFlag(part))
            DrawPlace(painter, place.adjusted(1, 1, -1, -1), theme::HoverSurface(), {});
        DrawChevron(painter, place,
                    option.palette.color(can ? QPalette::Normal : QPalette::Disabled, QPalette::ButtonText),
                    part == QStyle::SC_SpinBoxUp);
    };
    arrow(QStyle::SC_SpinBoxUp, QAbstractSpinBox::StepUpEnabled);
    arrow(QStyle::SC_SpinBoxDown, QAbstractSpinBox::StepDownEnabled);
}

/// The text of a cell as far as any column could show it: laying out a text of a million characters takes seconds for
/// each cell, and databases from elsewhere may hold such names.
QString ShortCellText(const QString& text) {
    constexpr qsizetype kLongest = 2000;
    return text.size() > kLongest ? text.left(kLongest) + QChar(0x2026) : text;
}

/// A text of the other direction among cells from right to left: its cut end has its dots where its reading ends, and
/// the parts of "1 043,5" stay in their order.
QString KeptInDirection(const QStyleOptionViewItem& item) {
    if (item.direction != Qt::RightToLeft || item.text.isEmpty() || item.text.isRightToLeft()) return item.text;
    const bool hasParts =
        std::any_of(item.text.cbegin(), item.text.cend(), [](QChar c) { return c.isLetter() || c.isSpace(); });
    return hasParts ? QChar(0x2066) + item.text : item.text; // left-to-right isolate
}

QStyleOptionViewItem CellToDraw(const QStyleOptionViewItem& item, const QWidget* widget) {
    QStyleOptionViewItem shown(item);
    shown.text = ShortCellText(shown.text);
    shown.text = KeptInDirection(shown);
    // Among pictures the whole cell is marked, not its text alone.
    if (const auto* list = qobject_cast<const QListView*>(widget))
        shown.showDecorationSelected |= list->viewMode() == QListView::IconMode;
    return shown;
}

QStyleOptionMenuItem MenuItemToDraw(const QStyleOptionMenuItem& item) {
    // The highlight of a menu entry is pale, so its picture keeps its colours.
    QStyleOptionMenuItem pale(item);
    // The base style draws an underlined letter separately, which would unjoin Arabic letters: no underline there.
    const QString keys = pale.text.section(QLatin1Char('\t'), 1);
    const AccessLetter letter(pale.text.section(QLatin1Char('\t'), 0, 0));
    if (letter.JoinsItsNeighbours())
        pale.text = keys.isEmpty() ? letter.plain : letter.plain + QLatin1Char('\t') + keys;
    pale.palette.setColor(QPalette::Highlight, theme::HoverSurface());
    pale.palette.setColor(QPalette::HighlightedText, item.palette.color(QPalette::Text));
    return pale;
}

} // namespace

FlatStyle::FlatStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

void FlatStyle::polish(QWidget* widget) {
    QProxyStyle::polish(widget);
    // A tool tip is a label too, and is polished before it gets its text.
    auto* label = qobject_cast<QLabel*>(widget);
    if (label && label->textFormat() == Qt::AutoText) label->setTextFormat(Qt::PlainText);
}

void FlatStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const {
    switch (element) {
    case PE_PanelButtonCommand:
        return DrawPushButton(*option, *painter);
    case PE_PanelButtonTool:
        return DrawToolButton(*option, *painter);
    case PE_PanelLineEdit:
        // The edit field of a combo box or a spin box has no frame of its own.
        if (const QWidget* parent = widget ? widget->parentWidget() : nullptr;
            qobject_cast<const QComboBox*>(parent) || qobject_cast<const QAbstractSpinBox*>(parent))
            return;
        return DrawPlace(*painter, option->rect,
                         option->palette.color(Has(*option, State_Enabled) ? QPalette::Base : QPalette::Window),
                         LineColor(*option));
    case PE_IndicatorBranch:
        return DrawBranch(*option, *painter);
    case PE_IndicatorCheckBox:
    case PE_IndicatorItemViewItemCheck:
        return DrawBox(*option, *painter, false);
    case PE_IndicatorRadioButton:
        return DrawBox(*option, *painter, true);
    case PE_FrameFocusRect:
        return DrawFocus(*option, *painter);
    case PE_PanelMenu:
        painter->fillRect(option->rect, option->palette.base());
        return DrawFrame(*option, *painter);
    case PE_Frame:
    case PE_FrameTabWidget:
        return DrawFrame(*option, *painter);
    case PE_FrameTabBarBase:
    case PE_FrameStatusBarItem:
    case PE_FrameDefaultButton:
    case PE_FrameButtonTool:
        return;
    default:
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void FlatStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                            const QWidget* widget) const {
    switch (element) {
    case CE_HeaderSection:
    case CE_HeaderEmptyArea:
        return DrawHead(*option, *painter);
    case CE_TabBarTabShape:
        return DrawTab(*option, *painter);
    case CE_PushButtonLabel:
        if (const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option); button) {
            QStyleOptionButton shown(*button);
            if (IsDefault(shown))
                shown.palette.setColor(QPalette::ButtonText, shown.palette.color(QPalette::HighlightedText));
            if (!shown.icon.isNull() && !shown.text.isEmpty()) return DrawButtonLabel(*this, shown, *painter, widget);
            return QProxyStyle::drawControl(element, &shown, painter, widget);
        }
        return QProxyStyle::drawControl(element, option, painter, widget);
    case CE_ItemViewItem:
        if (const auto* item = qstyleoption_cast<const QStyleOptionViewItem*>(option)) {
            const QStyleOptionViewItem shown = CellToDraw(*item, widget);
            return QProxyStyle::drawControl(element, &shown, painter, widget);
        }
        return QProxyStyle::drawControl(element, option, painter, widget);
    case CE_MenuBarItem:
        return DrawMenuBarItem(*this, *option, *painter, widget);
    case CE_MenuItem:
        if (const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option)) {
            if (item->menuItemType == QStyleOptionMenuItem::Separator && item->text.isEmpty()) {
                const int middle = item->rect.center().y();
                return painter->fillRect(
                    QRect(item->rect.left() + theme::kGrid, middle, item->rect.width() - 2 * theme::kGrid, 1),
                    option->palette.color(QPalette::Mid));
            }
            const QStyleOptionMenuItem shown = MenuItemToDraw(*item);
            return QProxyStyle::drawControl(element, &shown, painter, widget);
        }
        return QProxyStyle::drawControl(element, option, painter, widget);
    case CE_MenuBarEmptyArea:
        return painter->fillRect(option->rect, option->palette.window());
    case CE_HeaderLabel:
        if (const auto* head = qstyleoption_cast<const QStyleOptionHeader*>(option)) {
            // In line with the texts of the cells below it.
            QStyleOptionHeaderV2 inset;
            if (const auto* newer = qstyleoption_cast<const QStyleOptionHeaderV2*>(option))
                inset = *newer;
            else
                static_cast<QStyleOptionHeader&>(inset) = *head;
            inset.rect.adjust(theme::kGrid / 2, 0, -theme::kGrid / 2, 0);
            return QProxyStyle::drawControl(element, &inset, painter, widget);
        }
        return QProxyStyle::drawControl(element, option, painter, widget);
    case CE_ProgressBarGroove:
        return DrawPlace(*painter, option->rect, theme::SurfaceRaised(), {});
    case CE_ProgressBarContents:
        return DrawProgress(*option, *painter);
    case CE_Splitter:
        return;
    default:
        QProxyStyle::drawControl(element, option, painter, widget);
    }
}

void FlatStyle::drawItemText(QPainter* painter, const QRect& rect, int flags, const QPalette& palette, bool enabled,
                             const QString& text, QPalette::ColorRole role) const {
    const AccessLetter letter(text);
    if (!(flags & Qt::TextShowMnemonic) || !letter.JoinsItsNeighbours())
        return QProxyStyle::drawItemText(painter, rect, flags, palette, enabled, text, role);
    const int plain = flags & ~(Qt::TextShowMnemonic | Qt::TextHideMnemonic);
    QProxyStyle::drawItemText(painter, rect, plain, palette, enabled, letter.plain, role);
    const QRect place = itemTextRect(painter->fontMetrics(), rect, plain, enabled, letter.plain);
    if ((flags & Qt::TextHideMnemonic) || place.height() >= 2 * painter->fontMetrics().height()) return;
    painter->save();
    if (role != QPalette::NoRole) painter->setPen(palette.color(role));
    letter.Underline(*painter, place);
    painter->restore();
}

void FlatStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                                   const QWidget* widget) const {
    if (control == CC_ScrollBar)
        if (const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option))
            return DrawScrollBar(*this, *bar, *painter, widget);
    if (control == CC_ComboBox)
        if (const auto* box = qstyleoption_cast<const QStyleOptionComboBox*>(option); box && box->frame)
            return DrawComboBox(*this, *box, *painter, widget);
    if (control == CC_SpinBox)
        if (const auto* box = qstyleoption_cast<const QStyleOptionSpinBox*>(option))
            return DrawSpinBox(*this, *box, *painter, widget);
    QProxyStyle::drawComplexControl(control, option, painter, widget);
}

QRect FlatStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                                const QWidget* widget) const {
    QRect rect = QProxyStyle::subControlRect(control, option, part, widget);
    // The text of a field that can be typed into stands as far from the edge as in other fields.
    if (control == CC_ComboBox && part == SC_ComboBoxEditField)
        rect.adjust(option->direction == Qt::LeftToRight ? theme::kGrid / 2 : 0, 0,
                    option->direction == Qt::RightToLeft ? -theme::kGrid / 2 : 0, 0);
    return rect;
}

QRect FlatStyle::subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const {
    QRect rect = QProxyStyle::subElementRect(element, option, widget);
    const auto* field = qstyleoption_cast<const QStyleOptionFrame*>(option);
    // As far from the frame as the text of a button is.
    if (element == SE_LineEditContents && field && field->lineWidth > 0)
        rect.adjust(theme::kGrid / 2, 0, -theme::kGrid / 2, 0);
    return rect;
}

QIcon FlatStyle::standardIcon(StandardPixmap picture, const QStyleOption* option, const QWidget* widget) const {
    if (picture == SP_LineEditClearButton)
        if (const QIcon clear = theme::Icon(QStringLiteral("clear.png")); !clear.isNull()) return clear;
    return QProxyStyle::standardIcon(picture, option, widget);
}

QSize FlatStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                                  const QWidget* widget) const {
    if (const auto* item = qstyleoption_cast<const QStyleOptionViewItem*>(option); type == CT_ItemViewItem && item) {
        QStyleOptionViewItem cell(*item);
        cell.text = ShortCellText(cell.text);
        return QProxyStyle::sizeFromContents(type, &cell, contents, widget);
    }
    QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
    // Room beside the text, and beside a picture.
    if (type == CT_PushButton && button)
        size.rwidth() += button->icon.isNull() || button->text.isEmpty() ? theme::kGrid : theme::kGrid * 2;
    return size;
}

int FlatStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    switch (metric) {
    case PM_SplitterWidth:
        return theme::kGrid;
    case PM_SmallIconSize:
    case PM_ButtonIconSize:
    case PM_ListViewIconSize:
        return theme::kIconSize;
    case PM_FocusFrameHMargin: // beside the texts of cells
        return theme::kGrid / 2;
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight:
        return 2 * theme::kGrid;
    case PM_MenuBarPanelWidth:
    case PM_TabBarBaseHeight:
    case PM_TabBarBaseOverlap:
    case PM_TabBarTabShiftVertical:
    case PM_TabBarTabShiftHorizontal:
        return 0;
    case PM_ButtonShiftHorizontal:
    case PM_ButtonShiftVertical:
        return 0;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int FlatStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* returned) const {
    if (hint == SH_DialogButtonBox_ButtonsHaveIcons || hint == SH_EtchDisabledText) return 0;
    // A click beside the slider goes to the next page, as on every platform that this system ran on.
    if (hint == SH_ScrollBar_LeftClickAbsolutePosition) return 0;
    return QProxyStyle::styleHint(hint, option, widget, returned);
}

} // namespace tessaro
