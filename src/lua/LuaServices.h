// Registers how the services of the Lua layer are made: the mini calculator of numeric fields.
#pragma once

void RegisterLuaServices();
