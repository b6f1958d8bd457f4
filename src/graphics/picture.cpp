// PNG is decoded in the program itself; all other kinds by the image library in a copy of the program, which
// hands back a report with the pixels behind it.
#include "graphics/picture.h"

#include "graphics/misread_pictures.h"
#include "graphics/png_reader.h"
#include "platform/contained_run.h"
#include "platform/file_bytes.h"
#include "platform/not_copied.h"

#include <chrono>
#include <cstring>
#include <utility>
#include <vector>

namespace {

// How long a picture may take in a contained run. The largest that are allowed take well under a second.
constexpr std::chrono::seconds Patience(5);

// What a contained run hands back, in front of the pixels.
struct Report {
    ILenum error;
    int width;
    int height;
    int bytesPerPixel;
    GLenum format;
};

struct Request {
    ILenum type;
    const char* path;
    std::span<const std::byte> file; // what stands there
};

// The error that a load left behind; the library queues them, and an old one must not count for a new load.
ILenum DrainErrors() {
    constexpr int QueueLength = 64;
    const ILenum first = ilGetError();
    ILenum error = first;
    for (int i = 0; i < QueueLength && error != IL_NO_ERROR; ++i)
        error = ilGetError();
    return first;
}

// One image of the library, bound while the object lives.
class LibraryImage : NotCopied {
public:
    LibraryImage() {
        ilGenImages(1, &name);
        ilBindImage(name);
        // v = 1 is to be the top of every picture.
        ilEnable(IL_ORIGIN_SET);
        ilOriginFunc(IL_ORIGIN_LOWER_LEFT);
    }
    ~LibraryImage() {
        ilDeleteImages(1, &name);
        DrainErrors();
    }

private:
    ILuint name = 0;
};

bool SizeIsSane(int width, int height) {
    return width > 0 && height > 0 && width <= Picture::MaxSide && height <= Picture::MaxSide &&
           static_cast<long long>(width) * height <= Picture::MaxPixels;
}

// Bytes a pixel of the formats that can go to OpenGL as they are; 0 for all others.
int BytesPerPixel(ILint format) {
    switch (format) {
    case IL_LUMINANCE:
        return 1;
    case IL_LUMINANCE_ALPHA:
        return 2;
    case IL_RGB:
    case IL_BGR:
        return 3;
    case IL_RGBA:
    case IL_BGRA:
        return 4;
    default:
        return 0;
    }
}

bool HasAlpha() {
    const ILint format = ilGetInteger(IL_IMAGE_FORMAT);
    if (format == IL_COLOUR_INDEX) {
        const ILint palette = ilGetInteger(IL_PALETTE_TYPE);
        return palette == IL_PAL_RGBA32 || palette == IL_PAL_BGRA32;
    }
    return format == IL_RGBA || format == IL_BGRA || format == IL_LUMINANCE_ALPHA || format == IL_ALPHA;
}

// Palettes and channels of other than 8 bits become plain RGB or RGBA.
bool ConvertToBytes() {
    const bool plain =
        ilGetInteger(IL_IMAGE_TYPE) == IL_UNSIGNED_BYTE && BytesPerPixel(ilGetInteger(IL_IMAGE_FORMAT)) != 0;
    return plain || ilConvertImage(HasAlpha() ? IL_RGBA : IL_RGB, IL_UNSIGNED_BYTE) == IL_TRUE;
}

// Describes the bound image, which goes on holding the pixels.
ILenum TakeImage(Picture& picture) {
    Picture taken;
    taken.width = ilGetInteger(IL_IMAGE_WIDTH);
    taken.height = ilGetInteger(IL_IMAGE_HEIGHT);
    if (!SizeIsSane(taken.width, taken.height)) return IL_ILLEGAL_FILE_VALUE;
    if (!ConvertToBytes()) {
        const ILenum error = DrainErrors();
        return error != IL_NO_ERROR ? error : static_cast<ILenum>(IL_FORMAT_NOT_SUPPORTED);
    }
    taken.bytesPerPixel = BytesPerPixel(ilGetInteger(IL_IMAGE_FORMAT));
    taken.format = static_cast<GLenum>(ilGetInteger(IL_IMAGE_FORMAT));
    const auto size = static_cast<std::size_t>(taken.width) * static_cast<std::size_t>(taken.height) *
                      static_cast<std::size_t>(taken.bytesPerPixel);
    const ILubyte* data = ilGetData();
    if (!data || size == 0 || static_cast<std::size_t>(ilGetInteger(IL_IMAGE_SIZE_OF_DATA)) < size)
        return IL_ILLEGAL_FILE_VALUE;
    taken.pixels = {reinterpret_cast<const std::byte*>(data), size};
    picture = std::move(taken);
    return IL_NO_ERROR;
}

// Runs in the contained process.
void DecodeFile(const void* argument, std::vector<std::byte>& result) {
    const Request& request = *static_cast<const Request*>(argument);
    DrainErrors();
    const LibraryImage image;
    Picture picture;
    ILenum type = request.type;
    const std::vector<std::byte> older = OlderBitmap(request.file, type);
    const ILboolean loaded = older.empty() ? ilLoad(type, request.path)
                                           : ilLoadL(type, older.data(), static_cast<ILuint>(older.size()));
    // A load counts as failed when the library reports an error, even beside a picture.
    ILenum error = DrainErrors();
    if (error == IL_NO_ERROR)
        error = loaded == IL_TRUE ? TakeImage(picture) : static_cast<ILenum>(IL_UNKNOWN_ERROR);
    if (error == IL_NO_ERROR && IsMisread(request.file, picture)) {
        error = IL_FORMAT_NOT_SUPPORTED;
        picture = {};
    }
    const Report report{error, picture.width, picture.height, picture.bytesPerPixel, picture.format};
    result.resize(sizeof report + picture.pixels.size());
    std::memcpy(result.data(), &report, sizeof report);
    if (!picture.pixels.empty())
        std::memcpy(result.data() + sizeof report, picture.pixels.data(), picture.pixels.size());
}

// What the contained process says is believed no more than the file itself.
ILenum TakeResult(std::vector<std::byte> bytes, Picture& picture) {
    const auto result = std::make_shared<const std::vector<std::byte>>(std::move(bytes));
    Report report{};
    if (result->size() < sizeof report) return IL_ILLEGAL_FILE_VALUE;
    std::memcpy(&report, result->data(), sizeof report);
    if (report.error != IL_NO_ERROR) return report.error;
    const std::span<const std::byte> pixels = std::span(*result).subspan(sizeof report);
    const int bytesPerPixel = BytesPerPixel(static_cast<ILint>(report.format));
    if (!SizeIsSane(report.width, report.height) || bytesPerPixel == 0 ||
        bytesPerPixel != report.bytesPerPixel ||
        pixels.size() != static_cast<std::size_t>(report.width) * static_cast<std::size_t>(report.height) *
                             static_cast<std::size_t>(bytesPerPixel))
        return IL_ILLEGAL_FILE_VALUE;
    picture = {report.width, report.height, bytesPerPixel, report.format, pixels, result};
    return IL_NO_ERROR;
}

} // namespace

ILenum LoadPicture(ILenum type, const char* path, Picture& picture) {
    const platform::FileBytes file(path);
    if (!file.IsOpen()) return IL_COULD_NOT_OPEN_FILE;
    if (HasPngSignature(file.Bytes()))
        return DecodePng(file.Bytes(), picture) ? IL_NO_ERROR : IL_LIB_PNG_ERROR;
    constexpr std::size_t MaxResult = sizeof(Report) + static_cast<std::size_t>(Picture::MaxPixels) * 4;
    const Request request{type, path, file.Bytes()};
    auto result = platform::RunContained(DecodeFile, &request, MaxResult, Patience);
    return result ? TakeResult(std::move(*result), picture) : static_cast<ILenum>(IL_ILLEGAL_FILE_VALUE);
}
