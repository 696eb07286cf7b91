#include "orbit/element_age.h"

#include <cmath>

#include "engine/astro/number_text.h"
#include "orbit/element_sets.h"

namespace glintara {

ElementAge ElementAgeAt(const CommonData& data, double jd) {
    ElementAge age;
    for (int i = 1; i <= data.SatCount; ++i) {
        const SatRecord& satellite = data.Satellite(i);
        if (satellite.IsDisabled()) continue;
        const double days = jd - EpochToJD(satellite);
        ++age.count;
        if (std::abs(days) > kFreshDays) ++age.old;
        if (std::abs(days) > std::abs(age.farthest)) age.farthest = days;
    }
    return age;
}

std::string ElementAgeWarning(const ElementAge& age) {
    if (age.old == 0) return {};
    const std::string days =
        CutNumberText(std::abs(age.farthest), 0) + " days " + (age.farthest > 0 ? "old" : "too new");
    const std::string whose = age.old == age.count
                                  ? "Elements are "
                                  : std::to_string(age.old) + " of " + std::to_string(age.count) + " elements up to ";
    return whose + days + ": positions will be off";
}

}  // namespace glintara
