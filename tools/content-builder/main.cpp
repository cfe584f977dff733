// Builds the application folder from the sources in content/.
#include "Installation.h"

#include <QGuiApplication>

#include <exception>
#include <iostream>

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: content-builder CONTENT TARGET\n";
        return 2;
    }
    // Fonts and pictures need an application, but never a display.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    try {
        for (const std::string& line : tessaro::content::BuildInstallation(argv[1], argv[2]))
            std::cerr << "content-builder: " << line << "\n";
    } catch (const std::exception& error) {
        std::cerr << "content-builder: " << error.what() << "\n";
        return 1;
    }
    return 0;
}
