// The composition root: the one ordered list of the layers that register how their services are
// made. The window program, the headless program, the benchmarks and the test fixtures all start
// through RegisterServices. A layer joins the process by one line in it (and its place in
// ServiceLayer_enum), never by copying start-up code.
//
// A test of a lower layer stops at its own layer through the same function; the lines above it
// sit in discarded branches, so its executable links only the layers up to the one it asks for.
// The program that asks for everything fails to link until it links every layer.
#pragma once

// Each layer's own registration, defined in that layer beside its ...Services.h. Each one starts
// from nothing for its layer: what an earlier registry left is forgotten first.
void RegisterCoreServices();
void RegisterTimeServices();
void RegisterLuaServices();
void RegisterSceneServices();
void RegisterPrepServices();
void RegisterViewerServices();
void RegisterModifierServices();
void RegisterRenderServices();
void RegisterFilterServices();
void RegisterOutputServices();
void RegisterUIServices();

// The layers that register something, bottom-up in the order of their dependencies.
enum class ServiceLayer_enum {
    Core,
    Time,
    Lua,
    Scene,
    Prep,
    Viewer,
    Modifier,
    // GL objects and the frame passes: they need a current context when drawing, never a display.
    Render,
    // The post-filter chain over the rendered picture: GL, no display.
    Filter,
    // Image writers, record buffers and accumulation: GL, no windows.
    Output,
    Window,
    // The highest layer that needs no display: where the headless programs stop.
    Headless = Modifier,
    All = Window,
};

// Registers the layers from the core up to Top, in that order, replacing every registration made
// before. Main thread only, before Main_cls::CreateSingleton.
template <ServiceLayer_enum Top = ServiceLayer_enum::All> void RegisterServices() {
    RegisterCoreServices();
    if constexpr (Top >= ServiceLayer_enum::Time)
        RegisterTimeServices();
    if constexpr (Top >= ServiceLayer_enum::Lua)
        RegisterLuaServices();
    if constexpr (Top >= ServiceLayer_enum::Scene)
        RegisterSceneServices();
    if constexpr (Top >= ServiceLayer_enum::Prep)
        RegisterPrepServices();
    if constexpr (Top >= ServiceLayer_enum::Viewer)
        RegisterViewerServices();
    // The modifier layer installs the preparation's modifier seam, which the prep layer cleared.
    if constexpr (Top >= ServiceLayer_enum::Modifier)
        RegisterModifierServices();
    // The draw entries join the kinds that the layers below put in the kind table.
    if constexpr (Top >= ServiceLayer_enum::Render)
        RegisterRenderServices();
    // The chain installs itself as the frame passes' filter.
    if constexpr (Top >= ServiceLayer_enum::Filter)
        RegisterFilterServices();
    if constexpr (Top >= ServiceLayer_enum::Output)
        RegisterOutputServices();
    if constexpr (Top >= ServiceLayer_enum::Window)
        RegisterUIServices();
}
