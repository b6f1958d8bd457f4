// Draws from the C library's generator, cut to the 15 bits that every system has.
#include "particles/random_table.h"

#include <cstdlib>

constinit RandomTable randomTable;

namespace {

int Draw() {
    return std::rand() & 0x7FFF;
}

} // namespace

void RandomTable::Fill() {
    for (float& value : values)
        value = static_cast<float>(Draw() % 20000 - 10000) * 0.0001F;
    for (const Cursor cursor : {KickX, KickY, KickZ})
        cursors[cursor] = static_cast<std::uint8_t>(Draw() % 255);
}
