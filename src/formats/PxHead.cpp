#include "formats/PxHead.h"

#include "formats/Encodings.h"
#include "formats/ReadError.h"
#include "formats/TableReader.h"

#include <algorithm>

namespace tessaro {

namespace {

constexpr std::size_t kMostPxVariables = 60;
constexpr std::size_t kMostPxTexts = 2'000'000; // of the whole head

bool IsBlankSign(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

/// KEYWORD[language]("variable","value")=texts;
struct Statement {
    std::string keyword;
    bool otherLanguage = false;
    std::string variable;             ///< the first in brackets
    std::vector<std::string> subject; ///< all that stand there
    std::vector<std::string> texts;
};

class HeadReader final {
  public:
    HeadReader(SignReader& signs, const QString& path) : signs_(signs), path_(path) {}

    PxHead Read() {
        Statement statement;
        while (ReadStart(statement)) {
            ReadTexts(statement);
            if (!statement.otherLanguage) Take(statement);
        }
        Check();
        return std::move(head_);
    }

  private:
    [[noreturn]] void Refuse() const {
        throw ReadError(QStringLiteral("TS_ReadPx"), {path_, QString::number(signs_.Line())});
    }

    /// Reads up to "="; false when the data begin there.
    bool ReadStart(Statement& statement) {
        statement = {};
        signs_.SkipBlanks();
        while (signs_.Peek() != '=') {
            const char sign = signs_.Take();
            if (sign == '\0') Refuse();
            if (sign == '[') {
                statement.otherLanguage = true;
                while (signs_.Peek() != ']' && signs_.Peek() != '\0')
                    signs_.Take();
            } else if (sign == '(') {
                ReadSubject(statement);
            } else if (sign != ']' && !IsBlankSign(sign)) {
                statement.keyword += sign;
                if (statement.keyword.size() > 40) Refuse();
            }
        }
        signs_.Take();
        return statement.keyword != "DATA";
    }

    /// What stands in brackets behind the keyword: a variable, perhaps with one of its values.
    void ReadSubject(Statement& statement) {
        std::string text;
        for (bool first = true; signs_.Peek() != ')';) {
            const char sign = signs_.Take();
            if (sign == '\0') Refuse();
            if (sign != '"') continue;
            text.clear();
            signs_.TakeQuoted(text);
            if (first) statement.variable = text;
            first = false;
            if (statement.keyword == "CELLNOTE" || statement.keyword == "CELLNOTEX") statement.subject.push_back(text);
        }
        signs_.Take();
    }

    /// The texts up to ";". Those that follow each other without a comma are one.
    void ReadTexts(Statement& statement) {
        bool joins = false;
        for (signs_.SkipBlanks(); signs_.Peek() != ';'; signs_.SkipBlanks()) {
            const char sign = signs_.Take();
            if (sign == '\0' || ++texts_ > kMostPxTexts) Refuse();
            if (sign == '"') {
                if (!joins) statement.texts.emplace_back();
                signs_.TakeQuoted(statement.texts.back());
                joins = true;
            } else {
                joins = joins && sign != ',';
            }
        }
        signs_.Take();
    }

    PxVariable& Named(const std::string& name) {
        auto found = std::ranges::find(head_.variables, name, &PxVariable::name);
        if (found != head_.variables.end()) return *found;
        if (head_.variables.size() >= kMostPxVariables) Refuse();
        head_.variables.emplace_back().name = name;
        return head_.variables.back();
    }

    void Take(Statement& statement) {
        const std::string& keyword = statement.keyword;
        if (keyword == "STUB") stub_ = statement.texts;
        if (keyword == "HEADING") heading_ = statement.texts;
        if (keyword == "VALUES") Named(statement.variable).values = std::move(statement.texts);
        if (keyword == "CODES") Named(statement.variable).codes = std::move(statement.texts);
        if (keyword == "TIMEVAL") Named(statement.variable).isTime = true;
        if (keyword == "KEYS") Named(statement.variable).isKey = true;
        if (keyword == "MAP") Named(statement.variable).isArea = true;
        if (statement.texts.empty()) return;
        if (keyword == "CONTVARIABLE") Named(statement.texts.front()).isContents = true;
        if (keyword == "UNITS" && !statement.variable.empty())
            head_.unitsOf[statement.variable] = statement.texts.front();
        if (!statement.subject.empty()) head_.cellNotes[statement.subject] = statement.texts.front();
        if (keyword == "CONTENTS") head_.contents = statement.texts.front();
        if (keyword == "UNITS" && head_.units.empty()) head_.units = statement.texts.front();
        if (keyword == "SOURCE") head_.source = statement.texts.front();
    }

    /// Puts the variables into the order of the data.
    void Check() {
        std::vector<PxVariable> ordered;
        head_.rowVariables = stub_.size();
        stub_.insert(stub_.end(), heading_.begin(), heading_.end());
        for (const std::string& name : stub_) {
            PxVariable& variable = Named(name);
            if (variable.values.empty()) variable.values = variable.codes;
            if (variable.values.empty()) Refuse();
            if (variable.codes.size() != variable.values.size()) variable.codes.clear();
            ordered.push_back(variable);
        }
        if (ordered.empty()) Refuse();
        head_.variables = std::move(ordered);
    }

    SignReader& signs_;
    QString path_;
    PxHead head_;
    std::vector<std::string> stub_;
    std::vector<std::string> heading_;
    std::size_t texts_ = 0;
};

} // namespace

char SignReader::Peek() {
    if (at_ == piece_.size()) {
        at_ = 0;
        if (!text_->Read(piece_)) piece_.clear();
    }
    return at_ < piece_.size() ? piece_[at_] : '\0';
}

char SignReader::Take() {
    const char sign = Peek();
    if (at_ < piece_.size()) ++at_;
    if (sign == '\n') ++line_;
    return sign;
}

void SignReader::SkipBlanks() {
    while (IsBlankSign(Peek()))
        Take();
}

void SignReader::TakeQuoted(std::string& text) {
    for (;;) {
        const char sign = Take();
        if (sign == '"') return;
        if (sign == '\0' || text.size() > kLongestField)
            throw ReadError(QStringLiteral("TS_ReadOpenQuote"), {QString::number(line_)});
        if (sign != '\n' && sign != '\r') text += sign;
    }
}

bool PxHead::IsKeyed() const {
    return std::ranges::any_of(variables, &PxVariable::isKey);
}

PxHead ReadPxHead(SignReader& signs, const QString& path) {
    return HeadReader(signs, path).Read();
}

QByteArray EncodingOfPx(const QString& path) {
    const QByteArray beginning = BeginningOf(path, 64 * 1024);
    const qsizetype at = beginning.indexOf("CODEPAGE=\"");
    if (at >= 0) {
        const qsizetype from = at + 10;
        const QByteArray name = beginning.mid(from, beginning.indexOf('"', from) - from).trimmed();
        if (IsEncoding(name)) return name;
    }
    return FindEncoding(beginning);
}

} // namespace tessaro
