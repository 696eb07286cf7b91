/* The engine as a C program sees it: every entry is called through its header, compiled as C. */
#include "c_caller.h"

#include <string.h>

#include "engine/glintcore.h"

_Static_assert(sizeof(EngineBlock) == 860, "the block is 860 bytes");
_Static_assert(sizeof(((EngineBlock*)0)->Private) == 788, "of which 788 are the engine's");

int call_every_entry(const char* line1, const char* line2, double jd, c_answers* answers) {
    EngineBlock block;
    double velocity[3];
    double in[2] = {0.5, 0.25};
    int32_t flag = 0;
    GlintSurface surfaces[2];

    memset(answers, 0, sizeof *answers);
    memset(surfaces, 0, sizeof surfaces);
    surfaces[0].Geometry = 99;
    surfaces[1].Geometry = GLINTCORE_ALONG_TRACK;
    surfaces[1].Tilt = 0.7;
    Satellite_SetSiteGeoPosition(6378137.0, 0.0, 0.0, 6378137.0);
    if (SatelliteInit(line1, line2, 'i', &block) != 0) return 1;
    if (Satellite_SGP4(&block, jd, answers->position, velocity) != 0) return 2;
    Satellite_SetPrecession(2050.0, 2000.0);
    Satellite_PrecessRADEC(answers->precessed, in, &flag);
    answers->flare = Satellite_CalcFlare(jd, GLINTCORE_SUN, GLINTCORE_TRANSIT, 2.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0,
                                         answers->centre, answers->result);
    answers->found = Satellite_FindFlare(jd, 1.0 / 24.0, GLINTCORE_SUN, 0.1 / 86400.0, 6378137.0, &block,
                                         GLINTCORE_ALONG_TRACK, 0.0, 0.7, 20000000.0, 0, &answers->instant);
    answers->first = Satellite_FindFirstFlare(jd, 1.0 / 24.0, GLINTCORE_SUN, 0.1 / 86400.0, 6378137.0, &block, surfaces,
                                              2, 20000000.0, &answers->firstInstant);
    answers->version = GlintcoreVersion();
    return 0;
}
