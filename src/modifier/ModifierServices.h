// The modifier layer joins the scene: one attribute maker per kind on the stack the kind
// belongs to. Call once at start, before objects are made or projects read.
#pragma once

void RegisterModifierServices();
