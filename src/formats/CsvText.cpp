#include "formats/CsvText.h"

#include "session/DisplayValue.h"

#include <algorithm>

namespace tessaro {

namespace {

bool BeginsFormula(QChar c) {
    // Spreadsheets read the full-width forms of these signs like the plain ones in East Asian locales.
    return QStringView(u"=+-@\uFF1D\uFF0B\uFF0D\uFF20").contains(c);
}

QString Quoted(const QString& text, QLatin1Char delimiter) {
    const bool needs = std::any_of(text.begin(), text.end(), [&](QChar c) {
        return c == delimiter || c == QLatin1Char('"') || c == QLatin1Char('\n') || c == QLatin1Char('\r');
    });
    if (!needs && text.trimmed().size() == text.size()) return text;
    return QLatin1Char('"') + QString(text).replace(QLatin1Char('"'), QLatin1String("\"\"")) + QLatin1Char('"');
}

} // namespace

QString WithoutFormula(const QString& text) {
    if (text.isEmpty() || ReadsAsNumber(text)) return text;
    qsizetype first = 0;
    while (first < text.size() &&
           (text[first].isSpace() || text[first] == QLatin1Char('"') || text[first].category() == QChar::Other_Format ||
            text[first].category() == QChar::Other_Control))
        ++first;
    const bool marked = text[0] == QLatin1Char('\t') || text[0] == QLatin1Char('\r') ||
                        (first < text.size() && BeginsFormula(text[first]));
    return marked ? QLatin1Char('\'') + text : text;
}

QByteArray CsvWriter::Line(const QStringList& fields) {
    constexpr qsizetype most = 8192; // texts that are kept of a column
    known_.resize(std::max(known_.size(), static_cast<std::size_t>(fields.size())));
    QByteArray line;
    for (qsizetype column = 0; column < fields.size(); ++column) {
        if (column > 0) line += ',';
        QHash<QString, QByteArray>& known = known_[static_cast<std::size_t>(column)];
        const auto found = known.constFind(fields[column]);
        if (found != known.constEnd()) {
            line += *found;
            continue;
        }
        const QByteArray field = Quoted(WithoutFormula(fields[column]), QLatin1Char(',')).toUtf8();
        if (known.size() < most) known.insert(fields[column], field);
        line += field;
    }
    return line += "\r\n";
}

QByteArray CsvLine(const QStringList& fields, char delimiter) {
    QStringList quoted;
    for (const QString& field : fields)
        quoted << Quoted(WithoutFormula(field), QLatin1Char(delimiter));
    return quoted.join(QLatin1Char(delimiter)).toUtf8() + "\r\n";
}

} // namespace tessaro
