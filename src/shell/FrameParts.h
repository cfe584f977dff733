#pragma once

class QMainWindow;
class QStackedWidget;

namespace tessaro {

class AddressBar;
class MainMenu;
class StageBanner;
class StandardToolBar;
class StatusBar;

/// The widgets of the main window, for the classes that work on them. The window owns them all.
struct FrameParts {
    QMainWindow& window;
    MainMenu& menu;
    StandardToolBar& toolBar;
    AddressBar& address;
    StageBanner& banner;
    StatusBar& status;
    QStackedWidget& pages;
};

} // namespace tessaro
