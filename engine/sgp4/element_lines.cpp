#include "engine/sgp4/element_lines.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "engine/astro/calendar.h"
#include "engine/astro/constants.h"
#include "engine/astro/element_fields.h"

namespace glintara {

namespace {

constexpr double kDegree = std::numbers::pi / 180;

ElementLinesError ErrorOf(ElementFault fault) {
    switch (fault) {
        case ElementFault::None:
            return ElementLinesError::None;
        case ElementFault::NotItsDigit:
        case ElementFault::TooShort:
            return ElementLinesError::NotTwoLines;
        case ElementFault::MeanMotionNotPositive:
            return ElementLinesError::MeanMotion;
        case ElementFault::EccentricityNegative:
            return ElementLinesError::Eccentricity;
        default:
            return ElementLinesError::NotNumbers;
    }
}

/// The error of two lines whose errors are these.
ElementLinesError LowerOf(ElementLinesError first, ElementLinesError second) {
    if (first == ElementLinesError::None) return second;
    if (second == ElementLinesError::None) return first;
    return std::min(first, second);
}

}  // namespace

ElementLinesError ReadElementLines(std::string_view line1, std::string_view line2, MeanElements& out) {
    ElementLine1 first;
    ElementLine2 second;
    const ElementLinesError error1 = ErrorOf(ReadElementLine1(line1, first));
    const ElementLinesError error2 = ErrorOf(ReadElementLine2(line2, second));
    if (const ElementLinesError error = LowerOf(error1, error2); error != ElementLinesError::None) return error;

    // Day 1 of the year is its first of January.
    const double wholeDays = std::floor(first.epochDay);
    out.epochDay = DateToJD({.year = first.epochYear, .month = 1, .day = 1}) + (wholeDays - 1);
    out.epochFraction = first.epochDay - wholeDays;
    out.bstar = first.bstar;
    out.inclination = second.inclination * kDegree;
    out.node = second.raanAngle * kDegree;
    out.eccentricity = second.eccentricity;
    out.argPerigee = second.argPerigee * kDegree;
    out.meanAnomaly = second.meanAnomaly * kDegree;
    out.meanMotion = second.meanMotion * 2 * std::numbers::pi / kMinutesPerDay;
    return ElementLinesError::None;
}

}  // namespace glintara
