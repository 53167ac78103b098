// The ribbon tools and menu items that act on the scene: the "Add" menu, duplicate and delete.
// Each goes through a command of the scene controller, so it reaches the outliner through the
// panel updates and one undo takes it back. Main thread only.
#pragma once

class SceneCommand_cls {
public:
    // True when the id was one of these tools and the controller took it; false for the tools
    // whose object kind or operation this build does not have (the frame says so in the log).
    static bool ProcRibbonCommand(int id);
};
