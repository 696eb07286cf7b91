/* glintcore: the engine of Glintara behind a C interface.
 *
 * Orbit propagation (SGP4/SDP4), precession, the geometry and search of flares, and the drawing of countries and stars.
 * Usable from C, C++ and any language that calls C.
 *
 * Contract
 *
 *   Memory      No call allocates, none keeps a pointer that it was given.
 *   State       The library remembers two things between calls: the observer's place and the pair of precession epochs.
 *               Everything about a satellite is in the caller's EngineBlock.
 *   Threads     Once place and epochs are set, all other calls may run in parallel, each on a block of its own. Calls
 *               on one block are to be made one at a time. Satellite_SetSiteGeoPosition and Satellite_SetPrecession are
 *               to be called while no other call runs.
 *   Errors      No call throws, and none crashes on bad numbers, bad text or null pointers. What a null pointer does is
 *               told for every argument. No number handed out is ever infinite or no number.
 *   Ranges      Instants are Julian dates (UTC) from GLINTCORE_FIRST_JD to GLINTCORE_LAST_JD, observers stand between
 *               GLINTCORE_LEAST_SITE_RADIUS and GLINTCORE_GREATEST_SITE_RADIUS from the Earth's centre, and a search
 *               covers up to GLINTCORE_LONGEST_SEARCH. What lies outside is refused at once, as each call tells.
 */
#ifndef GLINTCORE_H
#define GLINTCORE_H

#include <stdint.h>

#if defined(_WIN32)
#define GLINTCORE_API __declspec(dllexport)
#else
#define GLINTCORE_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* The version of this header. That of the library at hand is told by GlintcoreVersion. */
#define GLINTCORE_VERSION_MAJOR 1
#define GLINTCORE_VERSION_MINOR 5
#define GLINTCORE_VERSION_PATCH 2
#define GLINTCORE_VERSION (GLINTCORE_VERSION_MAJOR * 10000 + GLINTCORE_VERSION_MINOR * 100 + GLINTCORE_VERSION_PATCH)

/* What the library answers: instants (Julian dates), distances of an observer from the Earth's centre (metres), epochs
 * of precession (Julian years), and the length of a search (days). */
#define GLINTCORE_FIRST_JD 0.0
#define GLINTCORE_LAST_JD 1e7
#define GLINTCORE_LEAST_SITE_RADIUS 1e6
#define GLINTCORE_GREATEST_SITE_RADIUS 1e8
#define GLINTCORE_FIRST_EPOCH (-5000.0)
#define GLINTCORE_LAST_EPOCH 25000.0
#define GLINTCORE_LONGEST_SEARCH 366.0

/* Bytes of an engine block that only the engine reads. */
#define GLINTCORE_PRIVATE_BYTES 788

/* What the engine knows of one satellite, and where it last was. A plain value: it may be copied, stored and put back.
 * It is packed; its doubles lie at offsets that are no multiples of 8, so take their values, never their addresses. 860
 * bytes. */
#pragma pack(push, 1)
typedef struct EngineBlock {
    uint8_t Private[GLINTCORE_PRIVATE_BYTES]; /* filled by SatelliteInit, updated by Satellite_SGP4 */
    double InertialPosition[3];               /* last position, kilometres; the caller's to write */
    double InertialVelocity[3];               /* last velocity, kilometres per second; the caller's to write */
    double WorldPosition[3]; /* last position, Earth-fixed, in units of the site's radius; the caller's to write */
} EngineBlock;
#pragma pack(pop)

/* The camera and the options by which the engine draws. Packed like EngineBlock. Angles in radians; booleans are a
 * byte, any value but 0 is true. 204 bytes. */
#pragma pack(push, 1)
typedef struct GlintViewConfig {
    double SimTime; /* Julian date (UTC) */
    double ViewLon; /* place at the centre of the view; on the flat map, what it is shifted by */
    double ViewRoll;
    double ViewLat;
    double PanX; /* shift of the picture to the right and up, Earth radii; on the flat map, radians of it */
    double PanY;
    double ScaleX; /* pixels for one Earth radius; on the flat map, for one radian */
    double ScaleY;
    double HalfWidth; /* centre of the picture, pixels */
    double HalfHeight;
    double FramePanX; /* the pan of the Earth's disc, while PanX and PanY are those of the sky */
    double FramePanY;
    double SkyScale; /* radius of the star sphere, Earth radii */
    double MaxStarMag;
    double AutoMagLimit;
    double StarSizeScale;
    double Unused[6]; /* never read */
    double SiteLat;
    double SiteLon;
    int32_t StarCount; /* visible stars */
    uint8_t CDrawFrontStars;
    uint8_t CDrawBackStars;
    uint8_t CLocalSky;
    uint8_t CPlaniSphere; /* flat map instead of the globe */
    uint8_t CFlatSky;
    uint8_t CReverseSky;
    uint8_t CSkyOnly;
    uint8_t CStarNames;
} GlintViewConfig;
#pragma pack(pop)

