#include "scene/stats_overlay.h"

#include "base/frame_clock.h"
#include "base/version.h"
#include "graphics/font.h"
#include "graphics/video.h"

#include <GL/gl.h>

void StatsOverlay() {
    glDisable(GL_CULL_FACE);
    glDisable(GL_DEPTH_TEST);
    font.Print(10, 10, 0, "FPS = %d | TIME = %d", frameClock.fps, static_cast<int>(frameClock.frameDelta));
    font.PrintBlend(10, 450, 0, "%s\n", DriverText(GL_VENDOR));
    font.Print(10, 470, 0, "%s\n", DriverText(GL_RENDERER));
    font.Print(515, 470, 0, "version %f", static_cast<double>(gameVersion));
}
