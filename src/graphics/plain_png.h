// Takes the picture out of a PNG file before the image library sees it: a broken file can keep that library
// busy for ever, and a whole one can unpack to gigabytes that are no picture. Rests on zlib and the byte
// cursor; the layout is that of ISO/IEC 15948.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

// Whether the bytes begin as a PNG file does.
[[nodiscard]] bool HasPngSignature(std::span<const std::byte> file);

// A PNG file of the same picture that holds nothing else: header, palette, transparency, gamma, and the data
// unpacked to the bytes that the header's size needs and not one more. Bytes behind the file's last chunk do
// not count. Empty when the file is not whole: a wrong signature, header or order of chunks, a chunk that
// is not known here and must not be skipped, a chunk longer than the file, a wrong checksum, no last chunk,
// a size that no picture here may have, or too little data.
[[nodiscard]] std::vector<std::byte> PlainPng(std::span<const std::byte> file);
