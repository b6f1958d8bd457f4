// Tests with the GUI; see gui_fixture.h.
#include "support/gui_fixture.h"

#include "base/frame_clock.h"
#include "graphics/font.h"
#include "graphics/middle_frame.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace {

void Hear() {
    gui.ProcessEvents(frameClock.frameDelta);
}

std::string Key(const char* name, double value) {
    return std::string(name) + " = " + std::to_string(value) + "\n";
}

std::string ColourKeys(Rgba colour) {
    return Key("r", colour.red / 255.0) + Key("g", colour.green / 255.0) + Key("b", colour.blue / 255.0) +
           "a = 1\n";
}

std::string Style(int number) {
    static constexpr const char* States[] = {"normal", "hover", "clicked", "disabled"};
    std::string text = "textr = 1\ntextg = 1\ntextb = 1\ntexta = 1\ntextx = 0.01\ntexty = 0.02\n";
    if (number == 8 || number == 13) text += "leftx = 0.02\nlefty = 0.06\nrightx = 0.03\nrighty = 0.04\n";
    for (int state = 0; state < 4; ++state) {
        const Rgba colour = PlainSkin::Colour(number, static_cast<GuiState>(state));
        // The caption bar lies over the body; here it leaves it free.
        text += PlainSkin::Mode(States[state], number == 9 ? PlainSkin::Block("new shot", "polynum = 0\n")
                                                           : PlainSkin::Rectangle(0, ColourKeys(colour)));
    }
    return PlainSkin::Block("New style", text);
}

} // namespace

Rgba PlainSkin::Colour(int style, GuiState state) {
    return {static_cast<std::uint8_t>(style * 15 + 20),
            static_cast<std::uint8_t>(static_cast<int>(state) * 60 + 40), 90};
}

std::string PlainSkin::Block(const std::string& name, const std::string& content) {
    return "<" + name + ">\n" + content + "</" + name + ">\n";
}

std::string PlainSkin::Mode(const std::string& state, const std::string& shots) {
    return Block("mode", "state = \"" + state + "\"\n" + shots);
}

std::string PlainSkin::Vertex(int anchor, float x, float y, const std::string& colour) {
    return Block("vert", Key("fixed", anchor) + Key("x", x) + Key("y", y) + colour);
}

std::string PlainSkin::Rectangle(int mode, const std::string& colour) {
    std::string corners;
    for (int anchor = 0; anchor < 4; ++anchor)
        corners += Vertex(anchor, 0, 0, colour);
    const std::string poly = Block("poly", "vnum = 4\n" + Block("vertlist", corners));
    return Block("new shot", Key("mode", mode) + "polynum = 1\n" + Block("polylist", poly));
}

std::string PlainSkin::Text() {
    // Without a window no picture can be made.
    const std::string image = SDL_GetVideoSurface() ? "image = \"cursor.png\"\n" : "";
    std::string skin =
        "<general>\n" + image +
        "scroll_width = 0.04\nscroll_height = 0.04\n"
        "win_min_width = 0.2\nwin_min_height = 0.1\nwin_max_width = 1.1\nwin_max_height = 1.1\n"
        "<border>\nbox_num = 1\n<box>\nfixed1 = 0\nfixed2 = 2\n</box>\n</border>\n"
        "<close button>\ncaption = \"\"\nwidth = 0.03\nheight = 0.03\nstid = 10\nleft = 0.01\ntop = 0.01\n"
        "pos_id = 1\n</close button>\n"
        "<resize button>\ncaption = \"\"\nwidth = 0.02\nheight = 0.02\nstid = 15\npos_id = 2\n"
        "</resize button>\n</general>\n<focus style>\n</focus style>\n";
    for (int number = 1; number <= 15; ++number)
        skin += Style(number);
    return Block("cursor", image + "size = 0.02\n") + Block("skin", skin);
}

GuiTest::GuiTest(Screen screen) : GlTest(screen) {
    DropEvents();
    WriteFile("cursor.png", MakePng(4, 4, [](int, int) { return Rgba{255, 255, 0}; }));
    if (SDL_GetVideoSurface()) font.Load("font/basic4.png");
    frameClock.frameDelta = 10;
    Start(PlainSkin::Text());
}

