#include "metadata/SheetMarkup.h"

namespace tessaro::metadata {

namespace {

bool EndsName(QChar c) {
    return c.isSpace() || c == QLatin1Char('>') || c == QLatin1Char('/') || c == QLatin1Char('=') ||
           c == QLatin1Char('<');
}

} // namespace

QChar MarkupScanner::At(qsizetype offset) const {
    return place_ + offset < source_.size() ? source_.at(place_ + offset) : QChar();
}

void MarkupScanner::SkipPast(const QString& end) {
    const qsizetype found = source_.indexOf(end, place_, Qt::CaseInsensitive);
    place_ = found < 0 ? source_.size() : found + end.size();
}

void MarkupScanner::SkipBlanks() {
    while (At(0).isSpace() || At(0) == QLatin1Char('/'))
        ++place_;
}

MarkupPiece MarkupScanner::Next() {
    if (At(0) == QLatin1Char('<')) {
        if (source_.mid(place_, 4) == QLatin1String("<!--")) {
            place_ += 4;
            SkipPast(QStringLiteral("-->"));
            return {};
        }
        if (At(1) == QLatin1Char('!') || At(1) == QLatin1Char('?')) {
            SkipPast(QStringLiteral(">"));
            return {};
        }
        if (At(1).isLetter() || (At(1) == QLatin1Char('/') && At(2).isLetter())) return Tag();
    }
    const qsizetype next = source_.indexOf(QLatin1Char('<'), place_ + 1);
    const qsizetype end = next < 0 ? source_.size() : next;
    MarkupPiece piece;
    piece.text = source_.mid(place_, end - place_);
    place_ = end;
    return piece;
}

MarkupPiece MarkupScanner::Tag() {
    MarkupPiece piece;
    ++place_;
    if (At(0) == QLatin1Char('/')) {
        piece.closing = true;
        ++place_;
    }
    piece.tag = Name().toLower();
    for (SkipBlanks(); !atEnd() && At(0) != QLatin1Char('>') && At(0) != QLatin1Char('<'); SkipBlanks())
        piece.attributes << Attribute();
    if (At(0) == QLatin1Char('>')) ++place_;
    for (const char* left : {"script", "style", "title"})
        if (piece.tag == QLatin1String(left) && !piece.closing) {
            SkipPast(QLatin1String("</") + piece.tag);
            SkipPast(QStringLiteral(">"));
            return {};
        }
    return piece;
}

QString MarkupScanner::Name() {
    const qsizetype begin = place_;
    while (!atEnd() && !EndsName(At(0)))
        ++place_;
    return source_.mid(begin, place_ - begin);
}

QString MarkupScanner::Value() {
    const QChar quote = At(0);
    if (quote == QLatin1Char('"') || quote == QLatin1Char('\'')) {
        const qsizetype begin = place_ + 1;
        const qsizetype end = source_.indexOf(quote, begin);
        place_ = end < 0 ? source_.size() : end + 1;
        return source_.mid(begin, end < 0 ? -1 : end - begin);
    }
    const qsizetype begin = place_;
    while (!atEnd() && !At(0).isSpace() && At(0) != QLatin1Char('>'))
        ++place_;
    return source_.mid(begin, place_ - begin);
}

std::pair<QString, QString> MarkupScanner::Attribute() {
    const QString name = Name();
    while (At(0).isSpace())
        ++place_;
    if (At(0) != QLatin1Char('=')) return {name, {}};
    ++place_;
    while (At(0).isSpace())
        ++place_;
    return {name, Value()};
}

} // namespace tessaro::metadata
