// One playing copy of an MD2 model: its place in an animation, and what it carries.
// Rests on the model, on OpenGL to draw, and on the model state's shared vertex buffer.
#pragma once

#include "graphics/md2_model.h"

#include <cstdint>

class KsmModel;

class Md2Instance {
public:
    constexpr Md2Instance() = default;
    // The model must outlive the instance; null animates and draws nothing.
    explicit Md2Instance(const Md2Model* newModel) : model(newModel) {}

    // Advances the animation by `delta` milliseconds. Does nothing when the model has no animation table, or
    // none with the chosen index.
    void Animate(std::uint32_t delta);
    // Draws the mesh between the current and the next frame; the caller has bound the skin. An attached model
    // is drawn at the tag, which leaves the matrix moved and turned, with texture 0 of the model state's
    // texture set if there is one, otherwise with the one bound.
    void Draw() const;

    const Md2Model* Model() const { return model; }

    int CurrentFrame() const { return currentFrame; }
    int NextFrame() const { return nextFrame; }
    // Between the two frames, 0 to 1.
    float T() const { return t; }
    // The tag between the two frames, and its angle in degrees. Zero without tag data.
    Vec3 TagP() const { return tagP; }
    Vec3 TagQ() const { return tagQ; }
    float TagAngle() const { return tagAngle; }

    // Row of the model's animation table.
    int animation = 0;
    // Drawn at the tag; owned by its store. Null for none.
    const KsmModel* attached = nullptr;

private:
    void InterpolateTag();
    void DrawMesh() const;

    const Md2Model* model = nullptr;
    Vec3 tagP;
    Vec3 tagQ;
    float tagAngle = 0;
    float t = 0;
    std::uint32_t elapsed = 0; // milliseconds into the current step
    int currentFrame = 0;
    int nextFrame = 0;
    int frameCounter = 0; // frame that the last step reached
};
