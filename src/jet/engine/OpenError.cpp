#include "jet/engine/OpenError.h"

#include <string_view>
#include <utility>

namespace jet {

namespace {

/// %1 and %2 stand for the names.
std::string_view Sentence(OpenFailure why) {
    switch (why) {
    case OpenFailure::NoSuchFile:
        return "there is no such file.";
    case OpenFailure::NoPlainFile:
        return "it is no file.";
    case OpenFailure::NoDatabase:
        return "it is no database.";
    case OpenFailure::GenuineJet:
        return "it is a genuine Jet database, which has to be imported first.";
    case OpenFailure::MayNotBeRead:
        return "it may not be read.";
    case OpenFailure::Damaged:
        return "it is damaged.";
    case OpenFailure::InUse:
        return "another program writes to it.";
    case OpenFailure::TooLarge:
        return "to read it takes too much memory.";
    case OpenFailure::ComputedField:
        return "its table '%1' has a computed field, which is not trusted.";
    case OpenFailure::MakesTexts:
        return "its table '%1' has an expression that makes texts, which is not trusted.";
    case OpenFailure::SearchesTexts:
        return "its table '%1' has an expression that searches texts, which is not trusted.";
    case OpenFailure::CallsFunction:
        return "its table '%1' has a call of the function '%2', which is not trusted.";
    case OpenFailure::NoPlainFileBeside:
        return "'%1' beside it is no plain file.";
    case OpenFailure::JournalNamesAnother:
        return "the journal '%1' beside it names a further file. Without that journal the database opens as it is.";
    case OpenFailure::Other:
        break;
    }
    return "the reason is not known.";
}

std::string Filled(std::string_view sentence, const std::vector<std::string>& names) {
    std::string filled;
    for (std::size_t at = 0; at < sentence.size(); ++at) {
        const std::size_t place = sentence[at] == '%' && at + 1 < sentence.size()
                                      ? static_cast<std::size_t>(sentence[at + 1] - '1')
                                      : names.size();
        if (place < names.size()) {
            filled += names[place];
            ++at;
        } else {
            filled += sentence[at];
        }
    }
    return filled;
}

std::string WithPath(const std::string& path, const std::string& sentence) {
    return "'" + path + "' can't be opened: " + sentence;
}

} // namespace

OpenError::OpenError(const std::string& path, OpenFailure why, std::vector<std::string> names)
    : Error(why == OpenFailure::InUse ? ErrorNumber::Busy : ErrorNumber::NotADatabase,
            WithPath(path, Filled(Sentence(why), names))),
      why_(why), names_(std::move(names)) {}

OpenError::OpenError(const std::string& path, const std::string& sentence)
    : Error(ErrorNumber::NotADatabase, WithPath(path, sentence)), why_(OpenFailure::Other) {}

} // namespace jet
