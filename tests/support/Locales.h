#pragma once

#include <QDir>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>

namespace tessaro::test {

/// An environment in which everything runs in a locale ("de_DE"), or just what the variable stands for. The locale is
/// compiled into `folder` if it isn't there, as the machine needn't have it. Empty when it can't be made.
inline QProcessEnvironment EnvironmentOf(const QString& locale, const QString& folder,
                                         const QString& variable = QStringLiteral("LC_ALL")) {
    const QString name = locale + QStringLiteral(".UTF-8");
    if (!QDir(folder + QLatin1Char('/') + name).exists()) {
        QProcess compiler;
        compiler.start(QStringLiteral("localedef"),
                       {QStringLiteral("--no-archive"), QStringLiteral("-i"), locale, QStringLiteral("-f"),
                        QStringLiteral("UTF-8"), folder + QLatin1Char('/') + name});
        if (!compiler.waitForFinished(60000) || compiler.exitCode() != 0) return QProcessEnvironment();
    }
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LOCPATH"), folder);
    environment.remove(QStringLiteral("LC_ALL"));
    environment.insert(variable, name);
    return environment;
}

} // namespace tessaro::test
