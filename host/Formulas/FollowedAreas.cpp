#include "Formulas/FollowedAreas.h"

namespace Zorv::Formulas {

FollowedArea::~FollowedArea() = default;
FollowedAreas::~FollowedAreas() = default;

}  // namespace Zorv::Formulas
