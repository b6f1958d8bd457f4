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

// What one frame submits, written down in the order of drawing: each element's vertices by primitive, in
// units of the font's screen, and its caption.
struct BareShot {
    GLenum primitive;
    bool textured;
    std::vector<std::array<float, 8>> vertices; // colour, texture, place
};
struct BareElement {
    std::vector<BareShot> shots;
    const char* text = "";
    GLsizei length = 0;
    float x = 0.0F, y = 0.0F;
    std::array<float, 4> colour{};
};

constexpr float UnitsX = 640.0F;
constexpr float UnitsY = 480.0F;

void Write(BareElement& element, const Shot& shot, const GuiRect& rect) {
    static constexpr std::array<GLenum, 3> Primitives = {GL_TRIANGLE_FAN, GL_LINE_LOOP, GL_POLYGON};
    for (const ShotPolylist& list : shot) {
        if (list.mode >= Primitives.size()) continue;
        BareShot& bare = element.shots.emplace_back(BareShot{Primitives[list.mode], list.mode == 2, {}});
        for (const ShotPoly& poly : list.polys)
            for (const ShotVertex& v : poly.verts) {
                const GuiPoint anchor = AnchorPoint(rect, v.fixed);
                bare.vertices.push_back({v.r, v.g, v.b, v.a, v.u, v.v, (anchor.x + v.x) * UnitsX,
                                         UnitsY - (anchor.y + v.y) * UnitsY});
            }
    }
}

BareElement WriteElement(GuiState state, std::uint8_t stid, const GuiRect& rect, const char* text) {
    const GUI_Style& style = gui.GetStyles().Get(stid);
    BareElement element;
    Write(element, style.shots[static_cast<std::size_t>(state)], rect);
    element.text = text;
    element.length = static_cast<GLsizei>(std::strlen(text));
    element.x = (rect.left + style.textx) * UnitsX;
    element.y = 470.0F - (rect.top + style.texty) * UnitsY;
    element.colour = {style.textr, style.textg, style.textb, style.texta};
    return element;
}

std::vector<BareElement> WriteFrame() {
    std::vector<BareElement> frame;
    const GUI_Styles& styles = gui.GetStyles();
    for (const GUI_Window* window : gui.Windows()) {
        frame.push_back(WriteElement(window->state, 8, RectOf(*window), ""));
        for (std::size_t i = 0; i < window->Components().Size(); ++i) {
            const GUI_Component& widget = window->Components()[i];
            frame.push_back(
                WriteElement(widget.state, widget.stid, DrawnRect(styles, widget), widget.caption));
        }
        frame.push_back(WriteElement(window->state, 9, RectOf(*window), window->caption));
    }
    if (gui.Focused()) Write(frame.emplace_back(), styles.focus, DrawnRect(styles, *gui.Focused()));
    return frame;
}

void Submit(const BareElement& element, GLuint skin, GLuint glyphs) {
    for (const BareShot& shot : element.shots) {
        if (shot.textured) {
            glEnable(GL_TEXTURE_2D);
            glBindTexture(GL_TEXTURE_2D, skin);
        } else {
            glDisable(GL_TEXTURE_2D);
        }
        glBegin(shot.primitive);
        for (const auto& v : shot.vertices) {
            glColor4f(v[0], v[1], v[2], v[3]);
            glTexCoord2f(v[4], v[5]);
            glVertex2f(v[6], v[7]);
        }
        glEnd();
    }
    if (element.length == 0) return;
    glEnable(GL_TEXTURE_2D);
    glBindTexture(GL_TEXTURE_2D, glyphs);
    glColor4fv(element.colour.data());
    glPushMatrix();
    glTranslatef(element.x, element.y, 0);
    glCallLists(element.length, GL_UNSIGNED_BYTE, element.text);
    glPopMatrix();
}

void BM_GuiDraw(benchmark::State& state) {
    TheScreen();
    for (auto _ : state)
        gui.Draw();
}
BENCHMARK(BM_GuiDraw)->Iterations(FramesInRun);

void BM_GuiDraw_Limit(benchmark::State& state) {
    TheScreen();
    const std::vector<BareElement> frame = WriteFrame();
    const GUI_Styles& styles = gui.GetStyles();
    const GLuint skin = styles.image.Get(styles.picture);
    // Printing leaves the font's texture bound.
    font.PrintAt(0, 0, 0, " ");
    GLint glyphs = 0;
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &glyphs);
    for (auto _ : state) {
        glMatrixMode(GL_PROJECTION);
        glPushMatrix();
        glLoadIdentity();
        glOrtho(0, UnitsX, 0, UnitsY, -1, 1);
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
        glEnable(GL_BLEND);
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        glListBase(font.ListBase() - 32);
        for (const BareElement& element : frame)
            Submit(element, skin, static_cast<GLuint>(glyphs));
        glMatrixMode(GL_PROJECTION);
        glPopMatrix();
        glMatrixMode(GL_MODELVIEW);
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
