// Registers how the services of the window layer are made: the program's log target.
#pragma once

void RegisterUIServices();
