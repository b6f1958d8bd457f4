// The kernel is tabulated once and read with linear interpolation: the sine and the window are too slow to be
// computed for every value.
#include "audio/resampler.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace {

constexpr int Crossings = 16;         // zero crossings of the sinc on either side of its middle
constexpr int StepsPerCrossing = 512; // of the table
// The highest tone that is kept, as a share of what the lower rate can hold; the rest is room for the slope.
constexpr double Passed = 0.93;

using Kernel = std::array<double, Crossings * StepsPerCrossing + 2>;

// Under a Blackman window.
Kernel MakeKernel() {
    Kernel kernel{};
    kernel[0] = 1;
    for (int i = 1; i < Crossings * StepsPerCrossing; ++i) {
        const double x = std::numbers::pi * i / StepsPerCrossing;
        const double window = 0.42 + 0.5 * std::cos(x / Crossings) + 0.08 * std::cos(2 * x / Crossings);
        kernel[static_cast<std::size_t>(i)] = std::sin(x) / x * window;
    }
    return kernel;
}

double At(const Kernel& kernel, double crossings) {
    const double position = std::min(crossings, double{Crossings}) * StepsPerCrossing;
    const auto index = static_cast<std::size_t>(position);
    const double share = position - static_cast<double>(index);
    return kernel[index] * (1 - share) + kernel[index + 1] * share;
}

} // namespace

std::vector<std::int16_t> Resample(std::span<const std::int16_t> samples, unsigned channels,
                                   std::uint32_t from, std::uint32_t to) {
    const Kernel kernel = MakeKernel();
    const auto frames = static_cast<std::int64_t>(samples.size() / channels);
    const std::int64_t count = frames * to / from;
    const double density = Passed * std::min(1.0, static_cast<double>(to) / from); // crossings a frame
    const double reach = Crossings / density;                                      // frames
    std::vector<std::int16_t> result(static_cast<std::size_t>(count) * channels);
    for (std::int64_t i = 0; i < count; ++i) {
        const double middle = static_cast<double>(i) * from / to;
        const auto last = static_cast<std::int64_t>(std::floor(middle + reach));
        std::array<double, 2> sums = {};
        double weights = 0; // what lies beyond either end counts as silence
        for (auto frame = static_cast<std::int64_t>(std::ceil(middle - reach)); frame <= last; ++frame) {
            const double weight = At(kernel, std::abs(static_cast<double>(frame) - middle) * density);
            weights += weight;
            if (frame < 0 || frame >= frames) continue;
            for (unsigned c = 0; c < channels; ++c)
                sums[c] += weight * samples[static_cast<std::size_t>(frame) * channels + c];
        }
        for (unsigned c = 0; c < channels; ++c) {
            const double value = std::clamp(std::round(sums[c] / weights), -32768.0, 32767.0);
            result[static_cast<std::size_t>(i) * channels + c] = static_cast<std::int16_t>(value);
        }
    }
    return result;
}
