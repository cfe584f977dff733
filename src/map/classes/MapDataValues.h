#pragma once

#include "map/classes/ClassBreaks.h"

#include <QStringList>

namespace tessaro {

/// The values of `_MapData` as classes are made of them: each answer is a statement. One that fails is reported and
/// counts as no values.
class MapDataValues final : public ClassValues {
  public:
    int Take(double lower, double upper) override;
    [[nodiscard]] double At(int place) override;
    [[nodiscard]] std::optional<double> NextAbove(double lower, double upper) override;
    [[nodiscard]] int Count(double lower, double upper) override;

  private:
    QStringList areas_; ///< the areas of the values that were taken
};

} // namespace tessaro
