// The modifier layer joins the scene: each kind in the kind table on the stack it belongs to,
// with the hooks of the kinds that act inside an object's own operations (tracking, array
// copies), and the particle modifier pipeline in the preparation slot of the particle kind.
// Called by the composition root after the layers below, before objects are made or projects read.
#pragma once

void RegisterModifierServices();
