// Registers how the services of the core layer are made: the preferences and the undo manager.
#pragma once

void RegisterCoreServices();
