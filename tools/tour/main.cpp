#include "Tour.h"
#include "controls/Application.h"
#include "shell/frmMain.h"

#include <QTemporaryDir>
#include <QTextStream>

/// tour APPLICATION DIR: walks the main job on the application folder, with a writable tree of its own, and leaves
/// pictures and summary.txt in DIR. Exit status 0 only when each station showed what it should.
int main(int argc, char** argv) {
    tessaro::Application application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() != 3) {
        QTextStream(stderr) << "usage: tour APPLICATION DIR\n";
        return 2;
    }
    const QDir folder(arguments.at(2));
    const QTemporaryDir home;
    if (!QDir().mkpath(folder.path()) || !home.isValid()) {
        QTextStream(stderr) << "tour: can't write to " << folder.path() << '\n';
        return 2;
    }
    qputenv("TESSARO_HOME", home.path().toUtf8());
    // The switch's value ends at the next "/".
    QString path = QDir(arguments.at(1)).absolutePath();
    const QString commandLine = QStringLiteral("tessaro /a") + path.replace(QLatin1Char('/'), QLatin1Char('\\'));
    tessaro::frmMain frame;
    tessaro::AgreeToQuestions();
    return tessaro::Tour(frame, folder).Walk(commandLine) ? 0 : 1;
}