/* Who paints. Positions are pixels, fractions included, x and y in turn, y downwards. No call may keep its pointers.
 * Members are added at the end only, and each call reads none but those that it tells: a program built against an older
 * header hands a shorter structure to the calls that it knows. Whoever hands one to a call that is new to it has to be
 * built against the header that tells that call. */
typedef struct GlintDrawTarget {
    void* self; /* handed back in each call */
    /* Fills `contours` closed contours as one shape by the odd-even rule with the current brush, without an outline.
     * `contourEnds` holds for each contour the number of points up to its end, those of the contours before it
     * included. Null: nothing is filled. */
    void (*fill)(void* self, const double* xy, const int32_t* contourEnds, int32_t contours);
    /* Draws an open line through `points` points, at least two, with the current pen. Null: no outlines. */
    void (*line)(void* self, const double* xy, int32_t points);
    /* Adds a star to the picture: a soft round dot of light. `radius` in pixels of a screen at scale 1, whatever the
     * display; `color` 0xBBGGRR; `weight` above 0 to 1, how much of its light. Read by Satellite_DrawStars only. Null:
     * no stars. */
    void (*dot)(void* self, double x, double y, double radius, uint32_t color, double weight);
} GlintDrawTarget;

/* A star as Satellite_DrawStars takes it. 72 bytes. */
typedef struct GlintStar {
    char Name[16];      /* zero-terminated; not read */
    double Magnitude;   /* visual */
    double Declination; /* of date, radians */
    double RightAscension;
    double ColorIndex; /* B-V, magnitudes; a number that is none counts as that of a white star */
    uint8_t Rest[24];  /* only the engine's: zeros to begin with, and whatever it leaves there afterwards */
} GlintStar;

/* Scratch memory for Satellite_DrawEarth, in doubles, that is always enough for polygons of up to `n` vertices. */
#define GLINTCORE_DRAW_SCRATCH(n) (48 * (n) + 8192)

/* Light sources of flares. Any other number is taken as the Sun. */
#define GLINTCORE_SUN 0
#define GLINTCORE_MOON 1

/* Geometry codes of flares: how a mirror is carried around the orbit. Any other number has no flares. */
#define GLINTCORE_TRANSIT (-1)   /* no mirror: the light runs on past the satellite */
#define GLINTCORE_ALONG_TRACK 0  /* local vertical and horizontal part of the velocity */
#define GLINTCORE_INERTIAL 1     /* fixed in space: Angle and Tilt count from the axes of the inertial frame */
#define GLINTCORE_VERTICAL_SUN 4 /* local vertical and horizontal direction of the Sun */

/* One flat surface of a satellite, as Satellite_FindFirstFlare takes it. 32 bytes. */
typedef struct GlintSurface {
    double Angle;     /* of the mirror, radians; not read in transit mode */
    double Tilt;      /* of the mirror, radians; not read in transit mode */
    double From;      /* Julian date before which this surface is not asked; 0: from the start of the window */
    int32_t Geometry; /* one of the geometry codes */
    int32_t Skip;     /* not 0: a pass in progress at any time in the first 0.101 seconds of the window is left out */
} GlintSurface;

/* The version of the library: GLINTCORE_VERSION of the header that it was built with. */
GLINTCORE_API int32_t GlintcoreVersion(void);

/* Reads an element set into a block and prepares its propagation.
 *
 *   line1, line2  the two lines, zero-terminated, of any length; columns beyond 69 are not read. Null: result 1
 *   mode          'i' (improved); any other value is taken as 'i'
 *   block         an EngineBlock: its private bytes are overwritten, its tail is set to 0. Null: result 1
 *
 * Returns 0, or why the set cannot be propagated. The block is then one that every call accepts, without a satellite.
 *
 *   1  a pointer is null
 *   2  line 1 does not begin with "1", or line 2 with "2", or a line ends before its last needed column
 *   3  a column that must hold a number does not
 *   4  the mean motion is not above 0
 *   5  the eccentricity is not in 0 to below 1
 *   6  the elements lead to numbers that are not finite */
GLINTCORE_API int32_t SatelliteInit(const char* line1, const char* line2, char mode, void* block);

