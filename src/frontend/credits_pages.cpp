#include "frontend/credits_pages.h"

#include "graphics/font.h"
#include "graphics/gl_state.h"

#include <GL/gl.h>

#include <cmath>

namespace {

constexpr int ScreenWidth = 64; // characters on a line
constexpr int CharacterWidth = 10;
constexpr double ScrollHeight = 750.0; // units in one run
constexpr int LineHeight = 20;

// Sets the line's colour and returns its height on the screen.
int BeginLine(int base, double progress) {
    const PageLine line = ScrolledLine(base, progress);
    glColor4f(1.0F, 1.0F, 1.0F, line.alpha);
    return line.y;
}

void PrintLine(int x, int base, double progress, const char* text) {
    const int y = BeginLine(base, progress);
    font.PrintBlend(x, y, 0, "%s\n", text);
}

void PrintCentred(int base, double progress, const std::string& text) {
    const int x = (ScreenWidth - static_cast<int>(text.size())) * CharacterWidth / 2;
    PrintLine(x, base, progress, text.c_str());
}

} // namespace

PageLine ScrolledLine(int base, double progress) {
    const int y = static_cast<int>(base - ScrollHeight * progress);
    return {y, static_cast<float>(std::sin(y * (1.0 / 480.0) * 3.14))};
}

void CreditsPages::DrawCredits(double progress) const {
    const Without depth(GL_DEPTH_TEST);
    PrintLine(260, 480, progress, "C R E D I T S");
    PrintLine(180, 540, progress, "V E K  G A M E S    T E A M :");
    int base = 580;
    for (const CreditsGroup& group : groups) {
        PrintCentred(base, progress, group.title);
        for (const std::string& name : group.names) {
            base += LineHeight;
            PrintCentred(base, progress, name);
        }
        base += 2 * LineHeight;
    }
    glColor4f(1.0F, 1.0F, 1.0F, 1.0F);
}

void CreditsPages::DrawHighScores(const HighScoreTable& table, double progress) {
    const Without depth(GL_DEPTH_TEST);
    PrintLine(220, 480, progress, "H I G H S C O R E S");
    for (int rank = 0; rank < HighScoreTable::Size; ++rank) {
        const HighScoreEntry& entry = table[rank];
        if (entry.name[0] == '\0') continue;
        const int y = BeginLine(540 + 30 * rank, progress);
        font.PrintBlend(200, y, 0, "%d ) %s", rank + 1, entry.name.data());
        font.PrintBlend(400, y, 0, "- %d", static_cast<int>(entry.score));
    }
    glColor4f(1.0F, 1.0F, 1.0F, 1.0F);
}
