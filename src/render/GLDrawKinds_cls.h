// The draw entries of the object kinds the renderer knows now: primitives with their material,
// lights (set up as fixed-pipeline lights and drawn as guides), cameras as guides, the world's
// fog, and the data kinds' drawers (stream lines, height fields, isosurfaces) with their per-view
// resources. Main thread only.
#pragma once

class Camera_cls;
class GLDrawStatus_cls;
class Material_cls;
class SceneObj_cls;

class GLDrawKinds_cls {
public:
    // Puts every entry into GLDrawTable_cls.
    static void RegisterAll();

    static void GLDrawPrimitive(SceneObj_cls* pObj, GLDrawStatus_cls& status);
    // The shadow volume of a primitive whose material casts.
    static void GLDrawPrimitiveSV(SceneObj_cls* pObj, GLDrawStatus_cls& status);
    static void GLDrawLightSource(SceneObj_cls* pObj, GLDrawStatus_cls& status);
    static void GLDrawCamera(SceneObj_cls* pObj, GLDrawStatus_cls& status);
    static void GLDrawWorld(SceneObj_cls* pObj, GLDrawStatus_cls& status);
    // Meshes and text objects, through the drawers of the frame passes that draw them.
    static void GLDrawMesh(SceneObj_cls* pObj, GLDrawStatus_cls& status);
    static void GLDrawMeshSV(SceneObj_cls* pObj, GLDrawStatus_cls& status);
    static void GLDrawText(SceneObj_cls* pObj, GLDrawStatus_cls& status);
    // Particle objects, through the particle drawing of the frame passes.
    static void GLDrawParticle(SceneObj_cls* pObj, GLDrawStatus_cls& status);
    // Volume objects, through the volume drawing of the frame passes.
    static void GLDrawVolumeBox(SceneObj_cls* pObj, GLDrawStatus_cls& status);

    // The camera's passepartout over a square buffer of the given size, drawn in 2D: the parts
    // outside the frame of the camera's aspect darkened with the camera's alpha.
    static void GLDrawPassepartout(Camera_cls* pCamera, int size);
    // Material colours, shininess, blending, faces and shading of the material at t. Returns the
    // flat-shading flag for the object programs.
    static int SetMaterial(Material_cls* pMaterial, double t);
    // Binds the material's image on the unit with its wrap, filter, scale and offset (the unit's
    // texture matrix), leaves unit 0 active, and gives the object programs' texture mode: 0 none
    // (no image, or no mesh drawer to hold it), 1 modulate, 2 replace. UnbindMaterialTexture
    // resets the matrix and the binding.
    static int BindMaterialTexture(Material_cls* pMaterial, GLDrawStatus_cls& status, int unit);
    static void UnbindMaterialTexture(int unit);
    // In the shadowed area of a shadow step an object whose material takes no shadow keeps what
    // the lit phase drew: its draw entry draws nothing then.
    static bool IsSkippedInShadowedArea(const Material_cls* pMaterial);
    // The colour in which a guide or a highlight is drawn for the select status.
    static void SetGuideColor(int selectStatus, float r, float g, float b);
};
