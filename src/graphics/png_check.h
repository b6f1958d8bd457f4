// Checks a PNG file whole before the image library sees it: a broken one can keep that library busy for ever.
// Rests on the byte cursor.
#pragma once

#include <cstddef>
#include <span>

// Whether the bytes begin as a PNG file does.
bool HasPngSignature(std::span<const std::byte> file);

// Length of the PNG file that the bytes hold, up to the end of its last chunk; 0 when it is not whole: a
// wrong signature, header or order of chunks, a chunk longer than the file, a wrong checksum, no last chunk,
// or a size that no picture here may have. What is inside the compressed data is left to the image library.
std::size_t WholePngLength(std::span<const std::byte> file);
