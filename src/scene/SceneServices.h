// Registers how the services of the scene layer are made: the scene object controller (the
// receiver of "SceneObjCtrl" lines, cleared with each project), the Lua interpreter's tables,
// and the default scene of a new process.
#pragma once

void RegisterSceneServices();
