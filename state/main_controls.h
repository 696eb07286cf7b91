#pragma once

// The controls of the main window. A menu entry that mirrors a check box is paired with it in core/options.

#include <array>
#include <cstddef>
#include <string>

#include "state/controls.h"
#include "state/saved_view.h"

namespace glintara {

/// Entry of `MnuTransitMode` that turns the search and the tracks from flares to transits.
inline constexpr std::size_t kTransitEntry = 1;

/// The controls of the main window, as they stand when the program starts.
struct MainControls {
    MainControls() {
        MnuTransitMode[0].Visible = false;
        MnuViewX[0].Visible = false;
        for (std::size_t n = 1; n <= kViewCount; ++n) {
            MnuViewX[n].Caption = "View " + std::to_string(n);
            CEnterView[n].Caption = CSaveView[n].Caption = std::to_string(n);
        }
        MnuSave.Enabled = false;
        MnuLoad.Enabled = false;
        MnuLib3D.Enabled = false;
        MnuLib3D.ToolTip =
            "Can be used after a view or a workspace was loaded; while it is checked, pictures are drawn one over the "
            "other, without land";
        LFInfo.Visible = false;
        LElementAge.Visible = false;
        FSkyMouse.Visible = false;
        CNOSSFlare.Acts = false;
    }

    // Texts.
    Label LCommandOutput{"", "What the last command did"};
    Label LDateTime{"", "The date and time shown, UTC or local; a double click, or Ctrl+G, lets you type another"};
    Label LJD{"", "Julian date, local sidereal time, and the observer's place"};
    Label LStatus{"", "What lies under the mouse"};
    Label LSatDetail{"", "Height of the working satellite over the ground"};
    Label LFPS{"", "Pictures in the last second"};
    Label LElementAge{"",
                      "Orbits change: elements tell them well near their own date only"};  ///< shown when that is far
    Label LFInfo;                                          ///< the box beside an object that the mouse rests on
    TextBox TTLE{"", "Paste element sets here"};  ///< sets that wait to be admitted; lines end in CR LF

    // Panels.
    Frame FrameInfo{"Info", "Click for the other panels"};
    Frame FrameTime{"Time"};
    Frame FrameStar{"Star"};
    Frame FrameOrbit{"Orbit"};
    Frame FrameSat{"Satellite"};
    Frame FrameDraw{"Draw"};
    Frame FrameViews{"Views"};

    // Element sets.
    Button CApplyTLEOrbit{"Add TLE", "Add every satellite of the text to the list"};
    Button CUpdateTLE{"Update TLE", "Replace the satellites that are in the list already and add the others"};
    Button CChangeOrbit{"Next", "Show the next satellite of the list: the first of it takes the working one's place"};
    Button CClearOrbitList{"Clear List", "Remove all satellites from the list, after a question"};

    // Clock.
    CheckBox CRealTime{"Run Time", "Let the clock run (R)", true};
    CheckBox CLocalTime{"Local Time", "Show local time instead of UTC"};
    Button CYearOffsetInc{"+", "One year later (Y)"};
    Button CYearOffsetDec{"\u2212", "One year earlier (Shift+Y)"};
    Button CMonthOffsetInc{"+", "One month later (E)"};
    Button CMonthOffsetDec{"\u2212", "One month earlier (Shift+E)"};
    Button CDayOffsetInc{"+", "One day later (D)"};
    Button CDayOffsetDec{"\u2212", "One day earlier (Shift+D)"};
    Button CHourOffsetInc{"+", "One hour later (H)"};
    Button CHourOffsetDec{"\u2212", "One hour earlier (Shift+H)"};
    Button CMinuteOffsetInc{"+", "One minute later (M)"};
    Button CMinuteOffsetDec{"\u2212", "One minute earlier (Shift+M)"};
    Button CSecondOffsetInc{"+", "One second later (S)"};
    Button CSecondOffsetDec{"\u2212", "One second earlier (Shift+S)"};
    Button CMilliInc{"+", "A tenth of a second later"};
    Button Command3{"\u2212", "A tenth of a second earlier"};
    Button CTOrbInc{"Orbit +", "One revolution of the working satellite later"};
    Button CTOrbDec{"Orbit \u2212", "One revolution of the working satellite earlier"};
    Button CClearTimeOffset{"Clear", "Back to the time of the clock (0)"};

