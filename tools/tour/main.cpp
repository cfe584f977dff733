#include "Tour.h"
#include "controls/Application.h"
#include "shell/frmMain.h"

#include <QCommandLineParser>
#include <QTemporaryDir>
#include <QTextStream>

/// tour [--language=NAME] [--dark] APPLICATION DIR: walks the main job on the application folder, with a writable tree
/// of its own, and leaves pictures and summary.txt in DIR. NAME is a language's in the menu, such as "French". Exit
/// status 0 only when each station showed what it should.
int main(int argc, char** argv) {
    tessaro::Application application(argc, argv);
    QCommandLineParser options;
    options.addOptions({{QStringLiteral("language"), QStringLiteral("Language to walk in"), QStringLiteral("name")},
                        {QStringLiteral("dark"), QStringLiteral("Dark colours")}});
    const bool parsed = options.parse(QApplication::arguments());
    const QStringList arguments = options.positionalArguments();
    if (!parsed || arguments.size() != 2) {
        QTextStream(stderr) << "usage: tour [--language=NAME] [--dark] APPLICATION DIR\n";
        return 2;
    }
    if (options.isSet(QStringLiteral("dark"))) qputenv("TESSARO_THEME", "dark");
    const QDir folder(arguments.at(1));
    const QTemporaryDir home;
    if (!QDir().mkpath(folder.path()) || !home.isValid()) {
        QTextStream(stderr) << "tour: can't write to " << folder.path() << '\n';
        return 2;
    }
    qputenv("TESSARO_HOME", home.path().toUtf8());
    // The switch's value ends at the next "/".
    QString path = QDir(arguments.at(0)).absolutePath();
    const QString commandLine = QStringLiteral("tessaro /a") + path.replace(QLatin1Char('/'), QLatin1Char('\\'));
    tessaro::frmMain frame;
    tessaro::AgreeToQuestions();
    return tessaro::Tour(frame, folder, options.value(QStringLiteral("language"))).Walk(commandLine) ? 0 : 1;
}
