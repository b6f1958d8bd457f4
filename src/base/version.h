// The game's version, printed in the log's header and on the statistics overlay.
#pragma once

inline constexpr float gameVersion = 1.0F;
