// The scrolling pages of the credits view.
#include "frontend/credits_pages.h"
#include "graphics/font.h"
#include "graphics/video.h"
#include "support/gl_fixture.h"

#include <algorithm>
#include <cmath>
#include <set>

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

    struct Line {
        int left;
        int y; // as the pages count it
    };
    // Where lines begin that a drawing prints, from the vertices of its glyphs; from the top.
    static std::vector<Line> LinesOf(void (*draw)()) {
        std::vector<Line> lines;
        for (const Vertex& vertex : Record(draw)) {
            const Line found{static_cast<int>(std::lround(vertex.x)),
                             470 - static_cast<int>(std::lround(vertex.y))};
            const auto same =
                std::find_if(lines.begin(), lines.end(), [&](const Line& line) { return line.y == found.y; });
            if (same == lines.end())
                lines.push_back(found);
            else
                same->left = std::min(same->left, found.left);
        }
        // A line shows its glyphs' lower and upper edges, 16 apart.
        std::sort(lines.begin(), lines.end(), [](const Line& a, const Line& b) { return a.y < b.y; });
        std::vector<Line> lower;
        for (std::size_t i = 1; i < lines.size(); i += 2)
            lower.push_back(lines[i]);
        return lower;
    }
};

CreditsPages pages;
HighScoreTable table;

TEST_F(Pages, CreditsStandGroupByGroupInTheMiddle) {
    pages.Clear();
    pages.Add({"TITLE", {"First Name", "Second"}});
    pages.Add({"OTHER", {"Third"}});
    // Two fifths of a run: everything has moved up by 300.
    const std::vector<Line> lines = LinesOf([] { pages.DrawCredits(0.4); });
    const std::vector<int> heights = {180, 240, 280, 300, 320, 360, 380};
    const std::vector<int> lefts = {260, 180, 295, 270, 290, 295, 295};
    ASSERT_EQ(lines.size(), heights.size());
    for (std::size_t i = 0; i < lines.size(); ++i) {
        EXPECT_EQ(lines[i].y, heights[i]) << i;
        EXPECT_EQ(lines[i].left, lefts[i]) << i;
    }
}

TEST_F(Pages, HighScoresLeaveEmptyRowsEmpty) {
    table.Clear();
    table.Insert("Ada", 30);
    table.Insert("", 20);
    table.Insert("Eve", 10);
    const std::vector<Line> lines = LinesOf([] { CreditsPages::DrawHighScores(table, 0.4); });
    const std::vector<int> heights = {180, 240, 300};
    ASSERT_EQ(lines.size(), heights.size());
    for (std::size_t i = 0; i < lines.size(); ++i)
        EXPECT_EQ(lines[i].y, heights[i]) << i;
    EXPECT_EQ(lines[0].left, 220);
    EXPECT_EQ(lines[1].left, 200);
}

} // namespace