/* Position and velocity at an instant, in the true-equator, mean-equinox frame of the element set.
 *
 *   block     the satellite's EngineBlock; its private bytes are updated. Null: result -1
 *   jd        Julian date (UTC)
 *   position  out: three doubles, kilometres. Null: not told
 *   velocity  out: three doubles, kilometres per second. Null: not told
 *
 * Returns 0, or an error. The numbers are finite in every case; after -1 they are zeros.
 *
 *   -1  the block is null or holds no satellite, or `jd` is outside the range
 *    1  mean eccentricity out of range
 *    2  mean motion below 0
 *    3  perturbed eccentricity out of range
 *    4  semi-latus rectum below 0
 *    6  decayed: below the Earth's surface */
GLINTCORE_API int32_t Satellite_SGP4(void* block, double jd, double* position, double* velocity);

/* Sets the observer's place, for the calls about flares.
 *
 *   x, y, z  Earth-fixed, geocentric, metres; only the direction is kept
 *   radius   distance from the Earth's centre, metres
 *
 * A place that is outside the range, by `radius` or by the length of (x, y, z), is refused: the place before stays. */
GLINTCORE_API void Satellite_SetSiteGeoPosition(double x, double y, double z, double radius);

/* Sets the pair of epochs for Satellite_PrecessRADEC, Julian years. With one of them outside the range the pair before
 * stays. */
GLINTCORE_API void Satellite_SetPrecession(double toEpoch, double fromEpoch);

/* Carries a place from the mean equator and equinox of `fromEpoch` to that of `toEpoch` (IAU 1976).
 *
 *   out   out: right ascension, 0 to 2 pi, and declination, radians; may be the same as `in`. Null: nothing is done
 *   in    right ascension and declination, radians. Null, or numbers that are none: zeros are handed out
 *   flag  not used; may be null */
GLINTCORE_API void Satellite_PrecessRADEC(double* out, const double* in, int32_t* flag);

/* Where the light that a mirror reflects at one instant meets the Earth, a sphere of radius 1.
 *
 *   jd           Julian date (UTC)
 *   source       GLINTCORE_SUN or GLINTCORE_MOON
 *   geometry     one of the geometry codes
 *   x, y, z      satellite, Earth-fixed, in units of the site's radius
 *   vx, vy, vz   its velocity on the same axes (only its direction is read, and only by GLINTCORE_ALONG_TRACK)
 *   angle, tilt  of the mirror, radians; not read in transit mode
 *   centre       out: three doubles, where the light falls, on the unit sphere. Null: not told
 *   result       out: five doubles. Null: not told
 *                  [1]  sine of the Sun's elevation at the centre
 *                  [2]  scalar product of the incident ray and the mirror's normal (its arc cosine is the Sun-mirror
 *                       angle); 1 in transit mode
 *                  [0], [3], [4]  0
 *
 * Returns not 0 when there is a flare. Otherwise 0, and `centre` and `result` are left alone: when the mirror faces
 * away, the satellite is in the Earth's shadow (a cylinder; not asked in transit mode), the ray misses the Earth, the
 * numbers are not finite, or `jd` is outside the range. */
GLINTCORE_API int32_t Satellite_CalcFlare(double jd, int32_t source, int32_t geometry, double x, double y, double z,
                                          double vx, double vy, double vz, double angle, double tilt, double* centre,
                                          double* result);

/* The earliest instant in a window at which the centre of a mirror's flare lies within a distance of the observer's
 * place. An instant at which Satellite_SGP4 returns an error has no flare.
 *
 *   start        Julian date (UTC) of the start of the window
 *   length       its length, days; 0: the instant `start` alone
 *   source       GLINTCORE_SUN or GLINTCORE_MOON
 *   resolution   time resolution asked for, days; the answer is good to 1 millisecond or to this, whichever is finer
 *   siteRadius   unit of length, metres
 *   block        the satellite's EngineBlock; it is not changed. Null: result 0
 *   geometry     one of the geometry codes
 *   angle, tilt  of the mirror, radians; not read in transit mode
 *   maxDistance  metres, measured straight through the sphere; the centre must come nearer than this
 *   skip         not 0: a pass that is in progress at any time in the first 0.101 seconds of the window is left out
 *   found        out: Julian date of the instant. Null: not told
 *
 * Returns not 0 when there is one. Otherwise 0, and `found` is left alone: when there is none, when the block holds no
 * satellite, and at once when the window does not lie within the range of Julian dates or is longer than
 * GLINTCORE_LONGEST_SEARCH, when `siteRadius` is outside its range, or a number is none. */
