// The skin's reader: what it finds, what it falls back on, and that no file can hurt it.
#include "config/config_reader.h"
#include "gui/component.h"
#include "gui/hwindow.h"
#include "gui/text_entry.h"
#include "support/gl_window.h"
#include "support/gui_stage.h"

#include <GL/gl.h>

#include <algorithm>
#include <cmath>

namespace {

class Skin : public GuiStage {
protected:
    int LogLines(const std::string& text) const {
        const std::string log = ReadLog();
        int lines = 0;
        for (std::size_t at = log.find(text); at != std::string::npos; at = log.find(text, at + 1))
            ++lines;
        return lines;
    }
    const GUI_Styles& Read(const std::string& block) {
        std::filesystem::remove("log.txt");
        StartGui(SkinFile(block));
        return gui.GetStyles();
    }
};

TEST_F(Skin, AnEmptySkinGivesOneStyleAndWindowsThatAreNotHit) {
    const GUI_Styles& skin = Read("");
    EXPECT_EQ(skin.Count(), 1);
    EXPECT_STREQ(skin.closeButton.caption.data(), "X");
    EXPECT_TRUE(skin.focus.empty());
    EXPECT_TRUE(skin.boxes.empty());
    EXPECT_EQ(LogLines("QEV_Gui::GUI_Styles::Load() [ warning ] - General block wasn't found\n"), 1);
    EXPECT_EQ(LogLines("QEV_Gui::GUI_Styles::Load() [ warning ] - Focus style wasn't found\n"), 1);
    GUI_Window window;
    gui.AddWindow(&window);
    EXPECT_EQ(window.IsMouseOver(0.1F, 0.1F), nullptr);
    gui.Clear();
}

TEST_F(Skin, BordersFallBackToTheWholeWindow) {
    EXPECT_EQ(Read("<general>\n</general>\n").boxes.size(), 1U);
    const GUI_Styles& skin = Read("<general>\n<border>\nbox_num = 2\n<box>\npos1x = 0.1\nfixed1 = 1\nfixed2 "
                                  "= 2\n</box>\n</border>\n</general>\n");
    ASSERT_EQ(skin.boxes.size(), 2U);
    EXPECT_EQ(LogLines("Box block N 1 wasn't found\n"), 1);
    const GuiRect window = {0.2F, 0.2F, 0.4F, 0.4F};
    EXPECT_FALSE(skin.boxes[0].Contains(window, 0.45F, 0.3F)) << "its left edge hangs on the right one";
    EXPECT_TRUE(skin.boxes[0].Contains(window, 0.55F, 0.3F));
    EXPECT_TRUE(skin.boxes[1].Contains(window, 0.2F, 0.2F));
    EXPECT_FALSE(skin.boxes[1].Contains(window, 0.6F, 0.3F)) << "the right edge belongs to it no more";
}

TEST_F(Skin, ModesChainByNameAndMissingStatesGetTheBuiltInLook) {
    const std::string shot = "<new shot>\nmode = 1\npolynum = 0\n</new shot>\n";
    const GUI_Styles& skin = Read("<New style>\ntextr = 0.25\n<mode>\nstate = \"normal\"\n" + shot + shot +
                                  "</mode>\n<mode>\nstate = \"normal\"\n" + shot +
                                  "</mode>\n<mode>\nstate = \"Hover\"\n" + shot + "</mode>\n</New style>\n");
    ASSERT_EQ(skin.Count(), 2);
    EXPECT_EQ(skin.Get(1).shots[0].size(), 3U);
    EXPECT_FLOAT_EQ(skin.Get(1).textr, 0.25F);
    EXPECT_FLOAT_EQ(skin.Get(1).leftx, 0.0F);
    EXPECT_EQ(skin.Get(1).shots[1].size(), 2U) << "the built-in look is a filling and an outline";
    EXPECT_EQ(LogLines("mode[1] info wasn't loaded - loading default \n"), 1);
    EXPECT_EQ(LogLines("Incorrect or missing value"), 0) << "an earlier mode was recognised";
    Read("<New style>\n<mode>\nstate = \"Hover\"\n</mode>\n</New style>\n");
    EXPECT_EQ(LogLines("Incorrect or missing value at state = Hover \n"), 1);
}

TEST_F(Skin, MissingPartsOfAShotAreLogged) {
    const auto style = [](const std::string& shot) {
        return "<New style>\n<mode>\nstate = \"normal\"\n<new shot>\n" + shot +
               "</new shot>\n</mode>\n</New style>\n";
    };
    EXPECT_TRUE(Read(style("polynum = 3\n")).Get(1).shots[0][0].polys.empty());
    EXPECT_EQ(LogLines("No polylist is found \n"), 1);
    Read(style("polynum = 1\n<polylist>\n</polylist>\n"));
    EXPECT_EQ(LogLines("No poly is found in poly list \n"), 1);
    Read(style("polynum = 1\n<polylist>\n<poly>\nvnum = 2\n</poly>\n</polylist>\n"));
    EXPECT_EQ(LogLines("No vertlist is found in poly \n"), 1);
    const GUI_Styles& skin =
        Read(style("polynum = 1\n<polylist>\n<poly>\nvnum = 2\n<vertlist>\n<vert>\nfixed = "
                   "5\n</vert>\n</vertlist>\n</poly>\n</polylist>\n"));
    EXPECT_EQ(LogLines("No vert is found in vertlist\n"), 1);
    const auto& vertices = skin.Get(1).shots[0][0].polys[0].verts;
    ASSERT_EQ(vertices.size(), 2U);
    EXPECT_EQ(vertices[0].fixed, 5);
    EXPECT_FLOAT_EQ(vertices[1].r, 1.0F) << "a missing vertex is white and hangs on the first corner";
}

TEST_F(Skin, AnchorsAreNinePlacesOfTheRectangle) {
    const GuiRect rect = {0.1F, 0.1F, 0.2F, 0.1F};
    const GuiPoint bottom = AnchorPoint(rect, 5);
    EXPECT_FLOAT_EQ(bottom.x + 0.01F, 0.21F);
    EXPECT_FLOAT_EQ(bottom.y - 0.01F, 0.19F);
    const GuiPoint centre = AnchorPoint(rect, 8);
    EXPECT_FLOAT_EQ(centre.x, 0.2F);
    EXPECT_FLOAT_EQ(centre.y, 0.15F);
    EXPECT_FLOAT_EQ(AnchorPoint(rect, 200).x, 0.1F);
    EXPECT_EQ(CharactersIn(0.3F, 0.01F), 18);
}

// Whatever is cut off and whatever count is absurd, there is a skin with which windows can be drawn and hit.
TEST_F(Skin, DamagedFilesLeaveAUsableGui) {
    const std::string whole = SkinFile(PlainSkin());
    GUI_Window window;
    const auto use = [&](const std::string& text) {
        StartGui(text);
        gui.AddWindow(&window);
        Click(0.1F, 0.1F);
        gui.Draw();
        gui.Clear();
    };
    std::size_t cut = 0;
    for (int line = 0; cut != std::string::npos; ++line) {
        // Lines in the middle are all alike.
        if (line < 120 || line % 41 == 0) use(whole.substr(0, cut));
        cut = whole.find('\n', cut + 1);
    }
    for (const char* count : {"0", "255", "1000000000", "-1", "word"}) {
        for (const char* key :
             {"polynum = 1", "vnum = 4", "box_num = 1", "fixed = 2", "stid = 1", "pos_id = 1", "mode = 0"}) {
            std::string text = whole;
            for (std::size_t at = text.find(key); at != std::string::npos && at < 4000;
                 at = text.find(key, at + 1))
                text.replace(at + std::string(key).find("= ") + 2, 1, count);
            use(text);
        }
    }
    use("");
    gui.Clear();
}

// Relative luminance and contrast as the web's accessibility guidelines define them.
double Luminance(float r, float g, float b) {
    const auto linear = [](double c) {
        return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(r) + 0.7152 * linear(g) + 0.0722 * linear(b);
}

class RealSkin : public GuiStage {
protected:
    RealSkin() {
        folder.LinkData("gui");
        std::filesystem::remove("log.txt");
        gui.Start("gui/ravix.cfg");
    }
};

TEST_F(RealSkin, LoadsWithoutAWarning) {
    EXPECT_GE(gui.GetStyles().Count(), 15);
    EXPECT_FALSE(gui.GetStyles().focus.empty());
    const std::string log = ReadLog();
    EXPECT_EQ(log.find("warning"), std::string::npos) << log;
    EXPECT_EQ(log.find("failed"), std::string::npos) << log;
}

double Contrast(double one, double other) {
    return (std::max(one, other) + 0.05) / (std::min(one, other) + 0.05);
}

double TextLuminance(std::uint8_t stid) {
    const GUI_Style& style = gui.GetStyles().Get(stid);
    return Luminance(style.textr, style.textg, style.textb);
}

// Mean luminance of a part of the screen, in fractions, after the GUI was drawn on black.
double DrawnLuminance(float left, float top, float width, float height) {
    double sum = 0.0;
    int pixels = 0;
    for (int y = static_cast<int>(top * 480.0F); y < static_cast<int>((top + height) * 480.0F); ++y) {
        for (int x = static_cast<int>(left * 640.0F); x < static_cast<int>((left + width) * 640.0F);
             x += 3, ++pixels) {
            const Pixel p = ReadPixel(x, y);
            sum += Luminance(static_cast<float>(p.red) / 255.0F, static_cast<float>(p.green) / 255.0F,
                             static_cast<float>(p.blue) / 255.0F);
        }
    }
    return sum / pixels;
}

void DrawOnBlack() {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    gui.cursor.visible = false;
    gui.SetFocus(nullptr);
    gui.Draw();
}

// Every style that carries text, in every state, where its caption lies.
TEST_F(RealSkin, TextIsReadableOnEveryStyleAndState) {
    GUI_Window window;
    window.width = 0.6F;
    window.height = 0.5F;
    window.left = 0.2F;
    window.top = 0.2F;
    gui.AddWindow(&window);
    GUI_Component widget;
    widget.left = 0.1F;
    widget.top = 0.1F;
    widget.width = 0.2F;
    window.AddComponent(&widget);
    for (const std::uint8_t stid : {1, 2, 3, 14}) {
        for (const GuiState state :
             {GuiState::Normal, GuiState::Hover, GuiState::Clicked, GuiState::Disabled}) {
            widget.stid = stid;
            widget.state = state;
            widget.caption = "";
            DrawOnBlack();
            const GuiRect rect = DrawnRect(gui.GetStyles(), widget);
            const GUI_Style& style = gui.GetStyles().Get(stid);
            const double ground =
                DrawnLuminance(rect.left + style.textx, rect.top + rect.height / 2 - 0.008F, 0.1F, 0.016F);
            EXPECT_GE(Contrast(TextLuminance(stid), ground), 4.5)
                << "style " << int{stid} << " state " << static_cast<int>(state);
        }
    }
    window.caption = "";
    DrawOnBlack();
    EXPECT_GE(Contrast(TextLuminance(9), DrawnLuminance(0.24F, 0.215F, 0.2F, 0.02F)), 4.5)
        << "the caption bar";
    for (const std::uint8_t labels : {1, 11, 12})
        EXPECT_GE(Contrast(TextLuminance(labels), DrawnLuminance(0.3F, 0.55F, 0.2F, 0.05F)), 4.5)
            << "on a window's body";
    gui.Clear();
    GUI_HWindow bare;
    bare.left = 0.2F;
    bare.top = 0.2F;
    bare.width = 0.4F;
    bare.height = 0.3F;
    gui.AddWindow(&bare);
    DrawOnBlack();
    EXPECT_GE(Contrast(TextLuminance(1), DrawnLuminance(0.3F, 0.3F, 0.1F, 0.1F)), 4.5) << "on a panel";
    gui.Clear();
}

} // namespace
