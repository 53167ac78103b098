// One GLSL program of the shader library: its sources as read and as compiled, and the uniform
// locations that the host looks up by name. Built lazily on first use; GL thread only from
// MakeShader on, the constructor and SetShaderPath only read files.
#pragma once

#include "GLObject_cls.h"
#include "ShaderStatusVolume_cls.h"

#include <wx/string.h>

#include <vector>

class ShaderItem_cls {
public:
    explicit ShaderItem_cls(const wxString& strName);
    // A copy takes the texts and the lists but no program: it starts untried.
    ShaderItem_cls(const ShaderItem_cls& other);
    ShaderItem_cls& operator=(const ShaderItem_cls&) = delete;
    ShaderItem_cls(ShaderItem_cls&&) = default;

    // Deletes the program and clears both flags, so the next use builds again.
    void Clear();
    // Stores the stem and reads stem + ".vert", ".geom" and ".frag" where they exist.
    void SetShaderPath(const wxString& strStem);
    // Compiles and links; the valid flag tells the result. GL thread only.
    void MakeShader();

    // "SetParameter <key>=<value>" lines of a geometry source. A line without both marks is skipped.
    static void ReadGeometryShaderStrForParameter(const wxString& strLine, int& inputType, int& outputType,
                                                  long& verticesOut);
    static int GetGLGeometryConstant(const wxString& strName);

    bool IsValid() const { return mbValid; }
    bool IsTried() const { return mbTried; }
    GLuint GetProgram() const { return mProgram.Get(); }
    // Location of the uniform at the table index (-1 when the linker dropped it).
    int GetLocation(size_t index) const { return index < mVLocation.size() ? mVLocation[index] : -1; }
    // Location of the uniform by its name in the table (-1 when it is not in the list).
    int GetLocationByName(const char* strUniform) const;

    wxString mStrName;
    wxString mStrStem;
    wxString mStrVert, mStrGeom, mStrFrag;                         // as read, snippets put in
    wxString mStrVertCompiled, mStrGeomCompiled, mStrFragCompiled; // as given to GL
    std::vector<wxString> mVStrUniform;
    std::vector<wxString> mVStrAttribute;
    std::vector<int> mVLocation;
    bool mbEnsemble = false;
    bool mbFog = false;
    int mEnsembleLocation[3] = {-1, -1, -1};
    int mFogLocation[3] = {-1, -1, -1};
    // Of the volume programs: the shader modifiers that the compiled fragment text was made for.
    ShaderStatusVolumeCoord_cls mCStatusVolumeCoord;
    ShaderStatusVolumeMask_cls mCStatusVolumeMask;

    // The folder that holds "GL/..." (relative to the program's folder unless absolute).
    static wxString msStrResourceDir;

private:
    bool Compile(GLShader_cls& shader, const wxString& strText, const char* strKind, const char* strExt);
    void AppendLog(int object, const wxString& strHeader, int kind);
    static void ReadShaderString(unsigned int& shader, const wxString& strText);

    GLProgram_cls mProgram;
    bool mbValid = false;
    bool mbTried = false;
};
