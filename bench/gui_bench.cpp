// A screen of 6 windows and 60 widgets, beside the same vertices and glyphs submitted by a bare loop; and the
// routing of 1,000 motion events. With GALLIUM_NOOP=1 the driver draws nothing, so that only the submission
// is measured.
#include "config/config_reader.h"
#include "graphics/font.h"
#include "graphics/textures.h"
#include "graphics/video.h"
#include "gui/button.h"
#include "gui/label.h"
#include "gui/manager.h"

#include <GL/gl.h>
#include <IL/il.h>
#include <IL/ilu.h>
#include <benchmark/benchmark.h>

#include <array>
#include <cstring>
#include <vector>

namespace {

constexpr int Windows = 6;
constexpr int WidgetsInWindow = 10;
constexpr int FramesInRun = 400; // the driver that draws nothing keeps some memory of every frame

// The process's screen, opened with the first benchmark that draws.
struct Screen {
    Screen() {
        video.Load("config.cfg");
        SDL_WM_GrabInput(SDL_GRAB_OFF);
        ilInit();
        iluInit();
        font.Load("font/basic4.png");
        gui.Start("gui/ravix.cfg");
        for (int w = 0; w < Windows; ++w) {
            GUI_Window& window = windows[static_cast<std::size_t>(w)];
            window.left = 0.02F + 0.33F * static_cast<float>(w % 3);
            window.top = 0.02F + 0.48F * static_cast<float>(w / 3);
            window.width = 0.3F;
            window.height = 0.45F;
            gui.AddWindow(&window);
            for (int i = 0; i < WidgetsInWindow; ++i) {
                GUI_Button& button = buttons[static_cast<std::size_t>(w * WidgetsInWindow + i)];
                button.top = 0.036F * static_cast<float>(i);
                button.height = 0.035F;
                window.AddComponent(&button);
            }
        }
    }
    std::array<GUI_Window, Windows> windows;
    std::array<GUI_Button, Windows * WidgetsInWindow> buttons;
};

Screen& TheScreen() {
    static Screen screen;
    return screen;
}

// What one frame submits, written down: the shots' vertices by primitive, and the captions.
struct BareShot {
    GLenum primitive;
    bool textured;
    std::vector<std::array<float, 8>> vertices; // colour, texture, place
};
struct BareText {
    float x, y;
    const char* text;
    GLsizei length;
    std::array<float, 4> colour;
};
struct BareFrame {
    std::vector<BareShot> shots;
    std::vector<BareText> texts;
};

void Write(BareFrame& frame, const Shot& shot, const GuiRect& rect) {
    static constexpr std::array<GLenum, 3> Primitives = {GL_TRIANGLE_FAN, GL_LINE_LOOP, GL_POLYGON};
    for (const ShotPolylist& list : shot) {
        if (list.mode >= Primitives.size()) continue;
        BareShot& bare = frame.shots.emplace_back(BareShot{Primitives[list.mode], list.mode == 2, {}});
        for (const ShotPoly& poly : list.polys)
            for (const ShotVertex& v : poly.verts) {
                const GuiPoint anchor = AnchorPoint(rect, v.fixed);
                bare.vertices.push_back({v.r, v.g, v.b, v.a, v.u, v.v, anchor.x + v.x, anchor.y + v.y});
            }
    }
}

BareFrame WriteFrame() {
    BareFrame frame;
    const GUI_Styles& styles = gui.GetStyles();
    const auto write = [&](const GUI_Element& element, std::uint8_t stid, const GuiRect& rect,
                           const char* text) {
        const GUI_Style& style = styles.Get(stid);
        Write(frame, style.shots[static_cast<std::size_t>(element.state)], rect);
        if (text && *text)
            frame.texts.push_back({rect.left + style.textx,
                                   rect.top + style.texty,
                                   text,
                                   static_cast<GLsizei>(std::strlen(text)),
                                   {style.textr, style.textg, style.textb, style.texta}});
    };
    for (const GUI_Window* window : gui.Windows()) {
        write(*window, 8, RectOf(*window), "");
        write(*window, 9, RectOf(*window), window->caption);
        for (std::size_t i = 0; i < window->Components().Size(); ++i) {
            const GUI_Component& widget = window->Components()[i];
            write(widget, widget.stid, DrawnRect(styles, widget), widget.caption);
        }
    }
    if (gui.Focused()) Write(frame, styles.focus, DrawnRect(styles, *gui.Focused()));
    return frame;
}

// All texts under one flat projection, with their lengths known.
void DrawBareTexts(const std::vector<BareText>& texts) {
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glLoadIdentity();
    glOrtho(0, 640, 0, 480, -1, 1);
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    glListBase(font.ListBase() - 32);
    for (const BareText& text : texts) {
        glColor4fv(text.colour.data());
        glLoadIdentity();
        glTranslatef(text.x * 640, 470 - text.y * 480, 0);
        glCallLists(text.length, GL_UNSIGNED_BYTE, text.text);
    }
    glPopMatrix();
    glMatrixMode(GL_PROJECTION);
    glPopMatrix();
    glMatrixMode(GL_MODELVIEW);
}

void BM_GuiDraw(benchmark::State& state) {
    TheScreen();
    for (auto _ : state)
        gui.Draw();
}
BENCHMARK(BM_GuiDraw)->Iterations(FramesInRun);

void BM_GuiDraw_Limit(benchmark::State& state) {
    TheScreen();
    const BareFrame frame = WriteFrame();
    for (auto _ : state) {
        glPushMatrix();
        glLoadIdentity();
        glScaled(1.53, -1.15, -1.0);
        glTranslated(-0.5, -0.5, 1.0);
        glEnable(GL_BLEND);
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        for (const BareShot& shot : frame.shots) {
            shot.textured ? glEnable(GL_TEXTURE_2D) : glDisable(GL_TEXTURE_2D);
            glBegin(shot.primitive);
            for (const auto& v : shot.vertices) {
                glColor4f(v[0], v[1], v[2], v[3]);
                glTexCoord2f(v[4], v[5]);
                glVertex2f(v[6], v[7]);
            }
            glEnd();
        }
        glPopMatrix();
        DrawBareTexts(frame.texts);
    }
}
BENCHMARK(BM_GuiDraw_Limit)->Iterations(FramesInRun);

void BM_GuiMotion1000(benchmark::State& state) {
    TheScreen();
    for (auto _ : state) {
        for (int i = 0; i < 1000; ++i) {
            gui.cursor.x = static_cast<float>(i % 97) / 97.0F;
            gui.cursor.y = static_cast<float>(i % 89) / 89.0F;
            gui.MouseMove();
        }
    }
}
BENCHMARK(BM_GuiMotion1000);

} // namespace