    // Orbit model: one of the two is set.
    OptionButton CSGP1{"SGP1", "Employ a simplified SGP1 model for the orbit propagation"};
    OptionButton CSGP4{"SGP4/SDP4",
                       "Employ the SGP4/SDP4 model for the orbit propagation (Revised SpaceTrack Report No.3)", true};

    // Orbits and satellites.
    CheckBox CPlotOrbit{"Plot Orbit", "Draw the orbit in space (O)"};
    CheckBox CPlotOrbitOverTime{"ECEF Plotting", "Draw the orbit as flown over the turning Earth (Shift+O)"};
    CheckBox CProjectOrbit{"Project Orbit On The Earth", "Draw the orbit on the ground (J)"};
    CheckBox CProjectOverTime{"ECEF Projection", "Draw the ground track as flown over the turning Earth (Shift+J)"};
    CheckBox CProjectOrbitOnSky{"Project Orbit On The Local Sky", "Draw the orbit as the observer sees it (P)"};
    CheckBox CSatOnly{"Hide All Orbit Traces", "Draw the satellites without their orbits"};
    CheckBox CSatNames{"Show Satellite Names", "Write the names beside the satellites", true};
    CheckBox CSatCircle{"Satellite Visibility Circle", "Circle round the places that see the satellite"};
    CheckBox CDrawArea{"Local Visibility Circle",
                       "Circle round the observer in which the satellite must stand to be seen (A)"};
    CheckBox C2OrbitDetails{"Orbit Details", "List the elements of the working satellite in the picture (.)"};
    CheckBox CThinLines{"Use Thin Lines", "Draw orbits as thin lines"};
    Label LOrbit{"", "Length of the orbit drawn, and the period of the working satellite"};
    Button COrbitTurnInc{"+", "Draw a sixth of a revolution more (+)"};
    Button COrbitTurnDec{"\u2212", "Draw a sixth of a revolution less (-)"};
    Button CTurnOne{"1", "Draw one revolution (/)"};

    // Flares and transits.
    CheckBox CIridiumFlares{"Show Satellite Flares/Shadows", "Mark where the light of each surface falls (I)", true};
    CheckBox CFlareTrack{"Flare/Tr Track", "Draw the way of the reflected light over the ground"};
    CheckBox CDayFlares{"Include Day Time Tracks",
                        "Checking this option also day flares will be tracked (Sun above the horizont for the "
                        "location of the flare centre)."};
    CheckBox CAntennaID{"Show Flaring Surface ID", "Write the name of the surface beside its flare"};
    CheckBox CMoonFlares{"Moon Light Flare/Shadow",
                         "Use the Moon as light source for flare plotting (No supported yet for flare tracking)"};
    CheckBox CNOSSFlare{"NOSS Flare", "Show the flares of satellites that fly in formation"};
    std::array<MenuEntry, 2> MnuTransitMode{MenuEntry{}, MenuEntry{"Transit Mode"}};  ///< only `kTransitEntry` is shown

    // The Earth.
    CheckBox CPlaniSphere{"2D Rendering", "Show the Earth as a flat map"};
    CheckBox CSunLight{"Sun Light", "Darken the night side (G)", true};
    CheckBox CSolidGlobe{"Solid Globe", "Fill the land", true};
    CheckBox CGlobeGrid{"Globe Grid", "Draw parallels and meridians", true};
    CheckBox CHideCountries{"Hide Countries", "Leave the borders out"};
    CheckBox CHCircle{"Horizon Circle", "Circle 90 degrees from the observer, on the Earth and on the sky"};
    CheckBox CDrawAries{"Aries Line", "Line towards the first point of Aries"};
    CheckBox CAstroDetails{"Astronomical Details", "List the places of Sun and Moon in the picture (,)"};
    CheckBox CAutoRefine{"Auto Fine Plot", "Draw a fine picture when nothing has changed for a while (Shift+A)"};

