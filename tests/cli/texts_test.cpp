#include "cli/texts.h"

#include <gtest/gtest.h>

#include <limits>
#include <sstream>

namespace glintara::cli {
namespace {

TEST(FixedText, CutsAndKeepsAllPlaces) {
    EXPECT_EQ(FixedText(12.349, 2), "12.34");
    EXPECT_EQ(FixedText(5, 1), "5.0");
    EXPECT_EQ(FixedText(0.5, 3), "0.500");
    EXPECT_EQ(FixedText(-0.05, 1), "-0.1");  // floor
    EXPECT_EQ(FixedText(-0.0, 1), "0.0");
}

TEST(FullText, ReadsBackUnchanged) {
    EXPECT_EQ(FullText(0.1), "0.1");
    EXPECT_EQ(FullText(2458138.7106896467), "2458138.7106896467");
    EXPECT_EQ(FullText(100), "100");
}

TEST(Instants, AreRoundedAndCarry) {
    EXPECT_EQ(ShortInstant(2451545.0), "2000-01-01 12:00:00.0");
    EXPECT_EQ(ShortInstant(2451545.0 - 0.01 / 86400), "2000-01-01 12:00:00.0");
    EXPECT_EQ(ShortInstant(2451544.5 - 0.01 / 86400), "2000-01-01 00:00:00.0");  // over a year's end
    EXPECT_EQ(ShortInstant(2451545.0 + 5.26 / 86400), "2000-01-01 12:00:05.3");
    EXPECT_EQ(IsoInstant(2451545.0 + 5.25 / 86400), "2000-01-01T12:00:05.250Z");
}

TEST(Csv, QuotesWhatNeedsIt) { EXPECT_EQ(CsvLine({"a", "b c", "d,e", "f\"g", ""}), "a,b c,\"d,e\",\"f\"\"g\","); }

TEST(TableText, AlignsColumnsByWhatIsSeen) {
    Table table;
    table.AddColumn({"Name", ""}, Table::Align::Left);
    table.AddColumn({"Distance", "km"}, Table::Align::Right);
    table.AddRow({"T\u00fcr", "1.5"});
    table.AddRow({"Longer", "10.25"});
    std::ostringstream out;
    table.Print(out);
    EXPECT_EQ(out.str(),
              "Name    Distance\n"
              "              km\n"
              "T\u00fcr          1.5\n"
              "Longer     10.25\n");
}

}  // namespace
}  // namespace glintara::cli
