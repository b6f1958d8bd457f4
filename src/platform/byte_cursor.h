// Walks the bytes of a binary file. A read beyond the end gives zeros and sets a failure flag that stays, so
// that a reader checks once, at the end. Rests on nothing.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace platform {

// The number in the first bytes, which must be there, the lowest first.
template<unsigned Size> constexpr std::uint32_t LittleEndian(const std::byte* bytes) {
    std::uint32_t value = 0;
    for (unsigned i = 0; i < Size; ++i)
        value |= std::to_integer<std::uint32_t>(bytes[i]) << (8U * i);
    return value;
}

// Appends the lowest `size` bytes of a number, the lowest first.
inline void AppendLittle(std::vector<std::byte>& out, std::uint32_t value, unsigned size) {
    for (unsigned i = 0; i < size; ++i)
        out.push_back(static_cast<std::byte>(value >> (8U * i)));
}

inline bool BeginsWith(std::span<const std::byte> bytes, std::string_view text) {
    return std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()).starts_with(text);
}

class ByteCursor {
public:
    explicit constexpr ByteCursor(std::span<const std::byte> newBytes) : bytes(newBytes) {}

    constexpr bool Failed() const { return failed; }
    // From the start, in bytes.
    constexpr std::size_t Position() const { return position; }
    constexpr std::size_t Left() const { return bytes.size() - position; }

    // Moves to an offset from the start; fails outside the bytes.
    constexpr void Seek(std::int64_t offset) {
        if (offset < 0 || static_cast<std::uint64_t>(offset) > bytes.size())
            Fail();
        else
            position = static_cast<std::size_t>(offset);
    }

    // The next `count` bytes; none when there are fewer.
    constexpr std::span<const std::byte> Take(std::uint64_t count) {
        if (failed || count > Left()) {
            Fail();
            return {};
        }
        const auto taken = bytes.subspan(position, static_cast<std::size_t>(count));
        position += taken.size();
        return taken;
    }

    constexpr std::uint8_t Byte() { return static_cast<std::uint8_t>(Little<1>()); }
    constexpr std::uint16_t U16() { return static_cast<std::uint16_t>(Little<2>()); }
    constexpr std::uint32_t U32() { return Little<4>(); }
    constexpr std::int32_t I32() { return static_cast<std::int32_t>(U32()); }
    constexpr float Float() { return std::bit_cast<float>(U32()); }

    constexpr std::uint32_t BigEndian32() {
        std::uint32_t value = 0;
        for (const std::byte byte : Take(4))
            value = value << 8U | std::to_integer<std::uint32_t>(byte);
        return value;
    }

private:
    constexpr void Fail() {
        failed = true;
        position = bytes.size();
    }

    template<unsigned Size> constexpr std::uint32_t Little() {
        const auto taken = Take(Size);
        return taken.empty() ? 0 : LittleEndian<Size>(taken.data());
    }

    std::span<const std::byte> bytes;
    std::size_t position = 0;
    bool failed = false;
};

} // namespace platform
