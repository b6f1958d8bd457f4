// The GUI's stage; see gui_stage.h.
#include "support/gui_stage.h"

#include "core/frame_clock.h"
#include "graphics/font.h"
#include "graphics/video.h"

#include <GL/gl.h>

#include <cmath>

namespace {

std::string PlainShot(float shade) {
    std::string text = "<new shot>\nmode = 0\npolynum = 1\n<polylist>\n<poly>\nvnum = 4\n<vertlist>\n";
    for (int corner = 0; corner < 4; ++corner)
        text += "<vert>\nfixed = " + std::to_string(corner) + "\nr = " + std::to_string(shade) +
                "\ng = 0.5\nb = 0.5\na = 1\n</vert>\n";
    return text + "</vertlist>\n</poly>\n</polylist>\n</new shot>\n";
}

void Handle(SDL_Event event) {
    SDL_PushEvent(&event);
    gui.ProcessEvents(0);
}

void HandleButton(Uint8 type) {
    SDL_Event event{};
    event.type = type;
    event.button.button = SDL_BUTTON_LEFT;
    Handle(event);
}

} // namespace

std::string PlainSkin() {
    std::string text =
        "<general>\nwin_min_width = 0.2\nwin_min_height = 0.1\nwin_max_width = 1.1\nwin_max_height = 1.1\n"
        "scroll_width = 0.05\nscroll_height = 0.05\nimage = \"default/blank.png\"\n"
        "<border>\nbox_num = 1\n<box>\nfixed2 = 2\n</box>\n</border>\n"
        "<close button>\ncaption = \"X\"\nwidth = 0.03\nheight = 0.03\nleft = 0.01\ntop = 0.01\nstid = 1\n"
        "pos_id = 1\n</close button>\n"
        "<resize button>\nwidth = 0.02\nheight = 0.02\nstid = 1\npos_id = 2\n</resize button>\n</general>\n"
        "<focus style>\n" +
        PlainShot(1) + "</focus style>\n";
    for (int style = 1; style <= 14; ++style) {
        text += "<New style>\nleftx = 0.02\nlefty = 0.04\nrightx = 0.02\nrighty = 0.02\ntextx = 0.01\ntexty "
                "= 0.02\n"
                "textr = 1\ntextg = 1\ntextb = 1\ntexta = 1\n";
        for (const char* state : {"normal", "hover", "clicked", "disabled"})
            text += "<mode>\nstate = \"" + std::string(state) + "\"\n" + PlainShot(0.5F) + "</mode>\n";
        text += "</New style>\n";
    }
    return text;
}

std::string SkinFile(const std::string& block) {
    return "<cursor>\nimage = \"default/blank.png\"\nsize = 0.04\n</cursor>\n<audio>\n</audio>\n<skin>\n" +
           block + "</skin>\n";
}

GuiStage::GuiStage(int width, int height) {
    folder.LinkData("default");
    folder.LinkData("font");
    OpenGlWindow(width, height);
    font.Load("font/basic4.png");
    StartGui(SkinFile(PlainSkin()));
}

GuiStage::~GuiStage() {
    gui.Destroy();
    font.Destroy();
}

void GuiStage::StartGui(const std::string& skinText) {
    WriteFile("skin.cfg", skinText);
    gui.Start("skin.cfg");
    SDL_Event event;
    while (SDL_PollEvent(&event)) {
    }
}

void GuiStage::Move(float x, float y) {
    SDL_Event event{};
    event.type = SDL_MOUSEMOTION;
    event.motion.x = static_cast<Uint16>(std::lround(x * static_cast<float>(video.Width())));
    event.motion.y = static_cast<Uint16>(std::lround(y * static_cast<float>(video.Height())));
    Handle(event);
}

void GuiStage::Press() {
    HandleButton(SDL_MOUSEBUTTONDOWN);
}

void GuiStage::Release() {
    HandleButton(SDL_MOUSEBUTTONUP);
}

void GuiStage::Click(float x, float y) {
    Move(x, y);
    Press();
    Release();
}

void GuiStage::KeyDown(SDLKey key, int modifiers) {
    SDL_Event event{};
    event.type = SDL_KEYDOWN;
    event.key.keysym.sym = key;
    event.key.keysym.mod = static_cast<SDLMod>(modifiers);
    Handle(event);
}

void GuiStage::KeyUp(SDLKey key) {
    SDL_Event event{};
    event.type = SDL_KEYUP;
    event.key.keysym.sym = key;
    Handle(event);
}

void GuiStage::Type(SDLKey key, int modifiers) {
    KeyDown(key, modifiers);
    KeyUp(key);
}

void GuiStage::Frames(int count, unsigned milliseconds) {
    frameClock.frameDelta = milliseconds;
    for (int frame = 0; frame < count; ++frame)
        gui.Draw();
}

std::vector<DrawnVertex> GuiStage::RecordFlat(void (*draw)()) {
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glLoadIdentity();
    glOrtho(0, 1, 1, 0, -1, 1);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    std::vector<DrawnVertex> vertices = RecordVertices(draw);
    glMatrixMode(GL_PROJECTION);
    glPopMatrix();
    glMatrixMode(GL_MODELVIEW);
    return vertices;
}
