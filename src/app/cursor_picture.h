// Builds a system cursor from a picture made of characters, in the layout of an XPM.
#pragma once

#include <SDL.h>

#include <array>

// Line 0 the sizes, lines 1 to 3 the colours, lines 4 to 35 the rows of 32 characters ('X' black, '.' white,
// blank transparent), line 36 the hot spot as "x,y".
using CursorPicture = std::array<const char*, 37>;

// A picture without a mark: the system's cursor is to be invisible, the visible one is drawn by the GUI.
extern const CursorPicture InvisibleCursor;

// The new cursor belongs to the caller (SDL_FreeCursor); null when SDL cannot make it.
[[nodiscard]] SDL_Cursor* CursorFromPicture(const CursorPicture& picture);
