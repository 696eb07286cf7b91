#include "orbit/out_of_memory.h"

#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <exception>
#include <new>

namespace glintara {

namespace {

const char* programName = "";

void Write(const char* text) {
    const ssize_t ignored = write(STDERR_FILENO, text, std::strlen(text));
    static_cast<void>(ignored);
}

[[noreturn]] void End() {
    Write(programName);
    Write(": out of memory\n");
    std::_Exit(EXIT_FAILURE);
}

// Libraries that get their memory by themselves throw what nobody may be there to catch.
[[noreturn]] void Terminated() {
    try {
        if (std::current_exception()) std::rethrow_exception(std::current_exception());
    } catch (const std::bad_alloc&) {
        End();
    } catch (...) {
    }
    std::abort();
}

}  // namespace

void EndInWordsWithoutMemory(const char* program) {
    programName = program;
    std::set_new_handler(End);
    std::set_terminate(Terminated);
}

}  // namespace glintara
