#pragma once

// What a program says when there is no memory left.

namespace glintara {

/// From here on, running out of memory in any thread ends the program at once with exit code 1 and the sentence
/// "PROGRAM: out of memory" on standard error. `program` must live as long as the program does.
void EndInWordsWithoutMemory(const char* program);

}  // namespace glintara
