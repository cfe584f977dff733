#include "controls/Theme.h"

#include "session/Settings.h"

#include <QApplication>
#include <QHash>
#include <QPalette>

namespace tessaro::theme {

namespace {

bool dark = false;

/// The accent colour of the settings, lighter or darker as the palette needs it to be readable.
QColor Readable(const QColor& color, bool onDark) {
    const float lightness = color.lightnessF();
    if (onDark && lightness < 0.6F) return QColor::fromHslF(color.hueF(), color.saturationF() * 0.7F, 0.66F);
    if (!onDark && lightness > 0.42F) return QColor::fromHslF(color.hueF(), color.saturationF(), 0.36F);
    return color;
}

QColor SettingOr(const char* key, const QColor& otherwise) {
    const QColor color = SettingColor(QLatin1String(key));
    return color.isValid() ? color : otherwise;
}

bool DesktopIsDark(const QPalette& desktop) {
    const QString wished = qEnvironmentVariable("TESSARO_THEME").toLower();
    if (wished == QLatin1String("dark")) return true;
    if (wished == QLatin1String("light")) return false;
    return desktop.color(QPalette::Window).lightness() < 128;
}

struct Shade {
    QPalette::ColorRole role;
    const char* light;
    const char* dark;
};

constexpr Shade kShades[] = {
    {QPalette::WindowText, "#1d2833", "#e4e9ed"},
    {QPalette::Base, "#ffffff", "#1d2429"},
    {QPalette::AlternateBase, "#f5f8fa", "#232b31"},
    {QPalette::Text, "#1d2833", "#e4e9ed"},
    {QPalette::Button, "#fbfcfd", "#333d45"},
    {QPalette::ButtonText, "#1d2833", "#e4e9ed"},
    {QPalette::ToolTipBase, "#1d2833", "#e4e9ed"},
    {QPalette::ToolTipText, "#ffffff", "#1d2429"},
    {QPalette::PlaceholderText, "#66737f", "#8f9ba5"},
    {QPalette::Light, "#ffffff", "#3c474f"},
    {QPalette::Midlight, "#eef2f5", "#343e46"},
    {QPalette::Mid, "#c9d2da", "#46525b"},
    {QPalette::Dark, "#aab6c0", "#161b1f"},
    {QPalette::Shadow, "#7d8a96", "#0e1214"},
    {QPalette::BrightText, "#ffffff", "#ffffff"},
};

} // namespace

QPalette ProductPalette() {
    QPalette palette;
    palette.setColor(QPalette::Window,
                     dark ? QColor(0x27, 0x2f, 0x35) : SettingOr("APP BG COLOR", QColor(0xf4, 0xf6, 0xf8)));
    for (const Shade& shade : kShades)
        palette.setColor(shade.role, QColor(QLatin1String(dark ? shade.dark : shade.light)));
    const QColor accent = SettingOr("APP SEL BG COLOR", QColor(23, 105, 128));
    palette.setColor(QPalette::Highlight, dark ? QColor::fromHslF(accent.hueF(), accent.saturationF(), 0.34F) : accent);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, Accent());
    palette.setColor(QPalette::LinkVisited, Accent());
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor(QLatin1String(dark ? "#75828c" : "#98a4ae")));
    palette.setColor(QPalette::Disabled, QPalette::Highlight, palette.color(QPalette::Mid));
    palette.setColor(QPalette::Inactive, QPalette::Highlight, palette.color(QPalette::Active, QPalette::Highlight));
    return palette;
}

void ChooseShades() {
    static const bool desktopIsDark = DesktopIsDark(QApplication::palette());
    dark = qEnvironmentVariableIsSet("TESSARO_THEME") ? DesktopIsDark(QApplication::palette()) : desktopIsDark;
}

bool IsDark() {
    return dark;
}

QColor Accent() {
    return Readable(SettingOr("APP SEL BG COLOR", QColor(23, 105, 128)), dark);
}

QColor TextColor(const QColor& wished) {
    constexpr int kReadableLightness = 160;
    if (!dark || !wished.isValid() || wished.lightness() >= kReadableLightness) return wished;
    return QColor::fromHsl(wished.hslHue(), wished.hslSaturation(), kReadableLightness);
}

QColor MutedText() {
    return QColor(QLatin1String(dark ? "#9aa7b1" : "#5c6a76"));
}

QColor HairLine() {
    return QColor(QLatin1String(dark ? "#3d4850" : "#d5dde3"));
}

QColor SurfaceRaised() {
    return QColor(QLatin1String(dark ? "#2f3940" : "#e9eef2"));
}

QColor HoverSurface() {
    return dark ? QColor(0x37, 0x46, 0x4f) : SettingOr("APP MOUSE MOVE BG COLOR", QColor(223, 237, 241));
}

} // namespace tessaro::theme
