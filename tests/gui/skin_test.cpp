// Reading skins, whole and damaged, and drawing them.
#include "config/config_reader.h"
#include "gui/progress_bar.h"
#include "support/gui_fixture.h"

#include <algorithm>

namespace {

class SkinTest : public GuiTest, protected PlainSkin {
protected:
    // Reads the text as the inside of a skin block; the number of warnings.
    int Read(const std::string& skin) {
        std::remove("log.txt");
        ConfigFile file = ConfigFile::FromMemory("<skin>\n" + skin + "</skin>\n");
        styles.SetDefaults();
        EXPECT_TRUE(INI_FindBlock("skin", &file));
        styles.Load(&file);
        return CountInLog("[ warning ]");
    }
    void TearDown() override {
        styles.Destroy();
        GuiTest::TearDown();
    }

    static std::string Style(const std::string& content) { return Block("New style", content); }

    // A window and its widgets with which the GUI must still work.
    void UseWindow() {
        Show(window, {0.2F, 0.2F, 0.5F, 0.5F});
        window.AddComponent(&button);
        window.AddComponent(&bar);
        Draw();
        Click(0.4F, 0.4F);
        Click(0.25F, 0.3F);
        Draw();
        gui.Clear();
    }

    GUI_Styles styles;
    GUI_Window window;
    GUI_Button button;
    GUI_ProgressBar bar;
};

TEST_F(SkinTest, WhatASkinLacksIsLoggedAndKeepsItsDefault) {
    EXPECT_EQ(Read(""), 2) << "no general block and no focus style";
    EXPECT_EQ(styles.Count(), 1);
    EXPECT_EQ(styles.closeButton->caption, "X");
    EXPECT_TRUE(styles.focus.empty() && styles.boxes.empty());
    EXPECT_EQ(Read("<general>\nwin_min_width = 0.3\n</general>\n"), 4) << "nor a border or the two buttons";
    EXPECT_EQ(styles.boxes.size(), 1U);
    EXPECT_FLOAT_EQ(styles.win_min_width, 0.3F);
    const std::string shot = Rectangle(0, "r = 1\na = 1\n");
    EXPECT_EQ(
        Read(Style(Mode("normal", shot) + Mode("Hover", shot) + Mode("normal", Rectangle(1, "") + shot)) +
             Style(Mode("Hover", ""))),
        2 + 3 + 1 + 4)
        << "missing states, and one that is not recognised";
    const Shot& normal = styles.Get(1).shots[0];
    ASSERT_EQ(normal.size(), 3U) << "modes chain";
    EXPECT_EQ(normal[1].mode, 1);
    EXPECT_EQ(styles.Get(2).shots[3].size(), 2U);
    const std::string holes = Mode(
        "normal", "<new shot>\nmode = 0\npolynum = 4\n<polylist>\n<poly>\nvnum = 3\n<vertlist>\n" +
                      PlainSkin::Vertex(2, 0.5F, 0.5F) + "</vertlist>\n</poly>\n</polylist>\n</new shot>\n");
    EXPECT_EQ(Read(Style(holes)), 2 + 3 + 2 + 3) << "states, vertices, polygons";
    const std::vector<ShotVertex>& verts = styles.Get(1).shots[0].at(0).polys.at(0).verts;
    ASSERT_EQ(verts.size(), 3U);
    EXPECT_TRUE(verts[0].r == 0 && verts[2].r == 1) << "one that is there lacks its colour";
}

TEST_F(SkinTest, CountsAreBoundByWhatTheGuiCanHold) {
    std::string shots, many;
    for (int i = 0; i < 300; ++i)
        shots += "<new shot>\nmode = 0\npolynum = 1000000000\n<polylist>\n<poly>\nvnum = 1000000000\n"
                 "<vertlist>\n</vertlist>\n</poly>\n</polylist>\n</new shot>\n";
    Read("<general>\n<border>\nbox_num = 1000000000\n</border>\n</general>\n" + Style(Mode("normal", shots)));
    EXPECT_LE(styles.boxes.size(), 255U);
    std::size_t vertices = 0;
    for (const ShotPolylist& list : styles.Get(1).shots[0])
        for (const ShotPoly& poly : list.polys)
            vertices += 1 + poly.verts.size();
    EXPECT_LE(vertices, 300U * 80U);
    EXPECT_LT(std::ranges::count(ReadLog(), '\n'), 600) << "lines";
    for (int i = 0; i < 300; ++i)
        many += Style("");
    Read(many);
    EXPECT_EQ(styles.Count(), 255);
}

TEST_F(SkinTest, ShotsAreDrawnByTheirModesAndHangOnTheirAnchors) {
    for (const auto& [anchor, x, y] : {std::tuple{5, 0.2F, 0.2F}, {8, 0.2F, 0.15F}, {9, 0.1F, 0.1F}}) {
        EXPECT_FLOAT_EQ(AnchorPoint({0.1F, 0.1F, 0.2F, 0.1F}, anchor).x, x) << anchor;
        EXPECT_FLOAT_EQ(AnchorPoint({0.1F, 0.1F, 0.2F, 0.1F}, anchor).y, y) << anchor;
    }
    // Filled, outlined, textured with the skin's yellow picture, and a mode that draws nothing.
    BeginFlat();
    glDisable(GL_DEPTH_TEST);
    const std::string red = "r = 1\ng = 0\nb = 0\na = 1\n";
    Read("<general>\nimage = \"cursor.png\"\n</general>\n" +
         Style(Mode("normal", Rectangle(0, red)) + Mode("hover", Rectangle(1, red)) +
               Mode("clicked", Rectangle(2, "r = 1\ng = 1\nb = 1\na = 1\n")) +
               Mode("disabled", Rectangle(7, red))));
    constexpr Rgba Middle[] = {{255, 0, 0}, {0, 0, 0}, {255, 255, 0}, {0, 0, 0}};
    for (std::size_t state = 0; state < 4; ++state) {
        glClear(GL_COLOR_BUFFER_BIT);
        styles.DrawShot(styles.Get(1).shots[state], {100, 100, 200, 100});
        EXPECT_EQ(PixelAt(200, 150), Middle[state]) << state;
        EXPECT_EQ(std::ranges::count(ReadScreen(), 255, &Rgba::red) > 500, state < 3) << state;
    }
    EXPECT_TRUE(glIsEnabled(GL_TEXTURE_2D) && !glIsEnabled(GL_BLEND));
    glEnable(GL_DEPTH_TEST);
}

TEST_F(SkinTest, TheFocusFrameLiesRoundTheFocusedElementWithinItsWindow) {
    const Rgba frame = {0, 255, 0};
    std::string skin = Text();
    skin.insert(skin.find("</focus style>\n"), Rectangle(0, "g = 1\na = 1\n"));
    gui.Clear();
    Start(skin);
    Show(window, {0.25F, 0.25F, 0.5F, 0.5F});
    window.AddComponent(&button);
    for (const float left : {0.1F, 0.4F}) { // the second stands over the window's edge
        button.left = left;
        gui.SetFocus(nullptr);
        Draw();
        const Box unframed = Find(Colour(3, GuiState::Normal));
        gui.SetFocus(&button);
        Draw();
        EXPECT_EQ(Find(frame), unframed) << left;
    }
    window.visible = false;
    Draw();
    EXPECT_FALSE(IsSeen(frame));
}

TEST_F(SkinTest, WithoutAFileOrAStyleTheBuiltInLookServes) {
    gui.Clear();
    std::remove("log.txt");
    gui.Start("nowhere.cfg");
    EXPECT_EQ(CountInLog("Loading nowhere.cfg - "), 4) << "no file, cursor, sounds and skin";
    UseWindow();
    // A picture that is not there is replaced by the blank one.
    std::remove("log.txt");
    Start("<cursor>\nimage = \"gone.png\"\nsize = 0.1\n</cursor>\n"
          "<skin>\n<general>\nimage = \"gone.png\"\n</general>\n</skin>\n"); // only style 0
    EXPECT_GE(CountInLog("loading blank texture\n"), 2);
    gui.cursor.visible = true;
    button.stid = 200;
    bar.stid = 0;
    for (int i = 0; i < 10; ++i) {
        UseWindow();
        EXPECT_EQ(gui.Hovered(), nullptr) << "a window of an unknown style is not hit";
    }
    EXPECT_EQ(button.stid, 0);
    EXPECT_EQ(window.stid, 8);
    for (const auto& [value, times] : {std::pair{"200\n", 1}, {"8\n", 2}}) // the window is drawn and hit
        EXPECT_EQ(CountInLog(std::string("Array out of range A.len = 1 , val = ") + value), times);
}

} // namespace
