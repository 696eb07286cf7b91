// Random bytes as a workspace: whatever a file holds, the session after it can be drawn, searched and saved.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "core/workspace_trial.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // The tables are large: one program serves all inputs.
    static glintara::testing::WorkspaceTrial trial;
    // The raw pointer is null for an empty input.
    const std::string bytes(data, data + size);
    std::string wrong = trial.Load(bytes);
    if (wrong.empty()) wrong = trial.Use();
    if (wrong.empty()) return 0;
    std::fprintf(stderr, "After the load: %s\n", wrong.c_str());
    std::abort();
}
