#pragma once

// What the processor has to be told between code of ours and code of others.

namespace glintara {

/// Clears the upper halves of the processor's vector registers. Libraries with AVX routines (Qt's painter is one) may
/// return with them in use; from then on an Intel processor slows each SSE instruction down, three to eight times in
/// all, until somebody clears them (Intel 64 and IA-32 Architectures Optimization Reference Manual, "Mixing AVX code
/// with SSE code"). To be called after each call into such a library and before long work of ours. Values are not
/// touched. Costs a nanosecond; nothing where the processor has no such registers.
void ClearUpperHalves();

}  // namespace glintara
