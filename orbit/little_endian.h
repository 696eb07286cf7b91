#pragma once

// Bytes of the program's files as numbers and texts, and back. All numbers are little-endian; a text is its length in
// bytes, 16-bit, and so many characters.

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace glintara {

inline constexpr std::size_t kIntegerBytes = 4;
inline constexpr std::size_t kRealBytes = 8;
inline constexpr std::size_t kLengthBytes = 2;

/// Takes values off the front of a file. Beyond its end all values are 0 or empty, and `Failed` tells it.
class ByteReader {
  public:
    explicit ByteReader(std::string_view bytes) : bytes_(bytes) {}

    std::int32_t Integer();
    double Real();
    std::string Text();
    void Bytes(std::span<std::byte> target);

    /// Bytes that are left.
    std::size_t Rest() const { return bytes_.size(); }

    bool Failed() const { return failed_; }

  private:
    std::uint64_t Unsigned(std::size_t width);
    std::string_view Take(std::size_t size);

    std::string_view bytes_;
    bool failed_ = false;
};

/// Puts values together to a file.
class ByteWriter {
  public:
    void Integer(std::int32_t value);
    void Real(double value);

    /// Text of more than 65535 bytes is cut.
    void Text(std::string_view text);
    void Bytes(std::span<const std::byte> source);

    /// What was written; the writer is empty then.
    std::string Take();

  private:
    void Unsigned(std::uint64_t value, std::size_t width);

    std::string bytes_;
};

}  // namespace glintara
