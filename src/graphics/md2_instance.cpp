// A step goes from the frame that the last step reached; between steps the next frame is blended in.
#include "graphics/md2_instance.h"

#include "graphics/ksm_model.h"
#include "graphics/model_state.h"

#include <algorithm>
#include <cmath>

namespace {

// Which way Q lies from P on the ground. Two points in one place have no direction; they count as straight
// on.
float AngleOf(Vec3 p, Vec3 q) {
    const float across = q.x - p.x;
    const float along = p.y - q.y;
    const float angle = across == 0 && along == 0 ? 0 : std::atan(across / along) * DegreesPerRadian;
    return q.y < p.y ? angle : angle + 180.0F;
}

} // namespace

void Md2Instance::Animate(std::uint32_t delta) {
    if (!model || animation < 0 || static_cast<std::size_t>(animation) >= model->Animations().size()) return;
    const Md2Anim& anim = model->Animations()[static_cast<std::size_t>(animation)];
    const float frameTime = 1000.0F / static_cast<float>(anim.fps);
    if (static_cast<float>(elapsed) > frameTime) elapsed = 0;
    elapsed += delta;

    const auto steps = static_cast<std::int64_t>(anim.fps) * elapsed / 1000;
    currentFrame = frameCounter;
    nextFrame = steps > anim.last - frameCounter ? anim.first : frameCounter + static_cast<int>(steps);
    frameCounter = nextFrame;
    if (steps == 0) nextFrame = frameCounter < anim.last ? frameCounter + 1 : anim.first;
    t = std::min(static_cast<float>(elapsed) / frameTime, 1.0F);
    if (!model->Tags().empty()) InterpolateTag();
}

void Md2Instance::InterpolateTag() {
    const Md2Tag& a = model->Tags()[static_cast<std::size_t>(currentFrame)];
    const Md2Tag& b = model->Tags()[static_cast<std::size_t>(nextFrame)];
    tagP = Lerp(a.p, b.p, t);
    tagQ = Lerp(a.q, b.q, t);
    tagAngle = AngleOf(tagP, tagQ);
}

// Both model formats wind clockwise as seen from outside; all else is drawn as OpenGL expects it.
void Md2Instance::Draw() const {
    if (!model) return;
    glFrontFace(GL_CW);
    DrawMesh();
    if (attached) {
        if (modelState.textures.Count() > 0) glBindTexture(GL_TEXTURE_2D, modelState.textures.Get(0));
        glTranslatef(tagP.x, tagP.y, tagP.z);
        glRotatef(tagAngle, 0, 0, 1);
        attached->Draw();
    }
    glFrontFace(GL_CCW);
}

void Md2Instance::DrawMesh() const {
    if (model->CornerCount() == 0) return;
    float* positions = modelState.Buffer(model->CornerCount() * 3);
    model->Interpolate(currentFrame, nextFrame, t, positions);
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    glTexCoordPointer(2, GL_FLOAT, 0, model->Texcoords().data());
    glVertexPointer(3, GL_FLOAT, 0, positions);
    glDrawArrays(GL_TRIANGLES, 0, static_cast<GLsizei>(model->CornerCount()));
    glDisableClientState(GL_VERTEX_ARRAY);
    glDisableClientState(GL_TEXTURE_COORD_ARRAY);
}
