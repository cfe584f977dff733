#include "jet/Value.h"

namespace jet {} // namespace jet
