// Registers how the services of the time layer are made: motion blur, ensemble, the queue of
// the idle pass and the scene clock, each joined to the command language in its maker.
#pragma once

void RegisterTimeServices();
