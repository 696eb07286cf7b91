#include "orbit/little_endian.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <utility>

namespace glintara {

std::int32_t ByteReader::Integer() {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(Unsigned(kIntegerBytes)));
}

double ByteReader::Real() { return std::bit_cast<double>(Unsigned(kRealBytes)); }

std::string ByteReader::Text() { return std::string(Take(static_cast<std::size_t>(Unsigned(kLengthBytes)))); }

void ByteReader::Bytes(std::span<std::byte> target) {
    const std::string_view taken = Take(target.size());
    std::transform(taken.begin(), taken.end(), target.begin(), [](char c) { return static_cast<std::byte>(c); });
}

std::uint64_t ByteReader::Unsigned(std::size_t width) {
    std::uint64_t value = 0;
    const std::string_view taken = Take(width);
    for (std::size_t i = 0; i < taken.size(); ++i)
        value |= static_cast<std::uint64_t>(static_cast<unsigned char>(taken[i])) << (8 * i);
    return value;
}

std::string_view ByteReader::Take(std::size_t size) {
    if (size > bytes_.size()) {
        failed_ = true;
        bytes_ = {};
        return {};
    }
    const std::string_view taken = bytes_.substr(0, size);
    bytes_.remove_prefix(size);
    return taken;
}

void ByteWriter::Integer(std::int32_t value) { Unsigned(static_cast<std::uint32_t>(value), kIntegerBytes); }

void ByteWriter::Real(double value) { Unsigned(std::bit_cast<std::uint64_t>(value), kRealBytes); }

void ByteWriter::Text(std::string_view text) {
    const std::string_view kept = text.substr(0, std::numeric_limits<std::uint16_t>::max());
    Unsigned(kept.size(), kLengthBytes);
    bytes_ += kept;
}

void ByteWriter::Bytes(std::span<const std::byte> source) {
    for (const std::byte byte : source) bytes_ += static_cast<char>(byte);
}

std::string ByteWriter::Take() { return std::exchange(bytes_, {}); }

void ByteWriter::Unsigned(std::uint64_t value, std::size_t width) {
    for (std::size_t i = 0; i < width; ++i) bytes_ += static_cast<char>((value >> (8 * i)) & 0xFF);
}

}  // namespace glintara
