// Reads PNG files (ISO/IEC 15948) with libpng, row by row, so that a broken or hostile file costs no more
// than its length and the size of its picture. Rests on libpng.
#pragma once

#include "graphics/picture.h"

#include <cstddef>
#include <span>

// Whether the bytes begin as a PNG file does.
[[nodiscard]] bool HasPngSignature(std::span<const std::byte> file);

// Decodes the picture in the bytes of a PNG file to 8 bits a channel: grey, grey and alpha, RGB or RGBA, a
// palette as one of the last two. Nothing else in the file counts, gamma included, nor what stands behind its
// last chunk. False, picture unchanged, when the file is not whole (header, order of chunks, any checksum,
// last chunk), holds too little data or a chunk that must be understood and is not, or when its picture is
// larger than is allowed.
[[nodiscard]] bool DecodePng(std::span<const std::byte> file, Picture& picture);
