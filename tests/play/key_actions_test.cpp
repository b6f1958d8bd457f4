// What bound keys do to the rules and the modes.
#include "play/key_actions.h"
#include "play/kolvex.h"
#include "scene/game_mode.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string_view>
#include <utility>

namespace {

KeyAction ActionOf(std::string_view name) {
    const auto found = std::ranges::find(KeyActions(), name, &KeyFunction::name);
    EXPECT_NE(found, KeyActions().end()) << name;
    return found == KeyActions().end() ? nullptr : found->function;
}

TEST(KeyActions, ReachTheRulesAndTheModes) {
    kolvex.NewGame();
    EXPECT_EQ(std::ranges::count(KeyActions(), nullptr, &KeyFunction::function), 7) << "idle ones";
    EXPECT_EQ(ActionOf("+pause"), &Main::Pause);
    EXPECT_EQ(ActionOf("-quit"), &Main::Quit);
    for (const auto& [action, after] : {std::pair{"+moveleft", MoveState::Left},
                                        {"-moveright", MoveState::Left},
                                        {"-moveleft", MoveState::None},
                                        {"+moveright", MoveState::Right},
                                        {"-moveright", MoveState::None},
                                        {"+movebackward", MoveState::SoftDrop},
                                        {"-movebackward", MoveState::None},
                                        {"+space", MoveState::Drop},
                                        {"+moveleft", MoveState::Drop}}) {
        ActionOf(action)();
        EXPECT_EQ(kolvex.GetMoveState(), after) << action;
    }
    while (kolvex.GetPiece().type == Piece::Square)
        kolvex.NewGame();
    ActionOf("+moveforward")();
    kolvex.Update();
    EXPECT_EQ(kolvex.GetPiece().angle, 90);
}

} // namespace
