#include "platform/CommandLine.h"
#include "shell/frmMain.h"

#include <QApplication>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    tessaro::frmMain frame;
    return frame.MDIForm_Load(tessaro::CommandLine()) ? QApplication::exec() : 0;
}
