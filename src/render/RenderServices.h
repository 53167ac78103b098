// Registers the services of the render layer: the shader library (made with the registry, it
// only reads its sources; programs are built on first use with a context current) and the two
// texture providers (textures are made on first use, on the GL thread).
#pragma once
void RegisterRenderServices();
