#pragma once

// A prepared satellite inside the private bytes of an EngineBlock. The block is packed, so its numbers are copied in
// and out, never pointed at.

#include "engine/glintcore.h"
#include "engine/sgp4/sgp4.h"

namespace glintara {

static_assert(sizeof(EngineBlock) == 860);

/// Writes `record` with the mark of validity into the private bytes of the EngineBlock at `block`; its tail is left
/// alone.
void StoreRecord(void* block, const Sgp4Record& record);

/// Reads the satellite of the EngineBlock at `block`. False, `record` untouched, when no satellite was ever stored
/// there, or by another layout of the private bytes.
[[nodiscard]] bool LoadRecord(const void* block, Sgp4Record& record);

/// Writes back what a propagation changes, into a block from which `record` was loaded.
void StoreIntegrator(void* block, const Sgp4Record& record);

}  // namespace glintara
