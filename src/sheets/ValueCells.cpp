#include "sheets/ValueCells.h"

#include "office/Limits.h"
#include "session/DisplayValue.h"
#include "session/Session.h"

#include <algorithm>

namespace tessaro {

office::Cell TextCell(const QString& text) {
    return text.isEmpty() ? office::Cell() : office::Cell(text.left(office::kMaxCellText));
}

office::Cell ValueCell(const QString& value) {
    if (value.trimmed().isEmpty()) return {};
    bool isNumber = false;
    const double number = value.trimmed().toDouble(&isNumber);
    if (isNumber && ReadsAsNumber(value)) return number;
    return TextCell(value);
}

int DecimalsOf(const QString& value) {
    const QString text = value.trimmed();
    const qsizetype point = text.indexOf(QLatin1Char('.'));
    if (point < 0 || !ReadsAsNumber(text) || text.contains(QLatin1Char('e'), Qt::CaseInsensitive)) return 0;
    return static_cast<int>(std::min<qsizetype>(text.size() - point - 1, kMostDecimals));
}

QString WithZeros(const QString& value, int decimals) {
    const QString text = value.trimmed();
    const int has = DecimalsOf(text);
    if (has >= decimals || !ReadsAsNumber(text) || text.contains(QLatin1Char('e'), Qt::CaseInsensitive)) return value;
    const bool point = text.contains(QLatin1Char('.'));
    return text + (point ? QString() : QStringLiteral(".")) + QString(decimals - has, QLatin1Char('0'));
}

QString ValueFormat(const QString& value) {
    const QString text = value.trimmed();
    if (!ReadsAsNumber(text) || text.contains(QLatin1Char('e'), Qt::CaseInsensitive)) return QStringLiteral("General");
    const int decimals = DecimalsOf(text);
    const QString whole = SysNumFormat ? QStringLiteral("#,##0") : QStringLiteral("0");
    return decimals == 0 ? whole : whole + QLatin1Char('.') + QString(decimals, QLatin1Char('0'));
}

} // namespace tessaro
