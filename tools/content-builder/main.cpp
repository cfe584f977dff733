// Builds the application folder from the sources in content/, and for the tests a scrambled map.
#include "Installation.h"
#include "Maps.h"

#include <QGuiApplication>

#include <exception>
#include <filesystem>
#include <iostream>

int main(int argc, char** argv) {
    if (argc != 3 && argc != 4) {
        std::cerr << "usage: content-builder CONTENT TARGET [FOLDER OF THE SCRAMBLED MAP]\n";
        return 2;
    }
    // Fonts and pictures need an application, but never a display.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    try {
        for (const std::string& line : tessaro::content::BuildInstallation(argv[1], argv[2]))
            std::cerr << "content-builder: " << line << "\n";
        if (argc == 4) tessaro::content::BuildScrambledMap(std::filesystem::path(argv[1]) / "data", argv[3]);
    } catch (const std::exception& error) {
        std::cerr << "content-builder: " << error.what() << "\n";
        return 1;
    }
    return 0;
}
