#include "play/map_containers.h"

#include "base/log.h"
#include "particles/engine.h"
#include "world/background_map.h"
#include "world/entities.h"
#include "world/object_set.h"
#include "world/world_grid.h"

#include <memory>

namespace {

// Releases and frees one container of the map, if there is one.
template<class Container> void Remove(std::unique_ptr<Container>& container, const char* name) {
    if (!container) return;
    LogWrite("mainScene::StopMap()-Removing old %s\n", name);
    container->Release();
    container.reset();
}

template<class Container> void Create(std::unique_ptr<Container>& container, const char* what) {
    if (container) return;
    LogWrite("mainScene::StartMap()-Requesting memory for %s\n", what);
    container = std::make_unique<Container>();
}

} // namespace

void RemoveContainers() {
    Remove(objects, "objects");
    Remove(globalp, "globalp");
    Remove(backmap, "backmap");
    Remove(entityes, "entityes");
    Remove(pengine, "pengine");
}

MapContainers CreateContainers() {
    Create(backmap, "new backmap");
    Create(globalp, "new globalp");
    Create(objects, "new objects");
    Create(entityes, "new entityes");
    Create(pengine, "particle engine");
    return {*backmap, *globalp, *objects, *entityes, *pengine};
}
