#include "shell/SystemInfo.h"

#include "jet/engine/Version.h"
#include "office/SpreadsheetApplication.h"
#include "platform/Paths.h"
#include "session/ErrorSink.h"
#include "session/Session.h"
#include "session/Settings.h"
#include "session/Strings.h"

#include <QGuiApplication>
#include <QLocale>
#include <QScreen>
#include <QSysInfo>
#include <QThread>

#include <unistd.h>

namespace tessaro {

namespace {

QString Memory() {
    const qint64 pages = sysconf(_SC_PHYS_PAGES);
    const qint64 size = sysconf(_SC_PAGE_SIZE);
    return pages > 0 && size > 0 ? LocaleOfLanguage().formattedDataSize(pages * size) : QString();
}

QString Screens() {
    QStringList sizes;
    const auto screens = QGuiApplication::screens();
    for (const QScreen* screen : screens)
        sizes << QStringLiteral("%1 x %2 (%3 %)")
                     .arg(screen->size().width())
                     .arg(screen->size().height())
                     .arg(qRound(screen->devicePixelRatio() * 100));
    return sizes.join(QStringLiteral(", "));
}

} // namespace

QList<std::pair<QString, QString>> SystemInfo() {
    const QString none = GetText(QStringLiteral("TS_NotInstalled"));
    const QString office =
        office::SpreadsheetApplication::IsInstalled() ? office::SpreadsheetApplication::Version() : none;
    return {
        {Setting(QStringLiteral("PRODUCT NAME")), Setting(QStringLiteral("PRODUCT VERSION"))},
        {GetText(QStringLiteral("TS_InfoSystem")),
         QStringLiteral("%1, %2 %3")
             .arg(QSysInfo::prettyProductName(), QSysInfo::kernelType(), QSysInfo::kernelVersion())},
        {GetText(QStringLiteral("TS_InfoProcessor")),
         QStringLiteral("%1 x %2").arg(QThread::idealThreadCount()).arg(QSysInfo::currentCpuArchitecture())},
        {GetText(QStringLiteral("TS_InfoMemory")), Memory()},
        {GetText(QStringLiteral("TS_InfoScreen")),
         QStringLiteral("%1, %2").arg(Screens(), QGuiApplication::platformName())},
        {QStringLiteral("Qt"), QString::fromLatin1(qVersion())},
        {QStringLiteral("SQLite"), QString::fromStdString(jet::EngineVersion())},
        {QStringLiteral("LibreOffice"), office},
        {GetText(QStringLiteral("TS_InfoProgramFolder")), FindPath(AppPath)},
        {GetText(QStringLiteral("TS_InfoUserFolder")), CacheFolder},
        {GetText(QStringLiteral("TS_InfoLog")), LogFile()},
    };
}

QString SystemInfoText() {
    QString text;
    for (const auto& [name, value] : SystemInfo())
        text += name + QStringLiteral(": ") + value + QLatin1Char('\n');
    return text;
}

} // namespace tessaro
