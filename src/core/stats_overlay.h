// The text block with frame rate, driver and version that the world scene draws last.
#pragma once

void StatsOverlay();
