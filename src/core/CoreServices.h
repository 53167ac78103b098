// Registers how the services of the core layer are made: the preferences and the undo manager.
// Forgets every registration made before, so it comes first (see the composition root in src/app).
#pragma once

void RegisterCoreServices();
