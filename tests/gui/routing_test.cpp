// Windows under real events: clicks, drags, stacking, focus, and that what is hit is what is drawn.
#include "core/frame_clock.h"
#include "graphics/video.h"
#include "gui/button.h"
#include "gui/hwindow.h"
#include "gui/label.h"
#include "support/gl_window.h"
#include "support/gui_stage.h"

#include <GL/gl.h>

#include <cmath>
#include <memory>
#include <random>

namespace {

int clicks = 0;
int lostFocus = 0;

void CountClick(GUI_Element*) {
    ++clicks;
}

class Routing : public GuiStage {
protected:
    Routing() {
        clicks = 0;
        lostFocus = 0;
        window.left = 0.2F;
        window.top = 0.2F;
        window.width = 0.5F;
        window.height = 0.5F;
        gui.AddWindow(&window);
        button.left = 0.1F;
        button.top = 0.1F;
        button.OnClick = CountClick;
        window.AddComponent(&button);
    }
    // The button's middle: window, client area, own place.
    static constexpr float ButtonX = 0.2F + 0.02F + 0.1F + 0.07F;
    static constexpr float ButtonY = 0.2F + 0.04F + 0.1F + 0.02F;

    GUI_Window window;
    GUI_Button button;
};

TEST_F(Routing, AClickIsAPressAndAReleaseOnTheSameElement) {
    Click(ButtonX, ButtonY);
    EXPECT_EQ(clicks, 1);
    Move(ButtonX, ButtonY);
    Press();
    EXPECT_EQ(button.state, GuiState::Clicked);
    Move(0.9F, 0.9F);
    Release();
    EXPECT_EQ(clicks, 1) << "released outside";
    GUI_Button other;
    other.left = 0.1F;
    other.top = 0.25F;
    other.OnClick = CountClick;
    window.AddComponent(&other);
    Move(ButtonX, ButtonY);
    Press();
    Move(ButtonX, ButtonY + 0.15F);
    Release();
    EXPECT_EQ(clicks, 1) << "released on another";
    gui.Clear();
}

TEST_F(Routing, DisabledAndHiddenElementsAreNotHit) {
    button.SetDisabled();
    Click(ButtonX, ButtonY);
    button.SetHover();
    button.SetNormal();
    EXPECT_EQ(button.state, GuiState::Disabled) << "only its owner enables it";
    button.state = GuiState::Normal;
    button.visible = false;
    Click(ButtonX, ButtonY);
    window.visible = false;
    button.visible = true;
    Click(ButtonX, ButtonY);
    EXPECT_EQ(clicks, 0);
}

TEST_F(Routing, AWindowFollowsThePointerAlsoWhereItIsNot) {
    Move(0.5F, 0.65F);
    Press();
    Move(0.1F, 0.1F);
    Move(0.05F, 0.15F);
    EXPECT_NEAR(window.left, 0.2F - 0.45F, 1e-4);
    EXPECT_NEAR(window.top, 0.2F - 0.5F, 1e-4);
    Release();
    Move(0.6F, 0.6F);
    EXPECT_NEAR(window.left, 0.2F - 0.45F, 1e-4) << "let go";
}

TEST_F(Routing, TheResizeButtonChangesTheSizeWithinTheSkinsLimits) {
    const float right = window.left + window.width - 0.01F;
    const float bottom = window.top + window.height - 0.01F;
    Move(right, bottom);
    Press();
    Move(0.9F, 0.8F);
    EXPECT_NEAR(window.width, 0.7F, 1e-3);
    EXPECT_NEAR(window.height, 0.6F, 1e-3);
    Move(0.21F, 0.21F);
    EXPECT_FLOAT_EQ(window.width, 0.2F);
    EXPECT_FLOAT_EQ(window.height, 0.1F);
    Release();
    window.SetSize(5, 5);
    EXPECT_FLOAT_EQ(window.width, 1.1F);
}

TEST_F(Routing, TheFocusedWindowLiesOnTop) {
    GUI_Window second;
    second.left = 0.3F;
    second.top = 0.3F;
    second.width = 0.5F;
    second.height = 0.5F;
    gui.AddWindow(&second);
    Move(0.65F, 0.65F);
    EXPECT_EQ(gui.Hovered(), &second);
    Click(0.22F, 0.66F);
    EXPECT_EQ(gui.Windows().back(), &window);
    Move(0.65F, 0.65F);
    EXPECT_EQ(gui.Hovered(), &window);
    gui.Clear();
}

TEST_F(Routing, AClickOutsideEveryWindowTakesTheFocusAndCallsTheScene) {
    button.OnLostFocus = [](GUI_Element*) { ++lostFocus; };
    gui.OnReleaseOutside = [] { ++clicks; };
    Click(ButtonX, ButtonY);
    EXPECT_EQ(gui.Focused(), &button);
    clicks = 0;
    Click(0.95F, 0.95F);
    EXPECT_EQ(gui.Focused(), nullptr);
    EXPECT_EQ(lostFocus, 1);
    EXPECT_EQ(clicks, 1);
}

TEST_F(Routing, AHiddenElementLosesTheFocusWithEveryFrame) {
    button.OnLostFocus = [](GUI_Element*) { ++lostFocus; };
    Click(ButtonX, ButtonY);
    window.visible = false;
    Frames(3, 16);
    EXPECT_EQ(lostFocus, 3);
    EXPECT_EQ(gui.Focused(), &button);
}

TEST_F(Routing, AddingTwiceMovesOrDoesNothing) {
    GUI_Window second;
    gui.AddWindow(&second);
    gui.AddWindow(&window);
    EXPECT_EQ(gui.Windows().size(), 2U);
    second.AddComponent(&button);
    EXPECT_EQ(button.parent, &second);
    EXPECT_EQ(window.Components().Size(), 2U) << "its close and resize button";
    gui.Clear();
    EXPECT_EQ(button.parent, nullptr);
    gui.Clear();
}

TEST_F(Routing, TheLoadingScreenPutsBackWhatItReplaced) {
    gui.OnKey = [](SDL_keysym) {};
    gui.OnQuit = [] {};
    Click(ButtonX, ButtonY);
    gui.LoadingStart(0.35F, 0.75F, 11, "Loading...");
    EXPECT_EQ(gui.Windows().size(), 1U);
    gui.LoadingStep("one");
    gui.LoadingStep("two");
    gui.LoadingEnd();
    EXPECT_EQ(gui.Windows().size(), 1U);
    EXPECT_EQ(gui.Windows()[0], &window);
    EXPECT_EQ(gui.Focused(), &button);
    EXPECT_NE(gui.OnKey, nullptr);
    EXPECT_EQ(gui.OnQuit, nullptr);
}

TEST_F(Routing, WithoutWindowsNothingIsDrawnNotEvenTheCursor) {
    gui.Clear();
    gui.cursor.visible = true;
    EXPECT_TRUE(RecordVertices([] { gui.Draw(); }).empty());
}

// The widget under test is the only one with a texture of its own to record: its drawing alone.
GUI_Component* drawn = nullptr;

// Random trees of windows and widgets: the rectangle in which a widget answers the pointer is the one it
// draws, cut by its container's right and bottom margins when it is clipped.
TEST_F(Routing, WhatIsHitIsWhatIsDrawn) {
    gui.Clear();
    std::mt19937 random(5);
    const auto between = [&](double low, double high) {
        return static_cast<float>(std::uniform_real_distribution<double>(low, high)(random));
    };
    for (int round = 0; round < 60; ++round) {
        GUI_Window plain;
        GUI_HWindow bare;
        GUI_Window& holder = random() % 2 ? plain : bare;
        holder.left = between(0.0, 0.4);
        holder.top = between(0.0, 0.4);
        holder.width = between(0.3, 0.6);
        holder.height = between(0.3, 0.6);
        holder.scissor = random() % 4 != 0;
        gui.AddWindow(&holder);
        GUI_Button widget;
        widget.caption = "";
        widget.pos_id = static_cast<GuiCorner>(random() % 4);
        widget.scissor = random() % 3 != 0;
        widget.left = between(0.0, 0.15);
        widget.top = between(0.0, 0.15);
        widget.width = between(0.02, 0.1);
        widget.height = between(0.02, 0.1);
        holder.AddComponent(&widget);
        drawn = &widget;

        const auto vertices = RecordFlat([] { drawn->Draw(); });
        ASSERT_GE(vertices.size(), 3U) << "round " << round;
        float left = 1e9F, right = -1e9F, top = 1e9F, bottom = -1e9F;
        for (const DrawnVertex& v : vertices) {
            left = std::min(left, v.x / 640.0F);
            right = std::max(right, v.x / 640.0F);
            top = std::min(top, 1.0F - v.y / 480.0F);
            bottom = std::max(bottom, 1.0F - v.y / 480.0F);
        }
        if (widget.scissor && holder.scissor) {
            const GUI_Style& style = gui.GetStyles().Get(holder.stid);
            right = std::min(right, holder.left + holder.width - style.rightx);
            bottom = std::min(bottom, holder.top + holder.height - style.righty);
        }
        const float margin = 0.004F;
        const auto hit = [&](float x, float y) { return widget.IsMouseOver(x, y) != nullptr; };
        const float midX = (left + right) / 2.0F;
        const float midY = (top + bottom) / 2.0F;
        if (right - left > 4 * margin && bottom - top > 4 * margin) {
            EXPECT_TRUE(hit(left + margin, midY) && hit(right - margin, midY) && hit(midX, top + margin) &&
                        hit(midX, bottom - margin))
                << "round " << round;
        }
        EXPECT_FALSE(hit(left - margin, midY) || hit(right + margin, midY) || hit(midX, top - margin) ||
                     hit(midX, bottom + margin))
            << "round " << round;
        gui.Clear();
    }
}

class Sizes : public GuiStage, public testing::WithParamInterface<std::pair<int, int>> {
protected:
    Sizes() : GuiStage(GetParam().first, GetParam().second) {}
};

// The GUI's own pointer and its widgets are drawn through one matrix: where its tip is drawn is where it
// points.
TEST_P(Sizes, ThePointersTipIsDrawnWhereItHits) {
    GUI_Window window;
    window.left = 0.1F;
    window.top = 0.1F;
    window.width = 0.8F;
    window.height = 0.8F;
    gui.AddWindow(&window);
    gui.cursor.visible = true;
    for (const float place : {0.1F, 0.5F, 0.9F}) {
        Move(place, place);
        const auto vertices = RecordVertices([] { gui.Draw(); });
        ASSERT_GE(vertices.size(), 4U);
        // The pointer is drawn last; its tip is its upper left corner, wherever the driver begins a polygon.
        DrawnVertex tip = vertices.back();
        for (auto vertex = vertices.end() - 4; vertex != vertices.end(); ++vertex)
            tip = {std::min(tip.x, vertex->x), std::max(tip.y, vertex->y), 0.0F};
        // The scale of the GUI leaves 0.6 % of the screen free at its edges.
        const float slack = std::abs(place - 0.5F) * 0.0065F;
        EXPECT_NEAR(tip.x, place * static_cast<float>(video.Width()),
                    slack * static_cast<float>(video.Width()) + 1.0F);
        EXPECT_NEAR(static_cast<float>(video.Height()) - tip.y, place * static_cast<float>(video.Height()),
                    slack * static_cast<float>(video.Height()) + 1.0F);
    }
    gui.Clear();
}

INSTANTIATE_TEST_SUITE_P(Modes, Sizes,
                         testing::Values(std::pair(640, 480), std::pair(1024, 768), std::pair(1280, 960),
                                         std::pair(1280, 720)));

} // namespace
