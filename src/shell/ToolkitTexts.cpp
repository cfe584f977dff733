#include "shell/ToolkitTexts.h"

#include "session/ErrorSink.h"
#include "session/Session.h"
#include "session/Strings.h"

#include <QCoreApplication>
#include <QLibraryInfo>

namespace tessaro {

void ToolkitTexts::Load() {
    QCoreApplication::removeTranslator(&translator_);
    const QLocale locale = LocaleOfLanguage();
    if (locale.language() == QLocale::English || locale.language() == QLocale::C) return;
    if (translator_.load(locale, QStringLiteral("qtbase"), QStringLiteral("_"),
                         QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(&translator_);
    else
        LogNote(QStringLiteral("the toolkit has no texts in the language \"%1\"").arg(Language));
}

} // namespace tessaro
