// The class words of the scene and the names of the variants of primitives and lights. A class
// word is the concrete class as text ("Particle_cls"); it selects behaviour in place of virtual
// dispatch and is the key of objects and attributes in files. Any thread; read only.
#pragma once

#include <wx/arrstr.h>
#include <wx/string.h>

class SceneClassWord_cls {
public:
    // The object classes in the order ProcNew compares them.
    static const wxArrayString& GetAstrObjectClass();
    static bool IsObjectClass(const wxString& strClass);
    // "Camera" and "Camera_cls" both give "Camera_cls"; an unknown word gives empty text.
    static wxString GetStrClassFromKind(const wxString& strKind);
    // The class word without "_cls": the base of a new object's name.
    static wxString GetStrBaseName(const wxString& strClass);

    // Primitive kinds: 0 "Box", 1 "Sphere", 2 "Plane", 3 "Cone", 4 "Cylinder", 5 "Empty" (the
    // empty is a primitive that draws as a wire cross). The numbers are the item values.
    static const wxArrayString& GetAstrPrimitiveType();
    // The kind of a primitive name; -1 for an unknown one.
    static int GetPrimitiveTypeFromStr(const wxString& strType);
    // Light kinds: 0 "ParallelLight", 1 "PointLight", 2 "SpotLight", in the order of the menu.
    static const wxArrayString& GetAstrLightType();
    static int GetLightTypeFromStr(const wxString& strType);

    // Camera types of the "CameraType" list, eye types of "EyeType", stereo types of
    // "StereoType"; the numbers are the item values.
    static const wxArrayString& GetAstrCameraType();
    static const wxArrayString& GetAstrEyeType();
    static const wxArrayString& GetAstrStereoType();
    // Fog types: 0 "No Fog", 1 "Linear", 2 "Exp", 3 "Exp2".
    static const wxArrayString& GetAstrFogType();
};
