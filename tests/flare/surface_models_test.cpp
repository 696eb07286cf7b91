#include "flare/surface_models.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "state/recording_services.h"

namespace glintara {
namespace {

using testing::RecordingBoxes;

SatRecord NamedSatellite(const std::string& name) {
    SatRecord satellite;
    satellite.Name = name;
    satellite.SatNumber = "24946";
    return satellite;
}

TEST(IridiumFamily, TheWordCountsInAnyCaseAndAnywhere) {
    EXPECT_TRUE(IsIridiumName(NamedSatellite("IRIDIUM 7 [-]")));
    EXPECT_TRUE(IsIridiumName(NamedSatellite("Iridium 33 DEB")));
    EXPECT_TRUE(IsIridiumName(NamedSatellite("old iridium")));
    EXPECT_TRUE(IsIridiumName(NamedSatellite("xIrIdIuMx")));
}

TEST(IridiumFamily, APartOfTheWordDoesNotCount) {
    EXPECT_FALSE(IsIridiumName(NamedSatellite("IRIDIU")));
    EXPECT_FALSE(IsIridiumName(NamedSatellite("RIDIUM 7")));
    EXPECT_FALSE(IsIridiumName(NamedSatellite("IRID IUM")));
    EXPECT_FALSE(IsIridiumName(NamedSatellite("")));
}

TEST(IridiumFamily, ANewSatelliteGetsThreeAntennas) {
    SatRecord satellite = NamedSatellite("IRIDIUM 7 [-]");
    ApplyDefaultModel(satellite);
    const SurfaceModel& model = satellite.Surface;
    EXPECT_EQ(model.OrientationType, 0);
    EXPECT_EQ(model.ModelFlags, "1" + std::string(28, '0'));
    ASSERT_EQ(model.MirrorCount, 3);
    EXPECT_TRUE(HasFlareModel(satellite));

    const char* const names[] = {"F", "L", "R"};
    const double angles[] = {0, 120, -120};
    for (int i = 1; i <= 3; ++i) {
        const MirrorRecord& mirror = model.Mirror(i);
        EXPECT_EQ(mirror.MirrorName, names[i - 1]);
        EXPECT_EQ(mirror.MirrorID, std::string("IRIDIUM_") + names[i - 1]);
        EXPECT_EQ(mirror.MirrorOrigin, "0");
        EXPECT_EQ(mirror.MirrorSpare, "");
        EXPECT_EQ(mirror.Angle, angles[i - 1]);
        EXPECT_EQ(mirror.Tilt, 40);
        EXPECT_EQ(mirror.ScatterFactor, 5);
        EXPECT_EQ(mirror.Spare1, 1);
        EXPECT_EQ(mirror.Spare2, 0);
        EXPECT_EQ(mirror.Spare3, 1);
        EXPECT_EQ(mirror.MirrorJD, 0);
    }
    EXPECT_TRUE(model.Mirror(0).MirrorName.empty());
    EXPECT_TRUE(model.Mirror(0).MirrorID.empty());
}

TEST(IridiumFamily, OtherSatellitesGetAnEmptyModel) {
    SatRecord satellite = NamedSatellite("IRIDI 7");
    ApplyDefaultModel(satellite);
    EXPECT_EQ(satellite.Surface.MirrorCount, 0);
    EXPECT_EQ(satellite.Surface.ModelFlags, std::string(29, '0'));
    EXPECT_FALSE(HasFlareModel(satellite));
}

TEST(IridiumFamily, TheAntennasAreAppendedAndStopAtAFullList) {
    SatRecord satellite = NamedSatellite("IRIDIUM 7");
    satellite.Surface.MirrorCount = 18;
    satellite.Surface.Mirror(18).MirrorName = "mine";
    satellite.Surface.OrientationType = 2;
    ApplyIridiumModel(satellite);
    EXPECT_EQ(satellite.Surface.MirrorCount, 20);
    EXPECT_EQ(satellite.Surface.Mirror(18).MirrorName, "mine");
    EXPECT_EQ(satellite.Surface.Mirror(19).MirrorName, "F");
    EXPECT_EQ(satellite.Surface.Mirror(20).MirrorName, "L");
    EXPECT_EQ(satellite.Surface.OrientationType, 0);
}

TEST(Defaults, TheHeaderIsResetAndTheSurfacesAreLeft) {
    SatRecord satellite = NamedSatellite("COSMOS");
    SurfaceModel& model = satellite.Surface;
    model.ModelFlags = "1abc";
    model.OrientationType = 3;
    model.ModelSpareA = {9, 9, 9, 9};
    model.ModelSpareB = 9;
    model.ModelSpareC = 9;
    model.RotAxisDEC = 0.2;
    model.RotAxisRA = 0.3;
    model.ModelSpareD = 9;
    model.TargetSatID = 25544;
    model.MirrorCount = 2;
    model.Mirror(2).MirrorName = "panel";

    ResetModelHeader(satellite);
    EXPECT_EQ(model.ModelFlags, "00000000000000000000000000000");
    EXPECT_EQ(model.OrientationType, 0);
    for (const double spare : model.ModelSpareA) EXPECT_EQ(spare, 1);
    EXPECT_EQ(model.ModelSpareB, 0);
    EXPECT_EQ(model.ModelSpareC, 1);
    EXPECT_EQ(model.RotAxisDEC, 1);
    EXPECT_EQ(model.RotAxisRA, 1);
    EXPECT_EQ(model.ModelSpareD, 1);
    EXPECT_EQ(model.TargetSatID, 0);
    EXPECT_EQ(model.MirrorCount, 2);
    EXPECT_EQ(model.Mirror(2).MirrorName, "panel");
}

TEST(Defaults, ClearingTheSurfacesLeavesTheirNamesAndDates) {
    SatRecord satellite = NamedSatellite("COSMOS");
    SurfaceModel& model = satellite.Surface;
    model.MirrorCount = 20;
    for (const int i : {0, 1, 20}) {
        MirrorRecord& mirror = model.Mirror(i);
        mirror.MirrorName = "panel";
        mirror.MirrorID = "1_panel";
        mirror.MirrorJD = 2458138.5;
        mirror.Angle = 30;
        mirror.Tilt = 40;
        mirror.Spare1 = mirror.Spare2 = mirror.Spare3 = 7;
    }
    ResetMirrors(satellite);
    EXPECT_EQ(model.MirrorCount, 0);
    for (const int i : {1, 20}) {
        const MirrorRecord& mirror = model.Mirror(i);
        EXPECT_EQ(mirror.MirrorName, "panel");
        EXPECT_EQ(mirror.MirrorJD, 2458138.5);
        EXPECT_EQ(mirror.MirrorOrigin, "0");
        EXPECT_EQ(mirror.MirrorSpare, "0000000000000000000000000000");
        EXPECT_EQ(mirror.MirrorID, "0");
        EXPECT_EQ(mirror.Angle, 0);
        EXPECT_EQ(mirror.Tilt, 0);
        EXPECT_EQ(mirror.Spare1, 1);
        EXPECT_EQ(mirror.Spare2, 0);
        EXPECT_EQ(mirror.Spare3, 1);
        EXPECT_EQ(mirror.ScatterFactor, 5);
    }
    EXPECT_EQ(model.Mirror(0).MirrorID, "1_panel");
}

TEST(AddMirror, ANewSurfaceIsTheUsersAndBearsTheInstantOfItsFit) {
    SatRecord satellite = NamedSatellite("USA 81");
    satellite.SatNumber = " 5   ";
    ApplyDefaultModel(satellite);
    RecordingBoxes boxes;
    UsageStats usage;
    ASSERT_EQ(CAddMirror(satellite, 2458138.75, boxes, usage), 1);
    const MirrorRecord& mirror = satellite.Surface.Mirror(1);
    EXPECT_EQ(satellite.Surface.MirrorCount, 1);
    EXPECT_EQ(mirror.MirrorName, "UM1");
    EXPECT_EQ(mirror.MirrorID, "5_UM1");
    EXPECT_EQ(mirror.MirrorOrigin, "1");
    EXPECT_EQ(mirror.MirrorSpare, "000000000000000000000000000000");
    EXPECT_EQ(mirror.MirrorJD, 2458138.75);
    EXPECT_EQ(mirror.Angle, 0);
    EXPECT_EQ(mirror.Tilt, 0);
    EXPECT_EQ(mirror.ScatterFactor, 1);
    EXPECT_EQ(usage.MirrorAddCount, 1);
    EXPECT_TRUE(boxes.messages.empty());
    EXPECT_FALSE(HasFlareModel(satellite)) << "its attitude has not been chosen yet";
}

TEST(AddMirror, AFreshRecordIsCalledUserDefinedAndHasNoIdentifier) {
    MirrorRecord mirror;
    mirror.MirrorID = "0";
    mirror.Angle = 12;
    InitMirrorRecord(mirror, 2451545.0);
    EXPECT_EQ(mirror.MirrorName, "User Defined");
    EXPECT_EQ(mirror.MirrorID, "");
    EXPECT_EQ(mirror.Angle, 0);
    EXPECT_EQ(mirror.MirrorJD, 2451545.0);
}

TEST(AddMirror, NumbersGoOnBehindTheGreatestInUse) {
    SatRecord satellite = NamedSatellite("IRIDIUM 7");
    ApplyDefaultModel(satellite);
    RecordingBoxes boxes;
    UsageStats usage;
    EXPECT_EQ(CAddMirror(satellite, 1, boxes, usage), 4);
    EXPECT_EQ(satellite.Surface.Mirror(4).MirrorID, "24946_UM1");
    satellite.Surface.Mirror(4).MirrorID = "24946_UM9";
    satellite.Surface.Mirror(2).MirrorID = "25544_UM12 old";
    EXPECT_EQ(NextUserMirrorName(satellite.Surface), "UM13");
    satellite.Surface.MirrorCount = 1;
    EXPECT_EQ(NextUserMirrorName(satellite.Surface), "UM1") << "entries behind the count are not read";
}

TEST(AddMirror, DamagedNumbersDoNotSpoilTheNaming) {
    SurfaceModel model;
    model.MirrorCount = 4;
    model.Mirror(1).MirrorID = "1_UM1e300";
    model.Mirror(2).MirrorID = "1_UM-7";
    model.Mirror(3).MirrorID = "1_UM";
    model.Mirror(4).MirrorID = "1_UM2.9";
    EXPECT_EQ(NextUserMirrorName(model), "UM3");
}

TEST(AddMirror, TheTwentyFirstIsRefused) {
    SatRecord satellite = NamedSatellite("USA 81");
    RecordingBoxes boxes;
    UsageStats usage;
    for (int i = 1; i <= 20; ++i) ASSERT_EQ(CAddMirror(satellite, 2458138.5, boxes, usage), i);
    EXPECT_EQ(CAddMirror(satellite, 2458139.5, boxes, usage), 0);
    EXPECT_EQ(satellite.Surface.MirrorCount, 20);
    EXPECT_EQ(satellite.Surface.Mirror(20).MirrorName, "UM20");
    EXPECT_EQ(satellite.Surface.Mirror(20).MirrorJD, 2458138.5);
    EXPECT_EQ(usage.MirrorAddCount, 20);
    ASSERT_EQ(boxes.messages.size(), 1U);
    EXPECT_EQ(boxes.messages[0].text, "Already too many mirrors");
    EXPECT_EQ(boxes.messages[0].icon, MessageIcon::Warning);
}

TEST(MirrorID, ItFollowsTheNameAndStaysTiedToItsFirstSatellite) {
    SatRecord satellite = NamedSatellite("USA 81");
    satellite.Surface.MirrorCount = 1;
    MirrorRecord& mirror = satellite.Surface.Mirror(1);
    mirror.MirrorName = "door";
    MakeMirrorID(satellite, 1);
    EXPECT_EQ(mirror.MirrorID, "24946_door");

    SatRecord other = NamedSatellite("USA 82");
    other.SatNumber = "25000";
    other.Surface = satellite.Surface;
    other.Surface.Mirror(1).MirrorName = "back_door";
    MakeMirrorID(other, 1);
    EXPECT_EQ(other.Surface.Mirror(1).MirrorID, "24946_back_door");
    EXPECT_EQ(mirror.MirrorID, "24946_door");
}

TEST(MirrorLine, IndicesBelowTenHaveALeadingZero) {
    SurfaceModel model;
    model.Mirror(9).MirrorName = "bus";
    model.Mirror(12).MirrorName = "dish";
    EXPECT_EQ(MakeMirrorIDS(model, 9), "M#09 - bus");
    EXPECT_EQ(MakeMirrorIDS(model, 12), "M#12 - dish");
}

TEST(MirrorLine, ADateAppearsOnlyWhenTheSurfaceWasFitted) {
    SurfaceModel model;
    model.Mirror(1).MirrorName = "UM1";
    EXPECT_EQ(MakeMirrorIDS(model, 1), "M#01 - UM1");
    model.Mirror(1).MirrorJD = 2451545.25;  // 1 January 2000, 18:00
    const std::string line = MakeMirrorIDS(model, 1);
    EXPECT_EQ(line.substr(0, 18), "M#01 - 01/01/2000 ");
    EXPECT_EQ(line.substr(line.size() - 6), " - UM1");
}

TEST(ScatterFactor, IsHeldBetween1And50) {
    EXPECT_EQ(ClampScatterFactor(0.999), 1);
    EXPECT_EQ(ClampScatterFactor(-3), 1);
    EXPECT_EQ(ClampScatterFactor(1), 1);
    EXPECT_EQ(ClampScatterFactor(7.25), 7.25);
    EXPECT_EQ(ClampScatterFactor(49.999), 49.999);
    EXPECT_EQ(ClampScatterFactor(50), 50);
    EXPECT_EQ(ClampScatterFactor(1e300), 50);
    EXPECT_EQ(ClampScatterFactor(std::numeric_limits<double>::quiet_NaN()), 1);
}

TEST(IdentityText, TheNameStandsFromColumn22) {
    SatRecord satellite = NamedSatellite("IRIDIUM 7");
    satellite.OrbitNumber = 42;
    EXPECT_EQ(SatelliteIdentityText(satellite), "[XOO] 0042 (24946)   IRIDIUM 7");
    EXPECT_EQ(SatelliteIdentityText(satellite).find("IRIDIUM"), 21U);
}

TEST(ModelGates, AnEmptyModelDoesNotFlare) {
    SatRecord satellite = NamedSatellite("COSMOS");
    satellite.Surface.ModelFlags[0] = '1';
    for (int type = 0; type <= 4; ++type) {
        satellite.Surface.OrientationType = type;
        EXPECT_FALSE(HasFlareModel(satellite));
    }
}

TEST(ModelGates, AnUndefinedModelKeepsItsSurfacesAndDoesNotFlareUntilAnAttitudeIsChosen) {
    SatRecord satellite = NamedSatellite("IRIDIUM 7");
    ApplyDefaultModel(satellite);
    satellite.Surface.ModelFlags[0] = '0';
    EXPECT_FALSE(HasFlareModel(satellite));
    EXPECT_EQ(satellite.Surface.MirrorCount, 3);
    satellite.Surface.ModelFlags[0] = '1';
    EXPECT_TRUE(HasFlareModel(satellite));
    satellite.Surface.ModelFlags.clear();
    EXPECT_FALSE(HasFlareModel(satellite));
}

TEST(ModelGates, OnlyTheFiveAttitudeTypesFlare) {
    SatRecord satellite = NamedSatellite("IRIDIUM 7");
    ApplyDefaultModel(satellite);
    for (int type = 0; type <= 4; ++type) {
        satellite.Surface.OrientationType = type;
        EXPECT_TRUE(HasFlareModel(satellite)) << type;
    }
    for (const int type : {-1, 5, 1000}) {
        satellite.Surface.OrientationType = type;
        EXPECT_FALSE(HasFlareModel(satellite)) << type;
    }
}

}  // namespace
}  // namespace glintara
