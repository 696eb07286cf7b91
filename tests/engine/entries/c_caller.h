#ifndef C_CALLER_H
#define C_CALLER_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct c_answers {
    double position[3];  /* kilometres */
    double precessed[2]; /* right ascension, declination */
    int32_t flare;
    double centre[3];
    double result[5];
    int32_t found;
    double instant;
    int32_t first; /* surface */
    double firstInstant;
    int32_t version;
} c_answers;

/* Returns 0 when every call was answered as a healthy satellite is. */
int call_every_entry(const char* line1, const char* line2, double jd, c_answers* answers);

#ifdef __cplusplus
}
#endif

#endif