    // The sky.
    CheckBox CDrawSky{"Draw Sky", "Draw the stars and the sky around the Earth"};
    CheckBox CDrawBackStars{"Back Stars", "Draw the stars behind the Earth", true};
    CheckBox CDrawFrontStars{"Front Stars", "Draw the stars in front of the Earth"};
    CheckBox CLocalSky{"Visible Sky Only", "Draw only what stands above the observer's horizon"};
    CheckBox CDrawSun{"Sun and Moon", "Draw the Sun and the Moon", true};
    CheckBox CDrawConstallations{"Constellations", "Join the stars of the constellations by lines (C)", true};
    CheckBox CStarNames{"Star Names", "Write the names beside the stars"};
    CheckBox CSkyCircle{"Sky Circle", "Draw the edge of the sky"};
    CheckBox CFlatSky{"Flat Sky", "Unroll the sky into a chart"};
    CheckBox CReverseSky{"Reverse Sky", "Swap left and right, as in a chart held overhead (X)"};
    CheckBox CMaximizeSky{"Maximize Sky", "Fit the sky into the picture at any zoom (Z)"};
    CheckBox CStarsOnGlobe{"Stars On Globe", "Put the stars on the Earth, over the places below them"};
    CheckBox CSkyOnly{"Hide Earth", "Show the sky without the Earth"};
    CheckBox CAutoMag{"Auto Select Max Magnitude", "Show fainter stars as you zoom in"};
    Label LMaxStarMag{"", "Magnitude of the faintest star shown"};
    Label LStarSize{"", "How much larger a star is drawn with each magnitude, 0 to 30"};
    Button CStarSizeInc{"+", "Draw bright stars larger"};
    Button CStarSizeDec{"\u2212", "Draw bright stars smaller"};
    Button CMaxMagInc{"+", "Show fainter stars (B)"};
    Button CMaxMagDec{"\u2212", "Show brighter stars only (Shift+B)"};
    Button CToggleSkyEarth{"Sky/Earth", "Show the sky alone, or the Earth (Q)"};
    Button CSkyChartSphere{"Sky Chart/Sphere", "Show the sky as a chart, or as a sphere (W)"};
    Frame FSkyMouse{"Sky Pointer"};  ///< shown while the pointer is on
    Label LSkyMousePlace{"", "Declination and right ascension of date under the pointer"};
    Label LSkyMouseFOV{"", "Width of the pointer's circle (Ctrl and left button)"};
    Label LSkyMouseTAcc{"", "Uncertainty of the time (Alt and left button)"};

    // The view.
    CheckBox CLockSky{"Lock On Sky", "Keep the stars still while the Earth turns (K)"};
    CheckBox CLockSatellite{"Lock On Satellite", "Keep the view on the working satellite (L)"};
    Button CZenith{"Zenith Orientation", "Look down on the observer (F4)"};
    Button CUpOrientation{"Up Orientation", "Put the observer on top of the Earth (F7)"};
    Button CNoon{"Noon Orientation", "Look from the Sun (F2)"};
    Button CNightOrientation{"Midnight Orientation", "Look at the middle of the night side (F3)"};
    Button CZeroOrientation{"Zero Orientation", "Look at latitude 0 and longitude 0 (F5)"};
    Button COrbitOrient{"Orbit Orientation", "Look at the working satellite's orbit from above (F6)"};
    Button CRefreshDraw{"Fine Plot", "Draw a fine picture now (F8)"};
    std::array<Button, kViewCount + 1> CEnterView;  ///< from index 1; lit where a view is kept
    std::array<Button, kViewCount + 1> CSaveView;

    // Map tools, for developers.
    Button CSaveBinDbg{"Save Map Files", "Write the five map files from the tables in memory"};
    Button CSavePolDbg{"Save Reduced Borders as Text", "Write the reduced borders to countryzip.txt"};
    Button CSaveDbg{"Save Sea Spots as Text", "Write the sea spots to SeaSpot.txt"};
    Button CPolDbg{"Select Vertex", "Select the vertex of the fine borders that is nearest to the mouse"};
    Button CPrevBorderDbg{"Previous Vertex", "Select the vertex before the selected one"};
    Button CNextBorderDbg{"Next Vertex", "Select the vertex after the selected one"};
    Button CNewPolDbg{"New Polygon", "Let the next vertex that is added begin a polygon"};
    Button CAddPolDbg{"Add Vertex", "Add the selected vertex to the reduced borders"};

