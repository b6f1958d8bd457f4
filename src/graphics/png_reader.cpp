// libpng is pushed: it is handed the file piece by piece and calls back for the header, each row and the end.
// Asked to read by itself it would unpack all that follows the last row, and a small file can unpack to
// gigabytes. It reports an error by a jump out of its own functions and those called by it, which therefore
// own nothing.
#include "graphics/png_reader.h"

#include "platform/not_copied.h"

#include <png.h>

#include <csetjmp>
#include <cstdint>
#include <memory>
#include <utility>

namespace {

// A picture in the making.
struct Target {
    Picture picture;
    std::shared_ptr<std::byte[]> pixels;
    std::size_t stride = 0; // bytes of a row
    int lastPass = 0;
    bool full = false;  // the last row has come
    bool whole = false; // and the last chunk
};

Target& TargetOf(png_structp png) {
    return *static_cast<Target*>(png_get_progressive_ptr(png));
}

GLenum FormatOf(int channels) {
    switch (channels) {
    case 1:
        return GL_LUMINANCE;
    case 2:
        return GL_LUMINANCE_ALPHA;
    case 3:
        return GL_RGB;
    default:
        return GL_RGBA;
    }
}

// Any kind of pixels becomes 8 bits a channel.
void OnHeader(png_structp png, png_infop info) {
    Target& target = TargetOf(png);
    const png_uint_32 width = png_get_image_width(png, info);
    const png_uint_32 height = png_get_image_height(png, info);
    if (std::uint64_t{width} * height > Picture::MaxPixels) png_error(png, "too large");
    png_set_expand(png);
    png_set_strip_16(png);
    target.lastPass = png_set_interlace_handling(png) - 1;
    png_read_update_info(png, info);
    const int channels = png_get_channels(png, info);
    target.stride = png_get_rowbytes(png, info);
    target.pixels = std::make_shared_for_overwrite<std::byte[]>(target.stride * height);
    target.picture = {static_cast<int>(width),
                      static_cast<int>(height),
                      channels,
                      FormatOf(channels),
                      {target.pixels.get(), target.stride * height},
                      target.pixels};
}

// The file's first row is the picture's last one.
void OnRow(png_structp png, png_bytep row, png_uint_32 number, int pass) {
    Target& target = TargetOf(png);
    const auto height = static_cast<png_uint_32>(target.picture.height);
    if (number >= height) return;
    std::byte* place = target.pixels.get() + (height - 1 - number) * target.stride;
    png_progressive_combine_row(png, reinterpret_cast<png_bytep>(place), row);
    target.full = number == height - 1 && pass == target.lastPass;
}

void OnEnd(png_structp png, png_infop) {
    TargetOf(png).whole = true;
}

void OnError(png_structp png, png_const_charp) {
    png_longjmp(png, 1);
}

void OnWarning(png_structp, png_const_charp) {}

class Reader : NotCopied {
public:
    explicit Reader(Target& target) {
        png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, OnError, OnWarning);
        info = png ? png_create_info_struct(png) : nullptr;
        if (!info) return;
        png_set_user_limits(png, Picture::MaxSide, Picture::MaxSide);
        png_set_crc_action(png, PNG_CRC_ERROR_QUIT, PNG_CRC_ERROR_QUIT);
        // Texts, profiles and the like are passed over, packed as they are.
        png_set_keep_unknown_chunks(png, PNG_HANDLE_CHUNK_NEVER, nullptr, -1);
        png_set_progressive_read_fn(png, &target, OnHeader, OnRow, OnEnd);
    }
    ~Reader() { png_destroy_read_struct(&png, &info, nullptr); }

    // False when the library finds an error.
    [[nodiscard]] bool Read(std::span<const std::byte> file) {
        if (!info || setjmp(png_jmpbuf(png)) != 0) return false;
        png_process_data(png, info, const_cast<png_bytep>(reinterpret_cast<png_const_bytep>(file.data())),
                         file.size());
        return true;
    }

private:
    png_structp png = nullptr;
    png_infop info = nullptr;
};

} // namespace

bool HasPngSignature(std::span<const std::byte> file) {
    return file.size() >= 8 && png_sig_cmp(reinterpret_cast<png_const_bytep>(file.data()), 0, 8) == 0;
}

bool DecodePng(std::span<const std::byte> file, Picture& picture) {
    Target target;
    if (!Reader(target).Read(file) || !target.full || !target.whole) return false;
    picture = std::move(target.picture);
    return true;
}
