// Playing copies of MD2 models; see md2_instance.h.
#include "graphics/md2_instance.h"

#include "graphics/ksm_model.h"
#include "graphics/model_state.h"

#include <GL/gl.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr float DegreesPerRadian = 57.29578F;

} // namespace

void Md2Instance::Animate(std::uint32_t delta) {
    if (!model) return;
    const auto table = model->Animations();
    if (animation < 0 || static_cast<std::size_t>(animation) >= table.size()) return;
    const Md2Anim& played = table[static_cast<std::size_t>(animation)];
    const auto frameTime = static_cast<std::uint32_t>(1000 / played.fps);
    if (elapsed > frameTime) elapsed = 0;
    elapsed += delta;
    const auto steps = static_cast<int>(static_cast<std::uint64_t>(played.fps) * elapsed / 1000);
    currentFrame = frameCounter;
    nextFrame = frameCounter + steps;
    if (nextFrame > played.last) nextFrame = played.first;
    frameCounter = nextFrame;
    if (steps == 0) nextFrame = frameCounter < played.last ? frameCounter + 1 : played.first;
    t = std::min(static_cast<float>(elapsed) / static_cast<float>(frameTime), 1.0F);
    InterpolateTag();
}

void Md2Instance::InterpolateTag() {
    const auto tags = model->Tags();
    if (tags.empty()) return;
    const Md2Tag& from = tags[static_cast<std::size_t>(currentFrame)];
    const Md2Tag& to = tags[static_cast<std::size_t>(nextFrame)];
    tagP = Lerp(from.p, to.p, t);
    tagQ = Lerp(from.q, to.q, t);
    // The arc tangent of a quotient, with a vertical direction at a right angle.
    const float across = tagQ.x - tagP.x;
    const float along = tagP.y - tagQ.y;
    tagAngle = across == 0.0F && along == 0.0F ? 0.0F : std::atan(across / along) * DegreesPerRadian;
    if (tagQ.y >= tagP.y) tagAngle += 180.0F;
}

void Md2Instance::Draw() const {
    if (!model || model->CornerCount() == 0) return;
    float* positions = modelState.Buffer(model->CornerCount() * 3);
    model->Interpolate(currentFrame, nextFrame, t, positions);
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    glTexCoordPointer(2, GL_FLOAT, 0, model->Texcoords().data());
    glVertexPointer(3, GL_FLOAT, 0, positions);
    glDrawArrays(GL_TRIANGLES, 0, static_cast<GLsizei>(model->CornerCount()));
    glDisableClientState(GL_VERTEX_ARRAY);
    glDisableClientState(GL_TEXTURE_COORD_ARRAY);
    if (!attached) return;
    if (modelState.textures.Count() > 0) glBindTexture(GL_TEXTURE_2D, modelState.textures.Get(0));
    glTranslatef(tagP.x, tagP.y, tagP.z);
    glRotatef(tagAngle, 0.0F, 0.0F, 1.0F);
    attached->Draw();
}
