// The dice of the particles: 256 values drawn once per map, read in turn by six independent cursors, so that
// the simulation itself draws no random numbers.
#pragma once

#include <array>
#include <cstdint>

class RandomTable {
public:
    // What a value is drawn for; each purpose reads the table with its own cursor.
    enum Cursor { KickX, KickY, KickZ, Launch, Start, Age, CursorCount };

    // Draws all values anew, -1 to 0.9999 in steps of 0.0001, and sets the three kick cursors to random
    // entries. The other three stay where they are.
    void Fill();
    // The value under a cursor, which moves on, from 255 back to 0.
    float Next(Cursor cursor) { return values[cursors[cursor]++]; }

    std::array<float, 256> values{};
    std::array<std::uint8_t, CursorCount> cursors{};
};

extern RandomTable randomTable;
