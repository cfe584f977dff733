#include "map/shapefile/cFileName.h"

#include "map/shapefile/ShapefileError.h"

#include <algorithm>

namespace tessaro {

namespace {

bool IsForbidden(QChar letter) {
    return QStringLiteral("?\"*|/><:\\").contains(letter);
}

} // namespace

qsizetype cFileName::BaseStart() const {
    return std::max(spec_.lastIndexOf(QLatin1Char('\\')), spec_.lastIndexOf(QLatin1Char('/'))) + 1;
}

qsizetype cFileName::BaseEnd() const {
    const qsizetype point = spec_.lastIndexOf(QLatin1Char('.'));
    return point < BaseStart() ? spec_.size() : point;
}

QString cFileName::GetBaseName() const {
    return spec_.mid(BaseStart(), BaseEnd() - BaseStart());
}

void cFileName::SetBaseName(const QString& name) {
    if (name.isEmpty() || std::any_of(name.begin(), name.end(), &IsForbidden))
        throw ShapefileError(ShapefileErrors::InvalidFileSpec, QStringLiteral("The FileSpec is invalid"),
                             QStringLiteral("C_FileName::SetBaseName"));
    spec_ = spec_.left(BaseStart()) + name + spec_.mid(BaseEnd());
}

QString cFileName::GetExtension() const {
    return spec_.mid(spec_.lastIndexOf(QLatin1Char('.')) + 1);
}

void cFileName::SetExtension(const QString& extension) {
    spec_ = spec_.left(spec_.lastIndexOf(QLatin1Char('.')) + 1) + extension;
}

} // namespace tessaro
