#include "world/background_map.h"

#include "base/log.h"
#include "config/config_file.h"
#include "scene/game_mode.h"

#include <GL/gl.h>

#include <algorithm>

constinit std::unique_ptr<Backmap> backmap;

namespace {

constexpr float CellWidth = 2.0F; // drawing units; the tile's shape is scaled to it

} // namespace

bool Backmap::Load(const char* path) {
    if (!ConfigFile(path).IsOpen()) {
        LogWrite("mainScene::Backmap::Load[ FATAL ERROR !] - file not found\n");
        Main::SDL_Quit();
        return false;
    }
    models.Init();
    models.SetScale(CellWidth);
    sectors.clear();
    sectors.emplace_back(); // made in its place: a sector is too large for a small stack
    return true;
}

void Backmap::DrawLayer(std::uint32_t sector) const {
    if (sector >= sectors.size()) return;
    const BackgroundSector& drawn = sectors[sector];
    const KsmModel& tile = models.Ksm(0);
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    const std::size_t groups = std::min<std::size_t>(drawn.groupCount, BackgroundSector::MaxGroups);
    for (std::size_t g = 0; g < groups; ++g) {
        glBindTexture(GL_TEXTURE_2D, models.textures.Get(drawn.groupTexture[g]));
        for (std::size_t c = 0; c < drawn.groupCellCount[g]; ++c) {
            const BackgroundCell& cell = drawn.groupCells[g][c];
            // The tile's shape is centred on the cell.
            tile.DrawAtXY(CellWidth * (static_cast<float>(cell.x) + 0.5F),
                          CellWidth * (static_cast<float>(cell.y) + 0.5F));
        }
    }
    glDisableClientState(GL_VERTEX_ARRAY);
    glDisableClientState(GL_TEXTURE_COORD_ARRAY);
}

void Backmap::Release() {
    sectors.clear();
    models.Destroy();
}
