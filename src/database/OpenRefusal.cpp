#include "database/OpenRefusal.h"

#include "platform/Paths.h"
#include "session/Log.h"
#include "session/Messages.h"

namespace tessaro {

namespace {

/// The key of the text for a refused database; null for what is no database.
const char* KeyOf(jet::OpenFailure why) {
    switch (why) {
    case jet::OpenFailure::MayNotBeRead:
        return "TS_OpenMayNotBeRead";
    case jet::OpenFailure::Damaged:
        return "TS_OpenDamaged";
    case jet::OpenFailure::InUse:
        return "TS_OpenInUse";
    case jet::OpenFailure::TooLarge:
        return "TS_OpenTooLarge";
    case jet::OpenFailure::ComputedField:
        return "TS_OpenComputedField";
    case jet::OpenFailure::MakesTexts:
    case jet::OpenFailure::SearchesTexts:
        return "TS_OpenTextExpression";
    case jet::OpenFailure::CallsFunction:
        return "TS_OpenCallsFunction";
    case jet::OpenFailure::NoPlainFileBeside:
        return "TS_OpenNoPlainFileBeside";
    case jet::OpenFailure::JournalNamesAnother:
        return "TS_OpenJournalNamesAnother";
    case jet::OpenFailure::Other:
        return "TS_OpenOther";
    case jet::OpenFailure::NoSuchFile:
    case jet::OpenFailure::NoPlainFile:
    case jet::OpenFailure::NoDatabase:
    case jet::OpenFailure::GenuineJet:
        break;
    }
    return nullptr;
}

QStringList NamesOf(const jet::OpenError& error) {
    if (error.why() == jet::OpenFailure::Other) return {FileNameOf(LogFile())};
    QStringList names;
    for (const std::string& name : error.names())
        names << QString::fromStdString(name);
    return names;
}

} // namespace

QString ReasonInWords(const jet::OpenError& error) {
    const char* const key = KeyOf(error.why());
    if (key == nullptr) return FilledText(QStringLiteral("TS_NotADatabase"), {});
    return FilledText(QStringLiteral("TS_DatabaseRefused"), {FilledText(QLatin1String(key), NamesOf(error))});
}

} // namespace tessaro
