#include "controls/FlatStyle.h"

#include "controls/Theme.h"

#include <QComboBox>
#include <QPainter>
#include <QPainterPath>
#include <QStyleFactory>
#include <QStyleOption>

namespace tessaro {

namespace {

constexpr qreal Radius = 4;

bool Has(const QStyleOption& option, QStyle::StateFlag flag) {
    return (option.state & flag) != 0;
}

/// A rounded, filled place with a hairline around it, on whole pixels.
void DrawPlace(QPainter& painter, const QRect& rect, const QColor& fill, const QColor& line) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(line.isValid() ? QPen(line, 1) : QPen(Qt::NoPen));
    painter.setBrush(fill);
    painter.drawRoundedRect(QRectF(rect).adjusted(0.5, 0.5, -0.5, -0.5), Radius, Radius);
    painter.restore();
}

QColor LineColor(const QStyleOption& option) {
    const bool focus = Has(option, QStyle::State_HasFocus) && Has(option, QStyle::State_Enabled);
    return focus ? theme::Accent() : option.palette.color(QPalette::Mid);
}

void DrawPushButton(const QStyleOption& option, QPainter& painter) {
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

void DrawChevron(QPainter& painter, const QRect& rect, const QColor& color) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const QPointF middle = QRectF(rect).center();
    QPainterPath path(middle + QPointF(-3.5, -1.75));
    path.lineTo(middle + QPointF(0, 1.75));
    path.lineTo(middle + QPointF(3.5, -1.75));
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
    const int width = button.iconSize.width() + theme::Grid / 2 + text;
    const int left = place.left() + (place.width() - width) / 2;
    const int iconLeft = mirrored ? left + text + theme::Grid / 2 : left;
    const int textLeft = mirrored ? left : left + button.iconSize.width() + theme::Grid / 2;
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

} // namespace

FlatStyle::FlatStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

void FlatStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const {
    switch (element) {
    case PE_PanelButtonCommand:
        return DrawPushButton(*option, *painter);
    case PE_PanelButtonTool:
        return DrawToolButton(*option, *painter);
    case PE_PanelLineEdit:
        // The edit field of a combo box has no frame of its own.
        if (qobject_cast<const QComboBox*>(widget ? widget->parentWidget() : nullptr)) return;
        return DrawPlace(*painter, option->rect,
                         option->palette.color(Has(*option, State_Enabled) ? QPalette::Base : QPalette::Window),
                         LineColor(*option));
    case PE_IndicatorBranch:
        return DrawBranch(*option, *painter);
    case PE_Frame:
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
        if (const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
            button && !button->icon.isNull() && !button->text.isEmpty())
            return DrawButtonLabel(*this, *button, *painter, widget);
        return QProxyStyle::drawControl(element, option, painter, widget);
    case CE_MenuBarItem:
        return DrawMenuBarItem(*this, *option, *painter, widget);
    case CE_MenuItem:
        if (const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option)) {
            // On a pale ground the pictures keep their colours.
            QStyleOptionMenuItem pale(*item);
            pale.palette.setColor(QPalette::Highlight, theme::HoverSurface());
            pale.palette.setColor(QPalette::HighlightedText, option->palette.color(QPalette::Text));
            return QProxyStyle::drawControl(element, &pale, painter, widget);
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
            inset.rect.adjust(theme::Grid / 4, 0, -theme::Grid / 4, 0);
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

void FlatStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                                   const QWidget* widget) const {
    if (control == CC_ScrollBar)
        if (const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option))
            return DrawScrollBar(*this, *bar, *painter, widget);
    if (control == CC_ComboBox)
        if (const auto* box = qstyleoption_cast<const QStyleOptionComboBox*>(option); box && box->frame)
            return DrawComboBox(*this, *box, *painter, widget);
    QProxyStyle::drawComplexControl(control, option, painter, widget);
}

QRect FlatStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                                const QWidget* widget) const {
    QRect rect = QProxyStyle::subControlRect(control, option, part, widget);
    // The text of a field that can be typed into stands as far from the edge as in other fields.
    if (control == CC_ComboBox && part == SC_ComboBoxEditField)
        rect.adjust(option->direction == Qt::LeftToRight ? theme::Grid / 2 : 0, 0,
                    option->direction == Qt::RightToLeft ? -theme::Grid / 2 : 0, 0);
    return rect;
}

QSize FlatStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                                  const QWidget* widget) const {
    QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
    // Air beside a picture and its text.
    if (type == CT_PushButton && button && !button->icon.isNull()) size.rwidth() += theme::Grid;
    return size;
}

int FlatStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    switch (metric) {
    case PM_SplitterWidth:
        return theme::Grid;
    case PM_SmallIconSize:
    case PM_ButtonIconSize:
    case PM_ListViewIconSize:
        return theme::IconSize;
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
    if (hint == SH_DialogButtonBox_ButtonsHaveIcons) return 0;
    // A click beside the slider goes to the next page, as on every platform that this system ran on.
    if (hint == SH_ScrollBar_LeftClickAbsolutePosition) return 0;
    return QProxyStyle::styleHint(hint, option, widget, returned);
}

} // namespace tessaro
