// The text block with frame rate, driver and version that the world scene draws last.
#pragma once

// Face culling and the depth test are off afterwards.
void StatsOverlay();
