// The stars and constellation figures that come with the program.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "orbit/files.h"
#include "scene/map_files.h"
#include "scene/star_figures.h"
#include "scene/star_text.h"

namespace glintara {
namespace {

constexpr double kDegree = 3.14159265358979323846 / 180;
constexpr double kHour = 15 * kDegree;
constexpr double kArcminute = kDegree / 60;

std::string FileText(const char* file) {
    const auto bytes = ReadWholeFile(std::filesystem::path(GLINTARA_SOURCE_DIR) / "data" / file, 20000000);
    return bytes.value_or("");
}

struct Sky {
    std::vector<StarRecord> stars;
    std::vector<ConstellationLine> figures;

    const StarRecord& At(std::int32_t number) const { return stars.at(static_cast<std::size_t>(number)); }

    const StarRecord& Named(std::string_view name) const { return At(FindStar(stars, name)); }

    /// The chain of stars that begins with the one called `name`, as names or, of stars that have none, designations.
    std::vector<std::string> ChainFrom(std::string_view name) const {
        std::vector<std::string> chain;
        const std::int32_t first = FindStar(stars, name);
        std::size_t i = 1;
        while (i < figures.size() && (figures[i].Star != first || figures[i].Group == figures[i - 1].Group)) ++i;
        for (std::size_t k = i; k < figures.size() && figures[k].Group == figures[i].Group; ++k) {
            const StarRecord& star = At(figures[k].Star);
            chain.push_back(star.ProperName.empty() ? star.Designation : star.ProperName);
        }
        return chain;
    }
};

const Sky& TheSky() {
    static const Sky sky{DecodeStars(FileText("DB003.VDB")).value_or(std::vector<StarRecord>(1)),
                         DecodeConstellations(FileText("DB004.VDB")).value_or(std::vector<ConstellationLine>(1))};
    return sky;
}

/// Angle between a star's place of 2000 and (`ra`, `dec`), radians.
double Distance(const StarRecord& star, double ra, double dec) {
    const double half = std::sin((star.DeclinationJ2000 - dec) / 2);
    const double turn = std::sin((star.RightAscensionJ2000 - ra) / 2);
    return 2 * std::asin(std::sqrt(half * half + std::cos(star.DeclinationJ2000) * std::cos(dec) * turn * turn));
}

double Distance(const StarRecord& a, const StarRecord& b) {
    return Distance(a, b.RightAscensionJ2000, b.DeclinationJ2000);
}

struct BrightStar {
    const char* name;
    const char* designation;
    double magnitude;
    double hours, minutes, seconds;
    double sign, degrees, arcminutes, arcseconds;
};

/// Magnitudes of the Hipparcos catalogue, places of 2000, numbers of the Henry Draper catalogue.
constexpr BrightStar kBrightStars[] = {
    {"Sirius", "HD 48915", -1.44, 6, 45, 8.9, -1, 16, 42, 58},
    {"Canopus", "HD 45348", -0.62, 6, 23, 57.1, -1, 52, 41, 44},
    {"Arcturus", "HD 124897", -0.05, 14, 15, 39.7, 1, 19, 10, 57},
    {"Vega", "HD 172167", 0.03, 18, 36, 56.3, 1, 38, 47, 1},
    {"Capella", "HD 34029", 0.08, 5, 16, 41.4, 1, 45, 59, 53},
    {"Rigel", "HD 34085", 0.18, 5, 14, 32.3, -1, 8, 12, 6},
    {"Procyon", "HD 61421", 0.40, 7, 39, 18.1, 1, 5, 13, 30},
    {"Achernar", "HD 10144", 0.45, 1, 37, 42.8, -1, 57, 14, 12},
    {"Betelgeuse", "HD 39801", 0.45, 5, 55, 10.3, 1, 7, 24, 25},
    {"Hadar", "HD 122451", 0.61, 14, 3, 49.4, -1, 60, 22, 23},
    {"Altair", "HD 187642", 0.76, 19, 50, 47.0, 1, 8, 52, 6},
    {"Aldebaran", "HD 29139", 0.87, 4, 35, 55.2, 1, 16, 30, 33},
    {"Spica", "HD 116658", 0.98, 13, 25, 11.6, -1, 11, 9, 41},
    {"Antares", "HD 148478", 1.06, 16, 29, 24.5, -1, 26, 25, 55},
    {"Fomalhaut", "HD 216956", 1.17, 22, 57, 39.0, -1, 29, 37, 20},
    {"Deneb", "HD 197345", 1.25, 20, 41, 25.9, 1, 45, 16, 49},
    {"Regulus", "HD 87901", 1.36, 10, 8, 22.3, 1, 11, 58, 2},
    {"Polaris", "HD 8890", 1.97, 2, 31, 49.1, 1, 89, 15, 51},
};

TEST(StarData, BrightStarsStandWhereTheyAre) {
    for (const BrightStar& bright : kBrightStars) {
        const StarRecord& star = TheSky().Named(bright.name);
        const double ra = (bright.hours + bright.minutes / 60 + bright.seconds / 3600) * kHour;
        const double dec = bright.sign * (bright.degrees + bright.arcminutes / 60 + bright.arcseconds / 3600) * kDegree;
        EXPECT_LT(Distance(star, ra, dec), kArcminute) << bright.name;
        EXPECT_NEAR(star.Magnitude, bright.magnitude, 0.05) << bright.name;
        EXPECT_EQ(star.Designation, bright.designation) << bright.name;
    }
}

TEST(StarData, ColorsAndSpectraAreThoseOfTheStars) {
    EXPECT_NEAR(TheSky().Named("Rigel").ColorIndex, -0.03, 0.01);
    EXPECT_NEAR(TheSky().Named("Vega").ColorIndex, 0.00, 0.01);
    EXPECT_NEAR(TheSky().Named("Aldebaran").ColorIndex, 1.54, 0.01);
    EXPECT_NEAR(TheSky().Named("Antares").ColorIndex, 1.87, 0.01);
    EXPECT_EQ(TheSky().Named("Vega").SpectralType.substr(0, 2), "A0");
    EXPECT_EQ(TheSky().Named("Rigel").SpectralType.substr(0, 2), "B8");
    EXPECT_EQ(TheSky().Named("Aldebaran").SpectralType.substr(0, 2), "K5");
}

TEST(StarData, NearStarsAreThereHoweverFaint) {
    const StarRecord& proxima = TheSky().Named("Proxima");
    EXPECT_NEAR(proxima.Magnitude, 11.01, 0.05);
    EXPECT_LT(Distance(proxima, 14.4953 * kHour, -62.6795 * kDegree), kArcminute);
    const StarRecord& barnard = TheSky().Named("Barnard's Star");
    EXPECT_NEAR(barnard.Magnitude, 9.54, 0.05);
    EXPECT_LT(Distance(barnard, 17.9634 * kHour, 4.6934 * kDegree), kArcminute);
}

TEST(StarData, AreAsManyAsTheSkyHas) {
    const std::vector<StarRecord>& stars = TheSky().stars;
    ASSERT_EQ(stars.size() - 1, 85752U);
    const auto brighter = [&stars](double magnitude) {
        const auto isBrighter = [magnitude](const StarRecord& star) { return star.Magnitude < magnitude; };
        return static_cast<double>(std::count_if(stars.begin() + 1, stars.end(), isBrighter));
    };
    // Of the whole sky, as handbooks count them. Beyond magnitude 7.3 the source itself is not complete.
    EXPECT_NEAR(brighter(1), 15, 1);
    EXPECT_NEAR(brighter(2), 48, 3);
    EXPECT_NEAR(brighter(3), 171, 9);
    EXPECT_NEAR(brighter(4), 513, 26);
    EXPECT_NEAR(brighter(5), 1602, 80);
    EXPECT_NEAR(brighter(6), 4800, 240);
}

TEST(StarData, GoRoundTheSkyFromTheEquinox) {
    const std::vector<StarRecord>& stars = TheSky().stars;
    ASSERT_GT(stars.size(), 1U);
    std::set<std::string> names;
    for (std::size_t i = 1; i < stars.size(); ++i) {
        const StarRecord& star = stars[i];
        EXPECT_FALSE(star.IsGap()) << i;
        EXPECT_GT(star.Designation.size(), 3U) << i;
        EXPECT_GE(star.RightAscensionJ2000, i > 1 ? stars[i - 1].RightAscensionJ2000 : 0) << i;
        EXPECT_LT(star.RightAscensionJ2000, 24 * kHour) << i;
        EXPECT_LE(std::abs(star.DeclinationJ2000), 90 * kDegree) << i;
        EXPECT_EQ(star.RightAscension, star.RightAscensionJ2000) << i;
        EXPECT_EQ(star.Declination, star.DeclinationJ2000) << i;
        EXPECT_TRUE(std::all_of(star.ProperName.begin(), star.ProperName.end(), [](char c) {
            return c >= ' ' && c <= '~';
        })) << star.ProperName;
        if (!star.ProperName.empty())
            EXPECT_TRUE(names.insert(star.ProperName).second) << star.ProperName << " is two stars";
    }
}

struct FigureStar {
    std::int32_t number;
    int hipparcos;
    const char* letter;
    double magnitude;
    double hours;
    double degrees;
};

/// The stars that figures name by number. Numbers, magnitudes and places of the Hipparcos catalogue.
constexpr FigureStar kFigureStars[] = {
    {544, 746, "β Cas", 2.28, 0.1530, 59.150},       {2243, 3179, "α Cas", 2.24, 0.6751, 56.537},
    {3084, 4427, "γ Cas", 2.15, 0.9451, 60.717},     {4667, 6686, "δ Cas", 2.66, 1.4303, 60.235},
    {6182, 8886, "ε Cas", 3.35, 1.9066, 63.670},     {16265, 23015, "ι Aur", 2.69, 4.9499, 33.166},
    {16550, 23416, "ε Aur", 3.03, 5.0328, 43.823},   {16579, 23453, "ζ Aur", 3.69, 5.0413, 41.076},
    {16813, 23767, "η Aur", 3.18, 5.1086, 41.234},   {18021, 25428, "β Tau", 1.65, 5.4382, 28.608},
    {18386, 25930, "δ Ori", 2.25, 5.5334, -0.299},   {20254, 28360, "β Aur", 1.90, 5.9921, 44.947},
    {20267, 28380, "θ Aur", 2.65, 5.9954, 37.213},   {21860, 30343, "μ Gem", 2.87, 6.3827, 22.514},
    {22916, 31681, "γ Gem", 1.93, 6.6285, 16.399},   {23358, 32246, "ε Gem", 3.06, 6.7322, 25.131},
    {24803, 34088, "ζ Gem", 4.01, 7.0685, 20.570},   {25267, 34693, "τ Gem", 4.41, 7.1857, 30.245},
    {25932, 35550, "δ Gem", 3.50, 7.3354, 21.982},   {27636, 37740, "κ Gem", 3.57, 7.7408, 24.398},
    {43967, 59774, "δ UMa", 3.32, 12.2571, 57.033},  {51524, 71053, "ρ Boo", 3.57, 14.5305, 30.371},
    {51541, 71075, "γ Boo", 3.04, 14.5346, 38.308},  {53203, 73555, "β Boo", 3.49, 15.0324, 40.391},
    {53953, 74666, "δ Boo", 3.46, 15.2584, 33.315},  {54251, 75097, "γ UMi", 3.00, 15.3455, 71.834},
    {54497, 75458, "ι Dra", 3.29, 15.4155, 58.966},  {55573, 77055, "ζ UMi", 4.29, 15.7343, 77.794},
    {56548, 78527, "θ Dra", 4.01, 16.0315, 58.565},  {57447, 79822, "η UMi", 4.95, 16.2917, 75.755},
    {57559, 79992, "τ Her", 3.91, 16.3290, 46.313},  {57797, 80331, "η Dra", 2.73, 16.3999, 61.514},
    {58128, 80816, "β Her", 2.78, 16.5037, 21.490},  {58344, 81126, "σ Her", 4.20, 16.5684, 42.437},
    {58736, 81693, "ζ Her", 2.81, 16.6881, 31.603},  {58841, 81833, "η Her", 3.48, 16.7149, 38.922},
    {59031, 82080, "ε UMi", 4.21, 16.7662, 82.037},  {59842, 83207, "ε Her", 3.92, 17.0048, 30.926},
    {60353, 83895, "ζ Dra", 3.17, 17.1464, 65.715},  {60696, 84379, "δ Her", 3.12, 17.2505, 24.839},
    {60697, 84380, "π Her", 3.16, 17.2508, 36.809},  {61241, 85112, "ρ Her", 4.15, 17.3947, 37.146},
    {61657, 85670, "β Dra", 2.79, 17.5072, 52.301},  {61768, 85822, "δ UMi", 4.35, 17.5369, 86.587},
    {61773, 85829, "ν2 Dra", 4.86, 17.5378, 55.173}, {62610, 86974, "μ Her", 3.42, 17.7743, 27.721},
    {63065, 87585, "ξ Dra", 3.73, 17.8921, 56.873},  {63232, 87808, "θ Her", 3.86, 17.9376, 37.251},
    {64810, 89937, "χ Dra", 3.55, 18.3509, 72.733},  {66340, 91971, "ζ1 Lyr", 4.34, 18.7462, 37.605},
    {66674, 92420, "β Lyr", 3.52, 18.8347, 33.363},  {66965, 92791, "δ2 Lyr", 4.22, 18.9084, 36.899},
    {67277, 93194, "γ Lyr", 3.25, 18.9824, 32.690},  {68192, 94376, "δ Dra", 3.07, 19.2093, 67.662},
    {69376, 95947, "β1 Cyg", 3.05, 19.5120, 27.960}, {69948, 96683, "φ Cyg", 4.68, 19.6563, 30.153},
    {70319, 97165, "δ Cyg", 2.86, 19.7496, 45.131},  {70523, 97433, "ε Dra", 3.84, 19.8029, 70.268},
    {71041, 98110, "η Cyg", 3.89, 19.9384, 35.083},  {72847, 100453, "γ Cyg", 2.23, 20.3705, 40.257},
    {74382, 102488, "ε Cyg", 2.48, 20.7702, 33.970}, {77064, 106032, "β Cep", 3.23, 21.4777, 70.561},
    {79599, 109492, "ζ Cep", 3.39, 22.1809, 58.201}, {81849, 112724, "ι Cep", 3.50, 22.8280, 66.200},
    {84631, 116727, "γ Cep", 3.21, 23.6558, 77.632},
};

TEST(StarData, StarsOfTheFiguresStandAtTheirNumbers) {
    for (const FigureStar& figure : kFigureStars) {
        const StarRecord& star = TheSky().At(figure.number);
        EXPECT_LT(Distance(star, figure.hours * kHour, figure.degrees * kDegree), kArcminute) << figure.letter;
        EXPECT_NEAR(star.Magnitude, figure.magnitude, 0.05) << figure.letter;
    }
}

TEST(StarData, TheTextHasTheHipparcosNumbersOfTheFigures) {
    const std::string text = FileText("stars2.txt");
    for (const FigureStar& figure : kFigureStars) {
        const std::string line = '\n' + std::to_string(figure.number) + ',' + std::to_string(figure.hipparcos) + ',';
        EXPECT_NE(text.find(line), std::string::npos) << figure.letter;
    }
}

TEST(StarData, IsWhatTheTextsSay) {
    const auto stars = ReadStars(FileText("stars2.txt"));
    ASSERT_TRUE(stars);
    EXPECT_TRUE(EncodeStars(*stars) == FileText("DB003.VDB"));
    const auto figures = ReadConstellations(FileText("const.txt"));
    ASSERT_TRUE(figures);
    EXPECT_TRUE(EncodeConstellations(*figures) == FileText("DB004.VDB"));
}

TEST(FigureData, BeginsWithTheTwelve) {
    const std::vector<ConstellationLine> twelve = TwelveFigures(TheSky().stars);
    ASSERT_EQ(twelve.size() - 1, 87U) << "all stars of the twelve figures are there";
    ASSERT_GT(TheSky().figures.size(), twelve.size());
    EXPECT_TRUE(std::equal(twelve.begin(), twelve.end(), TheSky().figures.begin()));
}

TEST(FigureData, JoinsTheStarsOfWellKnownFigures) {
    const Sky& sky = TheSky();
    using Names = std::vector<std::string>;
    EXPECT_EQ(sky.ChainFrom("Alkaid"), (Names{"Alkaid", "Mizar", "Alioth", "Megrez", "Phad", "Merak", "Dubhe"}));
    EXPECT_EQ(sky.ChainFrom("Rigel"), (Names{"Rigel", "Saiph", "Alnitak", "Betelgeuse", "Bellatrix", "Mintaka"}));
    EXPECT_EQ(sky.ChainFrom("Deneb"), (Names{"Deneb", "Sadr", "HD 188947", "HD 185734", "Albireo"}));
    EXPECT_EQ(sky.ChainFrom("Aljanah"), (Names{"Aljanah", "Fawaris"})) << "the wings of the swan";
    EXPECT_EQ(sky.ChainFrom("Acrux"), (Names{"Acrux", "Gacrux"})) << "the beam of the cross";
}

TEST(FigureData, IsAWholeSky) {
    const std::string text = FileText("const.txt");
    std::set<std::string> names;
    for (std::size_t at = text.find('#'); at != std::string::npos; at = text.find('#', at + 1))
        names.insert(text.substr(at + 1, 3));
    EXPECT_EQ(names.size(), 88U);
}

TEST(FigureData, JoinsNeighboursOnly) {
    const Sky& sky = TheSky();
    ASSERT_GT(sky.figures.size(), 1U);
    for (std::size_t i = 1; i < sky.figures.size(); ++i) {
        const StarRecord& star = sky.At(sky.figures[i].Star);
        EXPECT_LT(star.Magnitude, 6.6) << star.Designation;
        if (i == 1 || sky.figures[i].Group != sky.figures[i - 1].Group) continue;
        const StarRecord& before = sky.At(sky.figures[i - 1].Star);
        EXPECT_LT(Distance(star, before), 32 * kDegree) << before.Designation << " and " << star.Designation;
        EXPECT_GT(Distance(star, before), 0) << star.Designation;
    }
}

}  // namespace
}  // namespace glintara
