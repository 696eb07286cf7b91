#include "engine/sgp4/block.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

namespace glintara {

namespace {

// Before the record: what tells a filled block from any other bytes.
struct Header {
    std::uint32_t mark;
    std::uint32_t layout;
};

// "GLNT", and the number of the record's layout: to be raised whenever Sgp4Record changes.
constexpr Header kHeader = {.mark = 0x544e4c47, .layout = 1};

constexpr std::size_t kRecordOffset = offsetof(EngineBlock, Private) + sizeof(Header);
constexpr std::size_t kIntegratorOffset = kRecordOffset + offsetof(Sgp4Record, integrator);

static_assert(std::is_trivially_copyable_v<Sgp4Record>);
static_assert(sizeof(Header) + sizeof(Sgp4Record) <= GLINTCORE_PRIVATE_BYTES);

}  // namespace

void StoreRecord(void* block, const Sgp4Record& record) {
    auto* bytes = static_cast<unsigned char*>(block);
    std::memcpy(bytes + offsetof(EngineBlock, Private), &kHeader, sizeof kHeader);
    std::memcpy(bytes + kRecordOffset, &record, sizeof record);
}

bool LoadRecord(const void* block, Sgp4Record& record) {
    const auto* bytes = static_cast<const unsigned char*>(block);
    Header header;
    std::memcpy(&header, bytes + offsetof(EngineBlock, Private), sizeof header);
    if (header.mark != kHeader.mark || header.layout != kHeader.layout) return false;
    std::memcpy(&record, bytes + kRecordOffset, sizeof record);
    return true;
}

void StoreIntegrator(void* block, const Sgp4Record& record) {
    if (record.resonance == Sgp4Resonance::None) return;
    auto* bytes = static_cast<unsigned char*>(block);
    std::memcpy(bytes + kIntegratorOffset, &record.integrator, sizeof record.integrator);
}

}  // namespace glintara
