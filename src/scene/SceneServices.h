// Registers how the services of the scene layer are made: the scene object controller (the
// receiver of "SceneObjCtrl" lines, cleared with each project), the Lua interpreter's tables,
// and the default scene of a new process. Forgets the object kinds and seams registered before,
// so the layers above register theirs after it.
#pragma once

void RegisterSceneServices();
