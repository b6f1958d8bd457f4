// Preloaded into a game with sanitizers, keeps the driver loaded to the end, so that the leak checker can
// tell the driver's memory from the game's.
extern "C" int dlclose(void* /*library*/) {
    return 0;
}
