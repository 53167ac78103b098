// Registers what the worker layer needs at start-up: the CPU count that sizes every pass.
#pragma once

void RegisterPrepServices();
