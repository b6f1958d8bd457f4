// Game controllers: what their sticks, pads, hats and buttons do, as keys with codes of their own that go
// down and up. Rests on SDL's joystick calls.
#pragma once

#include "platform/not_copied.h"

#include <SDL.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

class Controllers : NotCopied {
public:
    // Codes behind all of SDL's key symbols. Every stick, pad and hat of every controller moves the same four
    // directions; buttons count from FirstButton.
    enum Code : int { Left = 1024, Right, Up, Down, FirstButton };
    static constexpr int ButtonCount = 16;

    struct Change {
        int code;
        bool down;
    };

    // Opens every controller that is plugged in, or logs that there is none. Needs SDL's video.
    void Start();
    void Stop();

    // What an event changes, releases first; nothing for one that is no controller's. Whoever takes events
    // from SDL's queue hands them all over, or what is held would be held for ever. Valid until the next
    // call.
    std::span<const Change> Translate(const SDL_Event& event);

    // Looks once a second whether a controller was unplugged, of which SDL tells nothing.
    void Watch();
    // With that many left: logs when they are fewer than before and lets go of everything that is held, by
    // events in SDL's queue.
    void Watch(int present);

private:
    static constexpr std::size_t MaxDevices = 4;
    static constexpr std::size_t MaxAxes = 8;
    static constexpr std::size_t MaxHats = 2;

    // An axis that does not rest in its middle is a trigger and no direction.
    enum class Axis : std::uint8_t { Unknown, Stick, Trigger };
    struct Device {
        SDL_Joystick* handle = nullptr;
        std::array<Axis, MaxAxes> kinds{};
        std::array<std::int8_t, MaxAxes> axes{}; // -1, 0 or 1
        std::array<std::uint8_t, MaxHats> hats{};
        std::uint32_t buttons = 0;
    };

    void Open(int index);
    void MoveAxis(const SDL_JoyAxisEvent& event);
    void MoveHat(const SDL_JoyHatEvent& event);
    void PressButton(const SDL_JoyButtonEvent& event);
    // One of the things that hold a code lets go of it or takes it.
    void Hold(int code, bool was, bool is);
    void LetGo() const;

    std::array<Device, MaxDevices> devices;
    std::array<std::uint8_t, ButtonCount + 4> holders{}; // by code, from Left
    std::array<Change, 4> changes{};
    std::size_t changeCount = 0;
    int opened = 0;
    int lastPresent = 0;
    std::uint32_t lastWatch = 0; // ms
};

extern Controllers controllers;
