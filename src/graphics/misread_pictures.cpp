// The kinds are told by their first bytes, as the library tells them.
#include "graphics/misread_pictures.h"

#include "platform/byte_cursor.h"

#include <IL/il.h>

#include <cctype>
#include <cstdint>
#include <string_view>

using platform::AppendLittle;
using platform::BeginsWith;
using platform::ByteCursor;

namespace {

using Bytes = std::span<const std::byte>;

void Append(std::vector<std::byte>& out, Bytes bytes) {
    out.insert(out.end(), bytes.begin(), bytes.end());
}

constexpr std::size_t FileHead = 14;
constexpr std::uint32_t OldHead = 40;
constexpr std::size_t MasksSize = 12; // red, green, blue

struct BitmapHead {
    std::uint32_t pixels = 0; // where they begin in the file
    std::uint32_t size = 0;   // of the header behind the file's
    std::int32_t width = 0;
    std::int32_t height = 0; // negative: the top row first
    std::uint16_t depth = 0;
    bool masks = false; // the channels' bits are named
    bool alpha = false; // four bytes blue, green, red, alpha
};

BitmapHead ReadBitmapHead(Bytes file) {
    BitmapHead head;
    ByteCursor cursor(file);
    cursor.Seek(10);
    head.pixels = cursor.U32();
    head.size = cursor.U32();
    head.width = cursor.I32();
    head.height = cursor.I32();
    cursor.U16(); // planes
    head.depth = cursor.U16();
    head.masks = cursor.U32() == 3;
    cursor.Seek(FileHead + OldHead);
    const bool usual = cursor.U32() == 0xFF0000U && cursor.U32() == 0xFF00U && cursor.U32() == 0xFFU;
    head.alpha = head.masks && head.depth == 32 && usual && cursor.U32() == 0xFF000000U;
    return head;
}

std::vector<std::byte> ToTga(Bytes file, const BitmapHead& head) {
    const std::int64_t rows = head.height < 0 ? -std::int64_t{head.height} : head.height;
    if (head.width <= 0 || head.width > Picture::MaxSide || rows == 0 || rows > Picture::MaxSide) return {};
    ByteCursor cursor(file);
    cursor.Seek(head.pixels);
    const Bytes pixels = cursor.Take(static_cast<std::uint64_t>(head.width * rows * 4));
    if (cursor.Failed()) return {};
    std::vector<std::byte> tga;
    tga.reserve(18 + pixels.size());
    AppendLittle(tga, 0x20000, 4); // plain colours
    AppendLittle(tga, 0, 4);
    AppendLittle(tga, 0, 4);
    AppendLittle(tga, static_cast<std::uint32_t>(head.width), 2);
    AppendLittle(tga, static_cast<std::uint32_t>(rows), 2);
    AppendLittle(tga, head.height < 0 ? 0x2820 : 0x0820, 2); // 32 bits, 8 of them alpha; the first row
    Append(tga, pixels);
    return tga;
}

std::vector<std::byte> WithOldHead(Bytes file, const BitmapHead& head) {
    const std::size_t behindHead = FileHead + head.size;
    const std::size_t masks = head.masks ? MasksSize : 0;
    if (behindHead > file.size() || head.pixels < behindHead) return {};
    std::vector<std::byte> bitmap;
    bitmap.reserve(file.size());
    Append(bitmap, file.first(10));
    AppendLittle(bitmap, static_cast<std::uint32_t>(head.pixels - head.size + OldHead + masks), 4);
    AppendLittle(bitmap, OldHead, 4);
    Append(bitmap, file.subspan(FileHead + 4, OldHead - 4 + masks));
    Append(bitmap, file.subspan(behindHead));
    return bitmap;
}

// The brightest value that a portable pixmap's head names; 0 when there is none.
int BrightestValue(Bytes file) {
    std::size_t at = 2;
    int number = 0;
    for (int field = 0; field < 3; ++field) {
        const auto next = [&] { return at < file.size() ? std::to_integer<int>(file[at]) : 0; };
        while (std::isspace(next()) != 0 || next() == '#') {
            if (next() == '#')
                while (next() != '\n' && next() != 0)
                    ++at;
            else
                ++at;
        }
        for (number = 0; std::isdigit(next()) != 0 && number < 100000; ++at)
            number = number * 10 + next() - '0';
    }
    return number;
}

bool IsOpaque(const Picture& picture) {
    if (picture.format != GL_RGBA && picture.format != GL_BGRA) return true;
    for (std::size_t i = 3; i < picture.pixels.size(); i += 4)
        if (picture.pixels[i] != std::byte{255}) return false;
    return true;
}

} // namespace

std::vector<std::byte> OlderBitmap(Bytes file, ILenum& type) {
    if (!BeginsWith(file, "BM")) return {};
    const BitmapHead head = ReadBitmapHead(file);
    if (head.size != 108 && head.size != 124) return {};
    type = head.alpha ? IL_TGA : IL_BMP;
    return head.alpha ? ToTga(file, head) : WithOldHead(file, head);
}

bool IsMisread(Bytes file, const Picture& picture) {
    if (BeginsWith(file, "\xFF\xD8")) return picture.bytesPerPixel == 4;
    if (BeginsWith(file, "II*") || BeginsWith(file, std::string_view("MM\0*", 4))) return !IsOpaque(picture);
    const auto kind = file.size() > 2 && BeginsWith(file, "P") ? std::to_integer<char>(file[1]) : '\0';
    const bool hasValues = kind == '2' || kind == '3' || kind == '5' || kind == '6';
    return hasValues && BrightestValue(file) != 255;
}
