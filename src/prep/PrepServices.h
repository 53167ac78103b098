// Registers what the worker layer needs at start-up: the CPU count that sizes every pass. Clears
// the preparation's modifier seam, which the modifier layer fills after it.
#pragma once

void RegisterPrepServices();
