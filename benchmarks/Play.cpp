#include "Play.h"

#include <QFile>
#include <QList>
#include <QProcess>
#include <QProcessEnvironment>

#include <cstdio>

namespace tessaro::bench {

std::map<QByteArray, double> Play(const QString& self, const QStringList& arguments, const QString& home) {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("TESSARO_HOME"), home);
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(self, arguments);
    constexpr int kLongest = 600'000; // milliseconds
    if (!process.waitForFinished(kLongest) || process.exitCode() != 0) {
        std::fprintf(stderr, "bench: %s ended with status %d\n", arguments.first().toLocal8Bit().constData(),
                     process.exitCode());
        return {};
    }
    std::map<QByteArray, double> figures;
    for (const QByteArray& line : process.readAllStandardOutput().split('\n')) {
        const QList<QByteArray> words = line.split(' ');
        if (words.size() == 2) figures[words[0]] = words[1].toDouble();
    }
    return figures;
}

double FigureOr(const std::map<QByteArray, double>& figures, const char* name, double otherwise) {
    const auto found = figures.find(name);
    return found == figures.end() ? otherwise : found->second;
}

double MemoryMegabytes(const char* what) {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly)) return 0;
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith(what))
            return line.mid(static_cast<qsizetype>(qstrlen(what))).trimmed().split(' ').front().toDouble() / 1024;
    }
    return 0;
}

} // namespace tessaro::bench
