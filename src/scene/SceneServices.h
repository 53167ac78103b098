// Registers how the services of the scene layer are made: the scene object controller (the
// receiver of "SceneObjCtrl" lines, cleared with each project), the Lua interpreter's tables,
// the default scene of a new process, and the object kinds of this layer in the kind table. Clears
// the kind table first, so the layers above register theirs after it; the table is cleared again
// when the scene controller is deleted at the end of the registry.
#pragma once

void RegisterSceneServices();