void GuiTest::TearDown() {
    gui.Clear();
    gui.Destroy();
    font.Destroy();
}

void GuiTest::Start(const std::string& skin) {
    WriteFile("skin.cfg", skin);
    gui.Start("skin.cfg");
    gui.cursor.visible = false;
}

void GuiTest::Place(GUI_Element& element, const GuiRect& rect) {
    element.Place(rect.left, rect.top);
    element.width = rect.width;
    element.height = rect.height;
}

void GuiTest::Show(GUI_Window& window, const GuiRect& rect) {
    Place(window, rect);
    gui.AddWindow(&window);
}

void GuiTest::MoveTo(int x, int y) {
    SDL_Event event{};
    event.motion = {SDL_MOUSEMOTION, 0, 0, static_cast<Uint16>(x), static_cast<Uint16>(y), 0, 0};
    SDL_PushEvent(&event);
    Hear();
}

void GuiTest::Move(float x, float y) {
    const MiddleFrame frame = MiddleFrame::Of(video.Width(), video.Height());
    MoveTo(static_cast<int>(std::lround(frame.PixelX(x))), static_cast<int>(std::lround(frame.PixelY(y))));
}

void GuiTest::Press() {
    PushButton(SDL_MOUSEBUTTONDOWN);
    Hear();
}

void GuiTest::Release() {
    PushButton(SDL_MOUSEBUTTONUP);
    Hear();
}

void GuiTest::Click(float x, float y) {
    Move(x, y);
    Press();
    Release();
}

void GuiTest::KeyDown(SDLKey key, int modifiers) {
    PushKey(SDL_KEYDOWN, key, modifiers);
    Hear();
}

void GuiTest::KeyUp(SDLKey key) {
    PushKey(SDL_KEYUP, key);
    Hear();
}

void GuiTest::Type(SDLKey key, int modifiers) {
    KeyDown(key, modifiers);
    KeyUp(key);
}

void GuiTest::TypeKeys(const std::string& keys) {
    static const std::map<char, SDLKey> Keys = {{'L', SDLK_LEFT},  {'R', SDLK_RIGHT}, {'U', SDLK_UP},
                                                {'D', SDLK_DOWN},  {'T', SDLK_TAB},   {'t', SDLK_TAB},
                                                {'E', SDLK_RETURN}};
    for (const char key : keys)
        Type(Keys.at(key), key == 't' ? KMOD_RSHIFT | KMOD_NUM : KMOD_NONE);
}

void GuiTest::Draw() {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glMatrixMode(GL_MODELVIEW);
    gui.Draw();
}

void GuiTest::DrawFor(int milliseconds, int frame) {
    frameClock.frameDelta = static_cast<std::uint32_t>(frame);
    // Only the last one is looked at; the others are spared the filling of their surfaces.
    glEnable(GL_CULL_FACE);
    glCullFace(GL_FRONT_AND_BACK);
    for (int passed = frame; passed < milliseconds; passed += frame)
        Draw();
    glCullFace(GL_BACK);
    glDisable(GL_CULL_FACE);
    Draw();
}

std::vector<Rgba> GuiTest::ReadScreen() {
    const auto width = static_cast<std::size_t>(video.Width());
    const auto height = static_cast<std::size_t>(video.Height());
    std::vector<Rgba> screen(width * height);
    glReadPixels(0, 0, video.Width(), video.Height(), GL_RGBA, GL_UNSIGNED_BYTE, screen.data());
    for (std::size_t top = 0, bottom = height - 1; top < bottom; ++top, --bottom)
        std::swap_ranges(&screen[top * width], &screen[top * width] + width, &screen[bottom * width]);
    return screen;
}

GuiTest::Box GuiTest::Find(Rgba colour) {
    Box box;
    const std::vector<Rgba> screen = ReadScreen();
    const int width = video.Width();
    for (int i = 0; i < static_cast<int>(screen.size()); ++i) {
        Rgba pixel = screen[static_cast<std::size_t>(i)];
        pixel.alpha = colour.alpha;
        if (pixel != colour) continue;
        box.left = std::min(box.left, i % width);
        box.right = std::max(box.right, i % width + 1);
        box.top = std::min(box.top, i / width);
        box.bottom = std::max(box.bottom, i / width + 1);
    }
    return box;
}