    // Menu: File.
    MenuEntry MnuFile{"File"};
    MenuEntry MnuLoad{"Reload Workspace"};
    MenuEntry MnuOpenAs{"Open Workspace..."};
    MenuEntry MnuSave{"Save Workspace"};
    MenuEntry MnuSaveAs{"Save Workspace as..."};
    MenuEntry MnuSaveStartUp{"Save as Start-up Workspace"};
    MenuEntry MnuUpdateCheck{"Update and News Check"};
    MenuEntry MnuLoadTLE{"Load TLE file..."};
    MenuEntry MnuSavePicture{"Save picture...", "Keep the picture as it is shown in a PNG file"};
    MenuEntry MnuPrintPicture{"Print picture...", "Print the picture as it is shown"};
    MenuEntry MnuExit{"Exit"};

    // Menu: Draw.
    MenuEntry MnuTDraw{"Draw"};
    MenuEntry MnuRealTime{"Run Time"};
    MenuEntry MnuAutoRefine{"Auto Fine Plot"};
    MenuEntry MnuGoToDate{"Go to Date..."};  ///< Ctrl+G, or a double click on `LDateTime`
    MenuEntry MnuLib3D{"OpenGL"};
    MenuEntry Mnu2D{"2D Rendering"};
    MenuEntry MnuMarkCities{"Mark Cities"};
    MenuEntry MnuSunLight{"Sun Light"};
    MenuEntry MnuDrawSky{"Draw Sky"};
    MenuEntry MnuGlobeGrid{"Globe Grid"};
    MenuEntry MnuSolidGlobe{"Solid Globe"};
    MenuEntry MnuVisibilityArea{"Local Visibility Circle"};
    MenuEntry MnuSatCircle{"Satellite Visibility Circle"};
    MenuEntry MnuAriesLine{"Aries Line"};
    MenuEntry MnuAstroDetails{"Astronomical Details"};
    MenuEntry MnuOrbitDetails{"Orbit Details"};
    MenuEntry MnuSatelliteNames{"Show Satellite Names"};
    MenuEntry MnuHideCountries{"Hide Countries"};
    MenuEntry MnuSkyOnly{"Hide Earth"};
    MenuEntry MnuThinLines{"Use Thin Lines"};
    MenuEntry MnuToggleSkyEarth{"Toggle Sky/Earth"};

    // Menu: Sky.
    MenuEntry MnuTSky{"Sky"};
    MenuEntry MnuDrawSkyMap{"Draw Sky Map"};
    MenuEntry MnuAutoMag{"Auto Select Max Magnitude"};
    MenuEntry MnuAtmo{"Show Atmosphere"};
    MenuEntry MnuLocalSky{"Visible Sky Only"};
    MenuEntry MnuStarsOnGlobe{"Stars On Globe"};
    MenuEntry MnuDrawSun{"Sun and Moon"};
    MenuEntry MnuConstellations{"Constellations"};
    MenuEntry MnuStarNames{"Star Names"};
    MenuEntry MnuFrontStars{"Front Stars"};
    MenuEntry MnuBackStars{"Back Stars"};
    MenuEntry MnuSkyCircle{"Sky Circle"};
    MenuEntry MnuMaximizeSky{"Maximize Sky"};
    MenuEntry MnuReverseSky{"Reverse Sky"};
    MenuEntry MnuFlatSky{"Flat Sky"};

    // Menu: Satellites.
    MenuEntry MnuSatellites{"Satellites"};
    MenuEntry MnuPlotOrbit{"Plot Orbit"};
    MenuEntry MnuPlotOrbitOverTime{"ECEF Plotting"};
    MenuEntry MnuProjectOrbit{"Project Orbit On The Earth"};
    MenuEntry MnuProjectOverTime{"ECEF Projection"};
    MenuEntry MnuProjectOrbitOnSky{"Project Orbit On The Local Sky"};
    MenuEntry MnuHideOrbits{"Hide All Orbit Traces"};
    MenuEntry MnuSatInfo{"Satellite Info..."};
    MenuEntry MnuDownloadTLE{"Download TLE From Internet..."};
    MenuEntry MnuManageSatellites{"Manage Satellite List..."};
    MenuEntry MnuChangeOrbit{"Next Satellite"};           ///< `CChangeOrbit`
    MenuEntry MnuClearOrbitList{"Clear Satellite List"};  ///< `CClearOrbitList`

    // Menu: Propagation.
    MenuEntry MnuModelS{"Propagation"};
    MenuEntry MnuSGP1{"SGP1"};
    MenuEntry MnuSGP4{"SGP4/SDP4"};
    MenuEntry MnuObservations{"Observations..."};

