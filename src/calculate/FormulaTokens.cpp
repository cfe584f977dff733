#include "calculate/FormulaTokens.h"

#include "calculate/Numbers.h"
#include "session/DisplayValue.h"
#include "session/Messages.h"
#include "session/Strings.h"

#include <QLocale>
#include <QStringView>

namespace tessaro {

namespace {

using Kind = FormulaToken::Kind;

class Tokenizer final {
  public:
    Tokenizer(const QString& text, const std::vector<CalculationItem>& known, FormulaFault& fault)
        : text_(text), known_(known), fault_(fault), mark_(QLocale::system().decimalPoint()) {}

    [[nodiscard]] std::vector<FormulaToken> Tokens() {
        while (at_ < Size()) {
            if (text_[at_].isSpace())
                ++at_;
            else if (!Next())
                return {};
        }
        if (!open_.empty()) {
            Fail("TS_FormulaNotClosed", open_.back(), open_.back() + 1);
            return {};
        }
        tokens_.push_back({Kind::End, at_, at_, {}, 0, -1, {}});
        return std::move(tokens_);
    }

  private:
    [[nodiscard]] int Size() const { return static_cast<int>(text_.size()); }
    [[nodiscard]] QChar At(int place) const { return place < Size() ? text_[place] : QChar(); }

    bool Next() {
        const QChar letter = text_[at_];
        if (letter == QLatin1Char('{')) return Brace();
        if (letter == QLatin1Char('}')) return ClosingBrace();
        if (letter.isDigit() || letter == QLatin1Char('.')) return Number();
        if (letter.isLetter()) return Word();
        if (letter == QLatin1Char('(')) return Sign(Kind::Open);
        if (letter == QLatin1Char(')')) return Sign(Kind::Close);
        if (QStringLiteral("+-*/^").contains(letter)) return Sign(Kind::Operator);
        return Fail("TS_FormulaUnknownWord", at_, at_ + 1);
    }

    bool Sign(Kind kind) {
        tokens_.push_back({kind, at_, at_ + 1, text_[at_], 0, -1, {}});
        ++at_;
        return true;
    }

    bool Fail(const char* key, int from, int to) {
        const QString shown = text_.mid(from, to - from);
        fault_ = {FilledText(QLatin1String(key), {shown}), from, to - from};
        return false;
    }

    // --- Braces: references and brackets. ---

    bool Brace() {
        int longest = 0;
        int item = -1;
        for (std::size_t i = 0; i < known_.size(); ++i) {
            const int end = EndOfReference(known_[i]);
            if (end > longest) {
                longest = end;
                item = static_cast<int>(i);
            }
        }
        if (item >= 0) {
            tokens_.push_back({Kind::Reference, at_, longest, {}, 0, item, {}});
            at_ = longest;
            return true;
        }
        return UnknownReference() && OpeningBrace();
    }

    /// Where the reference that begins here ends when it is to this item; 0 when it isn't.
    [[nodiscard]] int EndOfReference(const CalculationItem& item) const {
        int place = AfterBlanks(at_ + 1);
        if (!TakeName(item.indicator, place)) return 0;
        const int tilde = AfterBlanks(place);
        const int subpop = AfterBlanks(tilde + 1);
        if (At(tilde) != QLatin1Char('~') || tilde - place < 2 || subpop - tilde < 3) return 0;
        place = subpop;
        if (!TakeName(item.subpop, place)) return 0;
        const int close = AfterBlanks(place);
        return At(close) == QLatin1Char('}') ? close + 1 : 0;
    }

    bool TakeName(const QString& name, int& place) const {
        const QStringView wanted = QStringView(name).trimmed();
        if (!QStringView(text_).mid(place).startsWith(wanted, Qt::CaseInsensitive)) return false;
        place += static_cast<int>(wanted.size());
        return true;
    }

    [[nodiscard]] int AfterBlanks(int place) const {
        while (place < Size() && text_[place].isSpace())
            ++place;
        return place;
    }

    /// False with a fault for what reads as a reference to something that the data don't have.
    bool UnknownReference() {
        const auto placeOf = [&](QChar sign) { return static_cast<int>(text_.indexOf(sign, at_ + 1)); };
        if (joiner_ < at_) joiner_ = static_cast<int>(text_.indexOf(QLatin1String(kReferenceJoiner), at_));
        if (joiner_ < 0) joiner_ = Size();
        const int next = joiner_ < Size() ? placeOf(QLatin1Char('{')) : 0;
        if (joiner_ == Size() || (next >= 0 && next < joiner_)) return true;
        const int close = placeOf(QLatin1Char('}'));
        if (close >= 0 && close < joiner_) return true;
        if (close < 0) return Fail("TS_FormulaNotClosed", at_, Size());
        return Fail("TS_FormulaUnknownItem", at_, close + 1);
    }

    bool OpeningBrace() {
        open_.push_back(at_);
        return Sign(Kind::Open);
    }

    bool ClosingBrace() {
        if (open_.empty()) return Fail("TS_FormulaNotOpened", at_, at_ + 1);
        open_.pop_back();
        return Sign(Kind::Close);
    }

    // --- Numbers and words. ---

    bool Number() {
        const int from = at_;
        TakeDigits();
        const QStringView rest = QStringView(text_).mid(at_);
        if (rest.startsWith(QLatin1Char('.')) ||
            (rest.startsWith(mark_) && At(at_ + static_cast<int>(mark_.size())).isDigit())) {
            at_ += rest.startsWith(QLatin1Char('.')) ? 1 : static_cast<int>(mark_.size());
            TakeDigits();
        }
        TakeExponent();
        const QString text = ToDotDecimal(text_.mid(from, at_ - from));
        const auto number = NumberOf(text);
        if (!number) return Fail("TS_FormulaUnknownWord", from, at_);
        tokens_.push_back({Kind::Number, from, at_, {}, *number, -1, text});
        return true;
    }

    void TakeDigits() {
        while (At(at_).isDigit())
            ++at_;
    }

    void TakeExponent() {
        if (At(at_).toLower() != QLatin1Char('e')) return;
        int place = at_ + 1;
        if (At(place) == QLatin1Char('+') || At(place) == QLatin1Char('-')) ++place;
        if (!At(place).isDigit()) return;
        at_ = place;
        TakeDigits();
    }

    bool Word() {
        const int from = at_;
        while (At(at_).isLetterOrNumber())
            ++at_;
        tokens_.push_back({Kind::Word, from, at_, {}, 0, -1, text_.mid(from, at_ - from).toLower()});
        return true;
    }

    const QString& text_;
    const std::vector<CalculationItem>& known_;
    FormulaFault& fault_;
    QString mark_; ///< the decimal mark of the user's system
    int at_ = 0;
    int joiner_ = -1;       ///< the next joiner, when it was looked for last
    std::vector<int> open_; ///< braces that are not closed yet
    std::vector<FormulaToken> tokens_;
};

} // namespace

std::vector<FormulaToken> FormulaTokens(const QString& text, const std::vector<CalculationItem>& known,
                                        FormulaFault& fault) {
    return Tokenizer(text, known, fault).Tokens();
}

} // namespace tessaro
