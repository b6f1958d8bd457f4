// The scrolling pages of the credits view.
#include "frontend/credits_pages.h"
#include "graphics/font.h"
#include "graphics/video.h"
#include "support/gl_fixture.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <tuple>
#include <utility>
#include <vector>

namespace {

TEST(PageLine, ScrollsUpAndIsBrightestInTheMiddle) {
    for (const auto& [line, share, y, alpha] :
         {std::tuple{480, 0.0, 480, 0.0}, {120, 0.0, 120, 0.707}, {540, 0.4, 240, 1.0}}) {
        EXPECT_EQ(ScrolledLine(line, share).y, y);
        EXPECT_NEAR(ScrolledLine(line, share).alpha, alpha, 2e-3);
    }
    EXPECT_LE(ScrolledLine(600, 0.0).alpha, 0.0F);
    EXPECT_LE(ScrolledLine(400, 0.9).alpha, 0.0F) << "above the screen";
}

using Lines = std::vector<std::pair<int, int>>;

class Pages : public GlTest {
protected:
    void SetUp() override {
        folder.LinkData({"font"});
        font.Load("font/basic4.png");
    }
    void TearDown() override { font.Destroy(); }

    // Where the lines begin that a drawing prints: y as the pages count it, then the left edge; from the top.
    // A line's glyphs show their lower and their upper edges, 16 apart.
    static Lines LinesOf(void (*draw)()) {
        std::map<int, int> edges;
        for (const Vertex& vertex : Record(draw)) {
            const auto x = static_cast<int>(std::lround(vertex.x));
            const auto [edge, fresh] = edges.try_emplace(470 - static_cast<int>(std::lround(vertex.y)), x);
            edge->second = std::min(edge->second, x);
        }
        Lines lines;
        for (bool lower = false; const auto& edge : edges) {
            if (lower) lines.push_back(edge);
            lower = !lower;
        }
        return lines;
    }
};

CreditsPages pages;
HighScoreTable table;

// Two fifths of a run: everything has moved up by 300.
TEST_F(Pages, CreditsStandGroupByGroupInTheMiddleAndEmptyScoresLeaveTheirRowsEmpty) {
    pages.Add({"TITLE", {"First Name", "Second"}});
    pages.Add({"OTHER", {"Third"}});
    EXPECT_EQ(LinesOf([] { pages.DrawCredits(0.4); }),
              (Lines{{180, 260}, {240, 180}, {280, 295}, {300, 270}, {320, 290}, {360, 295}, {380, 295}}));
    table.Insert("Ada", 30);
    table.Insert("", 20);
    table.Insert("Eve", 10);
    EXPECT_EQ(LinesOf([] { CreditsPages::DrawHighScores(table, 0.4); }),
              (Lines{{180, 220}, {240, 200}, {300, 200}}));
}

} // namespace
