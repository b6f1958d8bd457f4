// What the image library refuses or misreads without a word: bitmaps with newer headers, inks, colours that
// were multiplied by their alpha, and grey levels other than 256. Rests on the byte cursor.
#pragma once

#include "graphics/picture.h"

#include <cstddef>
#include <span>
#include <vector>

// The bitmap (BMP) with a header of version 4 or 5 as a file that the library reads: a TGA where it has
// alpha, otherwise a bitmap with the older header. Empty when the file is no such bitmap or is broken; `type`
// is the new file's.
[[nodiscard]] std::vector<std::byte> OlderBitmap(std::span<const std::byte> file, ILenum& type);

// Whether the picture that the library made of the file has wrong colours: a JPEG of four inks, a TIFF that
// is not opaque, a portable pixmap (PNM) whose brightest value is not 255.
[[nodiscard]] bool IsMisread(std::span<const std::byte> file, const Picture& picture);
