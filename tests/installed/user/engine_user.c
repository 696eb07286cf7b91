/* A program in C that knows only what is installed: where is satellite 00005 at the epoch of its elements? The answer is
 * the first line of the published verification set of SGP4 (AIAA 2006-6753). */
#include <glintcore.h>
#include <math.h>
#include <stdio.h>

int main(void) {
    const char* line1 = "1 00005U 58002B   00179.78495062  .00000023  00000-0  28098-4 0  4753";
    const char* line2 = "2 00005  34.2682 348.7242 1859667 331.7664  19.3264 10.82419157413667";
    const double epoch = 2451722.5 + 0.78495062; /* day 179 of 2000 */
    const double published[3] = {7022.46529266, -1400.08296755, 0.03995155};
    EngineBlock block;
    double position[3], velocity[3];
    int i;
    if (SatelliteInit(line1, line2, 'i', &block) != 0) return 1;
    if (Satellite_SGP4(&block, epoch, position, velocity) != 0) return 2;
    for (i = 0; i < 3; ++i) {
        printf("%.6f\n", position[i]);
        if (!(fabs(position[i] - published[i]) < 0.001)) return 3;
    }
    return 0;
}
