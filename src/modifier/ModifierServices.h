// The modifier layer joins the scene: one attribute maker per kind on the stack the kind
// belongs to, the particle modifier pipeline in the preparation, and the scene's seams of the
// kinds that act inside an object's own operations. Called by the composition root after the
// layers below, before objects are made or projects read.
#pragma once

void RegisterModifierServices();
