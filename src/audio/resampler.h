// Brings samples from one rate to any other, which the mixer's library cannot. Rests on nothing.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

// Interpolates with a windowed sinc, which keeps pitch and loudness and lets no mirror images through.
// `samples` are whole frames of `channels` (1 or 2) values each; the rates are in Hz and not zero. The result
// lasts as long as what was given.
[[nodiscard]] std::vector<std::int16_t> Resample(std::span<const std::int16_t> samples, unsigned channels,
                                                 std::uint32_t from, std::uint32_t to);
