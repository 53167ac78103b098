// Installs the makers of the content panels this build has (the timeline with its play strip,
// outliner, property, text editor, console, 3D view) in the panel tree; the other types keep the
// stand-in panel. Main thread only.
#pragma once

void RegisterPanelMakers();
// Back to the stand-ins (tests).
void UnregisterPanelMakers();
