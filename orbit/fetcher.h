#pragma once

// How texts are read over the network. The window has the desktop's network behind it; a test answers by itself.

#include <cstddef>
#include <memory>
#include <string>

namespace glintara {

/// Most bytes of one read.
inline constexpr std::size_t kReadBytes = 4096;

/// What a read has found.
enum class ReadStep {
    Waiting,  ///< nothing yet; an event will come when there is more
    Data,     ///< a part of the answer
    End,      ///< the answer is over, and whole
    Failed,   ///< there will be no more; `Failure` says why
};

/// One answer of a server while it is being read. Its end aborts what is still under way, at once.
class Transfer {
  public:
    Transfer() = default;
    Transfer(const Transfer&) = delete;
    Transfer& operator=(const Transfer&) = delete;
    virtual ~Transfer() = default;

    /// Puts the next bytes, `kReadBytes` at most, in place of `part`. Never waits. After `Waiting` the caller lets
    /// events be handled and asks again.
    virtual ReadStep Read(std::string& part) = 0;

    /// Status code of HTTP, known from the first `Data` or `End` on; from 400 on the answer is an error's.
    virtual int Status() const = 0;

    /// Why there is no more after `Failed`, in words that can follow a name and a colon.
    virtual std::string Failure() const = 0;
};

class Fetcher {
  public:
    Fetcher() = default;
    Fetcher(const Fetcher&) = delete;
    Fetcher& operator=(const Fetcher&) = delete;
    virtual ~Fetcher() = default;

    /// Asks for `address`, of http or https, and returns at once. It must outlive what it returns.
    virtual std::unique_ptr<Transfer> Open(const std::string& address) = 0;
};

}  // namespace glintara
