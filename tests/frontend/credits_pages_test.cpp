// The scrolling pages of the credits view.
#include "frontend/credits_pages.h"
#include "graphics/font.h"
#include "graphics/video.h"
#include "support/gl_fixture.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace {

TEST(PageLine, ScrollsUpAndIsBrightestInTheMiddle) {
    EXPECT_EQ(ScrolledLine(480, 0.0).y, 480);
    EXPECT_EQ(ScrolledLine(480, 1.0).y, -270);
    EXPECT_EQ(ScrolledLine(540, 0.4).y, 240);
    EXPECT_NEAR(ScrolledLine(540, 0.4).alpha, 1.0F, 1e-5F);
    EXPECT_NEAR(ScrolledLine(480, 0.0).alpha, 0.0F, 2e-3F);
    EXPECT_NEAR(ScrolledLine(120, 0.0).alpha, std::sqrt(0.5F), 1e-3F);
    EXPECT_LE(ScrolledLine(600, 0.0).alpha, 0.0F);
    EXPECT_LE(ScrolledLine(400, 0.9).alpha, 0.0F) << "above the screen";
}

class Pages : public GlTest {
protected:
    void SetUp() override {
        folder.LinkData({"font"});
        font.Load("font/basic4.png");
    }
    void TearDown() override { font.Destroy(); }

    // Where the lines begin that a drawing prints: y as the pages count it, then the left edge; from the top.
    // A line's glyphs show their lower and their upper edges, 16 apart.
    static std::vector<std::pair<int, int>> LinesOf(void (*draw)()) {
        std::map<int, int> edges;
        for (const Vertex& vertex : Record(draw)) {
            const auto x = static_cast<int>(std::lround(vertex.x));
            const auto [edge, fresh] = edges.try_emplace(470 - static_cast<int>(std::lround(vertex.y)), x);
            edge->second = std::min(edge->second, x);
        }
        std::vector<std::pair<int, int>> lines;
        for (bool lower = false; const auto& edge : edges) {
            if (lower) lines.push_back(edge);
            lower = !lower;
        }
        return lines;
    }
};

CreditsPages pages;
HighScoreTable table;

TEST_F(Pages, CreditsStandGroupByGroupInTheMiddle) {
    pages.Clear();
    pages.Add({"TITLE", {"First Name", "Second"}});
    pages.Add({"OTHER", {"Third"}});
    // Two fifths of a run: everything has moved up by 300.
    const std::vector<std::pair<int, int>> expected = {{180, 260}, {240, 180}, {280, 295}, {300, 270},
                                                       {320, 290}, {360, 295}, {380, 295}};
    EXPECT_EQ(LinesOf([] { pages.DrawCredits(0.4); }), expected);
}

TEST_F(Pages, HighScoresLeaveEmptyRowsEmpty) {
    table.Clear();
    table.Insert("Ada", 30);
    table.Insert("", 20);
    table.Insert("Eve", 10);
    const std::vector<std::pair<int, int>> expected = {{180, 220}, {240, 200}, {300, 200}};
    EXPECT_EQ(LinesOf([] { CreditsPages::DrawHighScores(table, 0.4); }), expected);
}

} // namespace
