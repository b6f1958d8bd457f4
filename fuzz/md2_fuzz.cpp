// Any bytes as an MD2 model with its tag side file, played and blended. The first two bytes say how many of
// the others are the side file.
#include "graphics/md2_instance.h"
#include "graphics/md2_model.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <vector>

namespace {

void Play(const Md2Model& model) {
    Md2Instance instance(&model);
    std::vector<float> positions(model.CornerCount() * 3);
    for (int row = -1; row <= 20; ++row) {
        instance.animation = row;
        for (const std::uint32_t delta : {0U, 7U, 130U, 200U, 0xFFFFFFFFU}) {
            instance.Animate(delta);
            if (instance.CurrentFrame() >= model.FrameCount() || instance.NextFrame() >= model.FrameCount())
                std::abort();
            model.Interpolate(instance.CurrentFrame(), instance.NextFrame(), instance.T(), positions.data());
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    const auto bytes = std::as_bytes(std::span(data, size)).subspan(2);
    const std::size_t tagSize =
        std::min<std::size_t>(data[0] | static_cast<unsigned>(data[1]) << 8U, bytes.size());
    Md2Model model;
    if (!model.Parse(bytes.subspan(tagSize))) return 0;
    if (!model.ParseTags(bytes.first(tagSize)) && !model.Tags().empty()) std::abort();
    Play(model);
    return 0;
}
