// A direction may be held by several things at once, a stick and a hat: it goes down with the first and up
// with the last of them.
#include "input/controllers.h"

#include "base/log.h"
#include "platform/platform.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

constinit Controllers controllers;

namespace {

constexpr int FullWay = 32767;
constexpr int PressWay = 16384;            // half the way
constexpr int ReleaseWay = 9830;           // three tenths: a trembling stick presses once
constexpr std::size_t SureSticks = 2;      // the first two axes are a stick or a pad on every controller
constexpr std::uint32_t WatchPause = 1000; // ms

} // namespace

void Controllers::Start() {
    if (SDL_InitSubSystem(SDL_INIT_JOYSTICK) != 0) {
        LogWrite("Controllers::Start() - [WARNING] %s\n", SDL_GetError());
        return;
    }
    SDL_JoystickEventState(SDL_ENABLE);
    const int count = std::min(SDL_NumJoysticks(), static_cast<int>(MaxDevices));
    for (int i = 0; i < count; ++i)
        Open(i);
    if (opened == 0) LogWrite("Controllers::Start() - none found\n");
    lastPresent = platform::CountControllers();
}

void Controllers::Open(int index) {
    Device& device = devices.at(static_cast<std::size_t>(index));
    device.handle = SDL_JoystickOpen(index);
    const char* name = SDL_JoystickName(index);
    if (!device.handle) {
        LogWrite("Controllers::Start() - [WARNING] %s: %s\n", name ? name : "", SDL_GetError());
        return;
    }
    ++opened;
    LogWrite("Controllers::Start() - %s\n", name ? name : "");
    SDL_JoystickUpdate();
    for (std::size_t axis = SureSticks; axis < MaxAxes; ++axis)
        if (std::abs(SDL_JoystickGetAxis(device.handle, static_cast<int>(axis))) > PressWay)
            device.kinds[axis] = Axis::Trigger;
}

void Controllers::Stop() {
    if (SDL_WasInit(SDL_INIT_JOYSTICK) != 0) {
        for (const Device& device : devices)
            if (device.handle) SDL_JoystickClose(device.handle);
        SDL_QuitSubSystem(SDL_INIT_JOYSTICK);
    }
    devices.fill({});
    holders.fill(0);
    opened = 0;
}

std::span<const Controllers::Change> Controllers::Translate(const SDL_Event& event) {
    changeCount = 0;
    if (event.type == SDL_JOYAXISMOTION)
        MoveAxis(event.jaxis);
    else if (event.type == SDL_JOYHATMOTION)
        MoveHat(event.jhat);
    else if (event.type == SDL_JOYBUTTONDOWN || event.type == SDL_JOYBUTTONUP)
        PressButton(event.jbutton);
    return std::span(changes).first(changeCount);
}

void Controllers::MoveAxis(const SDL_JoyAxisEvent& event) {
    if (event.which >= MaxDevices || event.axis >= MaxAxes) return;
    Device& device = devices[event.which];
    const int way = std::abs(int{event.value});
    Axis& kind = device.kinds[event.axis];
    // A stick begins near its middle and a pad goes all the way at once; a trigger comes from its end.
    if (kind == Axis::Unknown)
        kind = event.axis < SureSticks || way < PressWay || way >= FullWay ? Axis::Stick : Axis::Trigger;
    if (kind == Axis::Trigger) return;
    std::int8_t& held = device.axes[event.axis];
    const std::int8_t was = held;
    const int side = event.value < 0 ? -1 : 1;
    if (way > PressWay)
        held = static_cast<std::int8_t>(side);
    else if (way < ReleaseWay || side != was)
        held = 0;
    const int back = event.axis % 2 == 0 ? Left : Up;
    const int on = event.axis % 2 == 0 ? Right : Down;
    if (was != 0) Hold(was < 0 ? back : on, true, held == was);
    if (held != 0) Hold(held < 0 ? back : on, held == was, true);
}

void Controllers::MoveHat(const SDL_JoyHatEvent& event) {
    if (event.which >= MaxDevices || event.hat >= MaxHats) return;
    std::uint8_t& held = devices[event.which].hats[event.hat];
    constexpr std::pair<int, int> Directions[] = {
        {SDL_HAT_LEFT, Left}, {SDL_HAT_RIGHT, Right}, {SDL_HAT_UP, Up}, {SDL_HAT_DOWN, Down}};
    for (const bool taking : {false, true})
        for (const auto& [bit, code] : Directions)
            if (((event.value & bit) != 0) == taking) Hold(code, (held & bit) != 0, taking);
    held = event.value;
}

void Controllers::PressButton(const SDL_JoyButtonEvent& event) {
    if (event.which >= MaxDevices || event.button >= ButtonCount) return;
    std::uint32_t& held = devices[event.which].buttons;
    const std::uint32_t bit = 1U << event.button;
    const bool down = event.state == SDL_PRESSED;
    Hold(FirstButton + event.button, (held & bit) != 0, down);
    held = down ? held | bit : held & ~bit;
}

void Controllers::Hold(int code, bool was, bool is) {
    if (was == is) return;
    std::uint8_t& count = holders.at(static_cast<std::size_t>(code - Left));
    if (is ? count++ == 0 : --count == 0) changes.at(changeCount++) = {code, is};
}

void Controllers::Watch() {
    const std::uint32_t now = SDL_GetTicks();
    if (opened == 0 || now - lastWatch < WatchPause) return;
    lastWatch = now;
    Watch(platform::CountControllers());
}

void Controllers::Watch(int present) {
    if (present < lastPresent) {
        LogWrite("Controllers::Watch() - [WARNING] a controller was unplugged\n");
        LetGo();
    }
    lastPresent = present;
}

void Controllers::LetGo() const {
    SDL_Event event{};
    for (std::size_t i = 0; i < MaxDevices; ++i) {
        const auto which = static_cast<Uint8>(i);
        for (std::size_t axis = 0; axis < MaxAxes; ++axis) {
            if (devices[i].axes[axis] == 0) continue;
            event.jaxis = {SDL_JOYAXISMOTION, which, static_cast<Uint8>(axis), 0};
            SDL_PushEvent(&event);
        }
        for (std::size_t hat = 0; hat < MaxHats; ++hat) {
            if (devices[i].hats[hat] == 0) continue;
            event.jhat = {SDL_JOYHATMOTION, which, static_cast<Uint8>(hat), SDL_HAT_CENTERED};
            SDL_PushEvent(&event);
        }
        for (int button = 0; button < ButtonCount; ++button) {
            if ((devices[i].buttons & (1U << button)) == 0) continue;
            event.jbutton = {SDL_JOYBUTTONUP, which, static_cast<Uint8>(button), SDL_RELEASED};
            SDL_PushEvent(&event);
        }
    }
}
