// The scrolling pages of the credits view.
#include "frontend/credits_pages.h"
#include "graphics/font.h"
#include "support/gl_fixture.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace {

class Pages : public GlTest {
protected:
    void SetUp() override {
        folder.LinkData({"font"});
        font.Load("font/basic4.png");
    }
    void TearDown() override { font.Destroy(); }

    // Number of glyphs that a drawing prints, the mean of their places, and its upper and lower edge.
    static std::array<long, 4> Printed(void (*draw)()) {
        const std::vector<Vertex> drawn = Record(draw);
        const auto [bottom, top] = std::ranges::minmax(drawn, {}, &Vertex::y);
        float sum = 0.0F;
        for (const Vertex& vertex : drawn)
            sum += vertex.x / static_cast<float>(drawn.size());
        return {std::ssize(drawn) / 6, std::lround(sum), std::lround(top.y), std::lround(bottom.y)};
    }
};

CreditsPages pages;
HighScoreTable shownScores;

// Two fifths of a run: everything has moved up by 300.
TEST_F(Pages, CreditsStandGroupByGroupInTheMiddleAndEmptyScoresLeaveTheirRowsEmpty) {
    pages.Add({"TITLE", {"First Name", "Second"}});
    pages.Add({"OTHER", {"Third"}});
    EXPECT_EQ(Printed([] { pages.DrawCredits(0.4); }), (std::array<long, 4>{73, 326, 306, 90}));
    shownScores.Insert("Ada", 30);
    shownScores.Insert("", 20);
    shownScores.Insert("Eve", 10);
    EXPECT_EQ(Printed([] { CreditsPages::DrawHighScores(shownScores, 0.4); }),
              (std::array<long, 4>{41, 311, 306, 170}));
}

} // namespace
