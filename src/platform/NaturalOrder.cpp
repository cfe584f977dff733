#include "platform/NaturalOrder.h"

#include <QLocale>

#include <algorithm>

namespace tessaro {

QCollator NaturalOrder() {
    // The "C" locale compares code points and knows no numbers.
    const QLocale locale;
    QCollator order(locale.language() == QLocale::C ? QLocale(QLocale::English) : locale);
    order.setCaseSensitivity(Qt::CaseInsensitive);
    order.setNumericMode(true);
    return order;
}

QStringList InNaturalOrder(QStringList names) {
    const QCollator order = NaturalOrder();
    std::stable_sort(names.begin(), names.end(),
                     [&](const QString& a, const QString& b) { return order.compare(a, b) < 0; });
    return names;
}

} // namespace tessaro
