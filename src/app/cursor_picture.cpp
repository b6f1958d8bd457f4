#include "app/cursor_picture.h"

#include <cstdio>

namespace {

constexpr int Side = 32;
constexpr int HeaderLines = 4;
constexpr char BlankRow[] = "                                ";

constexpr CursorPicture MakeInvisible() {
    CursorPicture picture = {"    32    32        3            1", "X c #000000", ". c #ffffff", "  c None"};
    for (int row = 0; row < Side; ++row)
        picture[HeaderLines + row] = BlankRow;
    picture[HeaderLines + Side] = "0,0";
    return picture;
}

} // namespace

constinit const CursorPicture InvisibleCursor = MakeInvisible();

SDL_Cursor* CursorFromPicture(const CursorPicture& picture) {
    std::array<Uint8, Side / 8 * Side> data{};
    std::array<Uint8, Side / 8 * Side> mask{};
    for (int row = 0; row < Side; ++row) {
        for (int column = 0; column < Side; ++column) {
            const char pixel = picture[HeaderLines + row][column];
            const int byte = (row * Side + column) / 8;
            data[byte] = static_cast<Uint8>(data[byte] << 1 | (pixel == 'X' ? 1 : 0));
            mask[byte] = static_cast<Uint8>(mask[byte] << 1 | (pixel == 'X' || pixel == '.' ? 1 : 0));
        }
    }
    int hotX = 0;
    int hotY = 0;
    std::sscanf(picture[HeaderLines + Side], "%d,%d", &hotX, &hotY);
    return SDL_CreateCursor(data.data(), mask.data(), Side, Side, hotX, hotY);
}
