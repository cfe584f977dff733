#include "controls/Application.h"
#include "platform/CommandLine.h"
#include "platform/Rights.h"
#include "shell/frmMain.h"

int main(int argc, char** argv) {
    tessaro::KeepFilesPrivate();
    // The spreadsheet can be shown inside our windows on X11 only, which Wayland desktops offer too.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && !qEnvironmentVariableIsEmpty("DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "xcb");
    tessaro::Application application(argc, argv);
    tessaro::frmMain frame;
    frame.FitToScreen();
    return frame.MDIForm_Load(tessaro::CommandLine()) ? QApplication::exec() : 0;
}
