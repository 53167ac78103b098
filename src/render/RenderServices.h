// Registers the services of the render layer: the shader library (made with the registry, it
// only reads its sources; programs are built on first use with a context current).
#pragma once
void RegisterRenderServices();