GLINTCORE_API int32_t Satellite_FindFlare(double start, double length, int32_t source, double resolution,
                                          double siteRadius, void* block, int32_t geometry, double angle, double tilt,
                                          double maxDistance, int8_t skip, double* found);

/* The same for several surfaces of one satellite, which are followed together at little more than the cost of one: the
 * earliest flare of any of them.
 *
 *   surfaces     `count` surfaces; those with a geometry that is none, or numbers that are none, have no flares. Null:
 *                result 0
 *   count        how many; 0 or less: result 0
 *   block        as Satellite_SGP4 takes it: its private bytes are updated, which makes the next search faster and
 *                changes nothing else. Null: result 0
 *   the others   as for Satellite_FindFlare
 *
 * Returns the number of the surface, counted from 1; of equal instants the first surface. Otherwise 0, as
 * Satellite_FindFlare does. */
GLINTCORE_API int32_t Satellite_FindFirstFlare(double start, double length, int32_t source, double resolution,
                                               double siteRadius, void* block, const GlintSurface* surfaces,
                                               int32_t count, double maxDistance, double* found);

/* Draws the countries: each polygon filled, then outlined. On the globe what lies behind it is left away, and the
 * filled area ends at the limb; on the flat map a polygon that crosses the map's edge comes back on the other side.
 *
 *   target       who paints. Null: nothing is drawn
 *   config       the camera: fields ViewLon to HalfHeight, and CPlaniSphere. Null: nothing is drawn
 *   n            number of vertices; 0 or less: nothing is drawn
 *   lat, lon     n doubles each, degrees: geocentric latitude, longitude. Null: nothing is drawn
 *   polygon      n numbers; a run of vertices with one number is a polygon, closed by repeating its first vertex. Null:
 *                nothing is drawn
 *   bufferCount  in: how many doubles `buffer` has room for; out: how many were used. Null: as 0
 *   buffer       scratch memory, aligned for doubles: GLINTCORE_DRAW_SCRATCH of the longest polygon. A polygon that
 *                finds too little room there is outlined alone. Null: all are
 *
 * The lines of a polygon are straight in latitude and longitude and run the shorter way round the Earth. Lines between
 * two vertices at longitude +-180, and between two at the same pole, close an area and are not outlined. A polygon that
 * goes round a pole covers the pole on whose side of the equator it mostly runs.
 *
 * Polygons of less than half a pixel are left out, and so are those with a vertex that is no place: latitude beyond
 * +-90, longitude beyond +-360, not finite. Nothing is drawn by a config with numbers that no picture can have. */
GLINTCORE_API void Satellite_DrawEarth(const GlintDrawTarget* target, const GlintViewConfig* config, int32_t n,
                                       const double* lat, const double* lon, const int32_t* polygon,
                                       int32_t* bufferCount, void* buffer);

/* Draws the stars of a list on the star sphere: a sphere of radius `SkyScale` round the Earth's centre, turned by the
 * sidereal angle of `SimTime`, or unrolled to a chart with `CFlatSky` (azimuthal equidistant: 90 degrees from the
 * centre lie at `SkyScale`), and mirrored with `CReverseSky`. Drawn are the near half of the sphere with
 * `CDrawFrontStars`, the far half with `CDrawBackStars`, but with `CLocalSky` only what stands above the horizon of the
 * site; what the Earth hides is not, unless `CSkyOnly` leaves the Earth away. The centre of a chart is the near point
 * with `CDrawFrontStars`, else the far one. On the flat map nothing is drawn.
 *
 *   target   who paints: `dot`, once for each star on the picture, in the order of the list. Null: nothing is drawn
 *   config   all fields but CStarNames. Stars fainter than the lesser of MaxStarMag and AutoMagLimit are left away; a
 *            dot's radius grows by StarSizeScale pixels with each magnitude. Null: nothing is drawn
 *   visible  StarCount numbers of stars, counted from 1; numbers below 1 are left out. Null: nothing is drawn
 *   stars    the GlintStar records, in which each number of the list must lie. The engine keeps their directions in
 *            `Rest`, so that no angles have to be turned picture after picture; places may be changed between calls,
 *            which it notices. Calls that list one star are to be made one at a time. Null: nothing is drawn
 *
 * A star with numbers that are none is left out. Nothing is drawn when `config` holds numbers that no picture can be
 * drawn by, or `SimTime` is outside the range of Julian dates. */
GLINTCORE_API void Satellite_DrawStars(const GlintDrawTarget* target, const GlintViewConfig* config,
                                       const int32_t* visible, void* stars);

#ifdef __cplusplus
}
#endif

#endif
