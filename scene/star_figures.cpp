#include "scene/star_figures.h"

#include <algorithm>

#include "engine/astro/number_text.h"

namespace glintara {

namespace {

/// The figures in lines: "#" and a name begins one; then stars by name, or by number after a "-". A 0 breaks the chain.
constexpr std::string_view kFigures[] = {
    "#UMA",     "Alkaid",  "mizar",      "alioth",    "-43967",    "phad",    "merak",   "dubhe",  "#ORI",   "rigel",
    "saiph",    "alnitak", "betelgeuse", "bellatrix", "-18386",    "#UMi",    "polaris", "-61768", "-59031", "-55573",
    "kochab",   "-54251",  "-57447",     "#CAS",      "-6182",     "-4667",   "-3084",   "-2243",  "-544",   "#LYR",
    "vega",     "-66340",  "-66965",     "-67277",    "-66674",    "#CYG",    "Deneb",   "-72847", "-71041", "-69948",
    "-69376",   "0",       "-74382",     "-70319",    "#AUR",      "capella", "-20254",  "-20267", "-18021", "-16265",
    "-16579",   "-16813",  "-16550",     "#CEP",      "alderamin", "-77064",  "-84631",  "-81849", "-79599", "#BOO",
    "arcturus", "izar",    "-53953",     "-53203",    "-51541",    "-51524",  "#HER",    "-58128", "-58736", "-58841",
    "-58344",   "-57559",  "-60697",     "-59842",    "-60696",    "-62610",  "-61241",  "-63232", "#DRA",   "etamin",
    "-61657",   "-61773",  "-63065",     "-68192",    "-70523",    "-64810",  "-60353",  "-57797", "-56548", "-54497",
    "#GEM",     "castor",  "pollux",     "-27636",    "-25932",    "-24803",  "-22916",  "-21860", "-23358", "-25267",
};

char SmallLetter(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool SameName(std::string_view a, std::string_view b) {
    return std::equal(
        a.begin(), a.end(), b.begin(), b.end(),
        [](char left, char right) { return SmallLetter(left) == SmallLetter(right); });
}

/// The star that an entry of the table means; 0 for a break or a star that is not there.
std::int32_t StarOf(const std::vector<StarRecord>& stars, std::string_view entry) {
    if (entry == "0") return 0;
    if (!entry.starts_with('-')) return FindStar(stars, entry);
    const auto number = static_cast<std::int32_t>(LeadingNumber(entry.substr(1)));
    const bool isThere =
        static_cast<std::size_t>(number) < stars.size() && !stars[static_cast<std::size_t>(number)].IsGap();
    return isThere ? number : 0;
}

}  // namespace

std::int32_t FindStar(const std::vector<StarRecord>& stars, std::string_view name) {
    if (name.empty()) return 0;
    for (std::size_t i = 1; i < stars.size(); ++i) {
        const StarRecord& star = stars[i];
        if (SameName(star.ProperName, name) || SameName(star.Designation, name)) return static_cast<std::int32_t>(i);
    }
    return 0;
}

std::vector<ConstellationLine> TwelveFigures(const std::vector<StarRecord>& stars) {
    std::vector<ConstellationLine> lines(1);
    std::int32_t group = 0;
    for (const std::string_view entry : kFigures) {
        const std::int32_t star = entry.starts_with('#') ? 0 : StarOf(stars, entry);
        if (star == 0)
            ++group;
        else
            lines.push_back({star, group});
    }
    return lines;
}

bool JoinsPrevious(const StarTables& stars, std::size_t index) {
    if (index < 2 || index >= stars.Constellations.size()) return false;
    const ConstellationLine& from = stars.Constellations[index - 1];
    const ConstellationLine& to = stars.Constellations[index];
    return from.Group == to.Group && stars.HasStar(from.Star) && stars.HasStar(to.Star);
}

}  // namespace glintara