    // Menu: Tracking.
    MenuEntry MnuTFlares{"Tracking"};
    MenuEntry MnuModelSatSurfaces{"Model Satellite Surfaces..."};
    MenuEntry MnuFindFlare{"Search Flares/Transits..."};
    MenuEntry MnuExportTrack{"Export Flare/Transit Track"};
    MenuEntry mnuFindCityTrack{"Find Cities along Track"};
    MenuEntry MnuIridiumFlares{"Show Satellite Flares/Shadows"};
    MenuEntry MnuFlareTrack{"Show Flare/Transit Tracks"};
    MenuEntry MnuDayFlares{"Include Day Time Tracks"};
    MenuEntry MnuAntennaID{"Show Flaring Surface ID"};
    MenuEntry MnuMoonFlares{"Moon Light Flare/Shadow"};

    // Menu: View.
    MenuEntry MnuView{"View"};
    MenuEntry MnuFinePlot{"Fine Plot"};
    MenuEntry MnuZenithOrient{"Zenith Orientation"};
    MenuEntry MnuUpOrientation{"Up Orientation"};
    MenuEntry MnuNoon{"Noon Orientation"};
    MenuEntry MnuMidnight{"Midnight Orientation"};
    MenuEntry MnuZeroOrient{"Zero Orientation"};
    MenuEntry MnuOrbitOrient{"Orbit Orientation"};
    MenuEntry MnuLockSky{"Lock On Sky"};
    MenuEntry MnuLockSatellite{"Lock On Satellite"};
    std::array<MenuEntry, kViewCount + 1> MnuViewX;
    MenuEntry MnuFullScreen{"Full Screen/Window"};

    // Menu: Quick.
    MenuEntry MnuTQuick{"Quick"};
    MenuEntry MnuQResetView{"Reset View"};
    MenuEntry MnuQSkyChart{"Sky Chart"};
    MenuEntry MnuQHorizontView{"Horizont View"};
    MenuEntry MnuQLHView{"Real, Locked, Horizont View"};

    // Menu: Settings.
    MenuEntry MnuTSettings{"Settings"};
    MenuEntry MnuLocalSettings{"Local Settings..."};
    MenuEntry MnuFloatingSite{"Floating Site"};
    MenuEntry MnuTwilight{"Twilight Settings..."};
    MenuEntry MnuRTimeStep{"Real Time Step..."};
    MenuEntry MnuCities{"Cities..."};
    MenuEntry MnuNoUTC{"UTC Time"};  ///< checked while `CLocalTime` is clear
    MenuEntry MnuColors{"Colors and other Settings..."};

    // Menu: Help.
    MenuEntry MnuTHelp{"Help"};
    MenuEntry MnuTips{"Basic Instructions"};
    MenuEntry MnuHelp{"Help"};
    MenuEntry MnuAbout{"About"};

    // Menu: Map Tools, for developers.
    MenuEntry MnuMapTools{"Map Tools"};

    // Timers. Those of interval 0 get one when they are started.
    Timer Timer1{100};               ///< starts the opening
    Timer Timer2;                    ///< makes the coarse picture
    Timer Timer3{15000};             ///< makes the fine picture
    Timer Timer4;                    ///< a short wait in the opening
    Timer Timer5{1000};              ///< the tick of the clock; to be precise
    Timer Timer7{1000, true};        ///< shows the frame rate
    Timer TimerFastRefresh{10};      ///< a picture as often as possible
    Timer TimerHRot;                 ///< turns the globe
    Timer TimerResize{100};          ///< a picture after the window has taken its size
    Timer TimerSkyFine;              ///< draws the stars finely after a drag
    Timer TimerViewShow{5000};       ///< shows the kept views in turn
    Timer Timer_InfoHider;           ///< hides `LFInfo`
    Timer Timer_ObjectFinder{2000};  ///< looks what the mouse rests on

    static constexpr std::size_t kTimerCount = 13;

    /// All timers, for whoever owns the clock.
    std::array<Timer*, kTimerCount> Timers() {
        return {&Timer1,
                &Timer2,
                &Timer3,
                &Timer4,
                &Timer5,
                &Timer7,
                &TimerFastRefresh,
                &TimerHRot,
                &TimerResize,
                &TimerSkyFine,
                &TimerViewShow,
                &Timer_InfoHider,
                &Timer_ObjectFinder};
    }
};

}  // namespace glintara
