#include "Walker.h"
#include "controls/Application.h"
#include "controls/FileDialogs.h"
#include "session/Messages.h"
#include "shell/frmMain.h"

#include <QDir>
#include <QTextStream>

namespace {

constexpr const char* kUsage = "usage: walker APPLICATION FOLDER open FILE...\n"
                               "       walker APPLICATION FOLDER look FILE...\n"
                               "       walker APPLICATION FOLDER monkey SEED SECONDS [FILE]\n";

/// Nobody is there to answer: questions are agreed to, file dialogs are left.
void AnswerQuestions() {
    tessaro::SetMessageAnswerer([](const tessaro::Message& message) {
        QTextStream(stdout) << "message " << message.key << ' ' << message.text.left(200).simplified() << '\n';
        const bool question =
            message.type == tessaro::MessageType::YesNo || message.type == tessaro::MessageType::YesNoCancel;
        return question ? tessaro::MessageCode::Yes : tessaro::CodeOfClosing(message.type);
    });
    tessaro::SetFileAnswerer([](const tessaro::FileQuestion&) { return QString(); });
}

void Do(tessaro::Walker& walker, const QStringList& arguments) {
    const QString& task = arguments.at(3);
    if (task == QLatin1String("monkey")) {
        if (arguments.size() > 6) walker.Open(arguments.at(6));
        return walker.Monkey(arguments.at(4).toUInt(), arguments.at(5).toInt());
    }
    for (const QString& file : arguments.mid(4)) {
        if (!walker.Open(file)) continue;
        walker.Funnel();
        if (task == QLatin1String("look")) walker.LookAtAll(arguments.at(2));
    }
}

} // namespace

/// Opens files, looks at all that they show, or presses at random, on a program with the home that TESSARO_HOME names.
/// FOLDER takes the exports.
int main(int argc, char** argv) {
    tessaro::Application application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() < 5) {
        QTextStream(stderr) << kUsage;
        return 2;
    }
    AnswerQuestions();
    tessaro::frmMain frame;
    tessaro::Walker walker(frame);
    if (!walker.Start(QDir(arguments.at(1)).absolutePath())) return 1;
    Do(walker, arguments);
    walker.Close();
    return 0;
}
