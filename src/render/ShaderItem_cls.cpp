#include "ShaderItem_cls.h"

#include "AsciiReader_cls.h"
#include "GLCheckError_cls.h"

#include <wx/filename.h>
#include <wx/log.h>
#include <wx/tokenzr.h>

wxString ShaderItem_cls::msStrResourceDir = "Resource";

ShaderItem_cls::ShaderItem_cls(const wxString& strName) : mStrName(strName) {}

ShaderItem_cls::ShaderItem_cls(const ShaderItem_cls& other)
    : mStrName(other.mStrName), mStrStem(other.mStrStem), mStrVert(other.mStrVert), mStrGeom(other.mStrGeom),
      mStrFrag(other.mStrFrag), mStrVertCompiled(other.mStrVertCompiled),
      mStrGeomCompiled(other.mStrGeomCompiled), mStrFragCompiled(other.mStrFragCompiled),
      mVStrUniform(other.mVStrUniform), mVStrAttribute(other.mVStrAttribute), mbEnsemble(other.mbEnsemble),
      mbFog(other.mbFog) {}

int ShaderItem_cls::GetLocationByName(const char* strUniform) const {
    for (size_t i = 0; i < mVStrUniform.size(); ++i)
        if (mVStrUniform[i] == strUniform)
            return GetLocation(i);
    return -1;
}

void ShaderItem_cls::Clear() {
    mProgram.Reset();
    mVLocation.clear();
    mbValid = false;
    mbTried = false;
}

void ShaderItem_cls::SetShaderPath(const wxString& strStem) {
    mStrStem = strStem;
    const wxString strBase = msStrResourceDir + "/" + strStem;
    mStrVert.clear();
    mStrGeom.clear();
    mStrFrag.clear();
    AsciiReader_cls::GetStrFullFromFile(strBase + ".vert", mStrVert);
    AsciiReader_cls::GetStrFullFromFile(strBase + ".geom", mStrGeom);
    AsciiReader_cls::GetStrFullFromFile(strBase + ".frag", mStrFrag);
}

void ShaderItem_cls::ReadShaderString(unsigned int& shader, const wxString& strText) {
    const wxScopedCharBuffer utf8 = strText.utf8_str();
    const GLchar* pText = utf8.data();
    const GLint length = static_cast<GLint>(utf8.length());
    glShaderSource(shader, 1, &pText, &length);
}

void ShaderItem_cls::AppendLog(int object, const wxString& strHeader, int kind) {
    if (object == -1) {
        wxLogDebug("%s::Unrecognized Error\n", strHeader);
        return;
    }
    const GLuint name = static_cast<GLuint>(object);
    GLint length = 0;
    if (kind == 1)
        glGetProgramiv(name, GL_INFO_LOG_LENGTH, &length);
    else
        glGetShaderiv(name, GL_INFO_LOG_LENGTH, &length);
    std::vector<GLchar> buffer(static_cast<size_t>(std::max(length, 1)), '\0');
    if (kind == 1)
        glGetProgramInfoLog(name, length, nullptr, buffer.data());
    else
        glGetShaderInfoLog(name, length, nullptr, buffer.data());
    wxLogDebug("%s%s", strHeader, wxString::FromUTF8(buffer.data()));
}

bool ShaderItem_cls::Compile(GLShader_cls& shader, const wxString& strText, const char* strKind,
                             const char* strExt) {
    GLuint name = shader.Get();
    ReadShaderString(name, strText);
    glCompileShader(name);
    GLint status = GL_FALSE;
    glGetShaderiv(name, GL_COMPILE_STATUS, &status);
    if (status != GL_TRUE) {
        AppendLog(static_cast<int>(name), mStrName + "::" + strKind + "\n", 0);
        // One line for the user besides the debug log: which file, and the driver's first words.
        GLint length = 0;
        glGetShaderiv(name, GL_INFO_LOG_LENGTH, &length);
        std::vector<GLchar> buffer(static_cast<size_t>(std::max(length, 1)), '\0');
        glGetShaderInfoLog(name, length, nullptr, buffer.data());
        wxString strDriver = wxString::FromUTF8(buffer.data()).BeforeFirst('\n');
        wxLogMessage("Shader %s failed to compile %s%s: %s", mStrName, mStrStem, strExt, strDriver);
        return false;
    }
    wxLogDebug("%s::%s::Success\n", mStrName, strKind);
    return true;
}

void ShaderItem_cls::MakeShader() {
    wxLogDebug("%s::Try\n", mStrName);
    mbValid = false;
    // Tried whatever happens: a bad program is not built again on every draw.
    mbTried = true;
    if (mStrVertCompiled.empty())
        mStrVertCompiled = mStrVert;
    if (mStrGeomCompiled.empty())
        mStrGeomCompiled = mStrGeom;
    if (mStrFragCompiled.empty())
        mStrFragCompiled = mStrFrag;
    if (mStrVertCompiled.empty() || mStrFragCompiled.empty()) {
        const char* strExt = mStrVertCompiled.empty() ? ".vert" : ".frag";
        wxLogMessage("Shader %s has no source: cannot read %s/%s%s", mStrName, msStrResourceDir, mStrStem,
                     strExt);
        return;
    }

    GLShader_cls vert = GLShader_cls::Make(GLenum(GL_VERTEX_SHADER));
    GLShader_cls geom;
    if (!mStrGeomCompiled.empty())
        geom = GLShader_cls::Make(GLenum(GL_GEOMETRY_SHADER_EXT));
    GLShader_cls frag = GLShader_cls::Make(GLenum(GL_FRAGMENT_SHADER));
    if (!Compile(vert, mStrVertCompiled, "vertex", ".vert"))
        return;
    if (geom && !Compile(geom, mStrGeomCompiled, "geom", ".geom"))
        return;
    if (!Compile(frag, mStrFragCompiled, "fragment", ".frag"))
        return;

    GLProgram_cls program = GLProgram_cls::Make();
    glAttachShader(program.Get(), vert.Get());
    if (geom) {
        glAttachShader(program.Get(), geom.Get());
        int inputType = 0, outputType = 0;
        long verticesOut = 0;
        wxStringTokenizer lines(mStrGeomCompiled, "\n");
        while (lines.HasMoreTokens())
            ReadGeometryShaderStrForParameter(lines.GetNextToken(), inputType, outputType, verticesOut);
        GLint maxOut = 0;
        glGetIntegerv(GL_MAX_GEOMETRY_OUTPUT_VERTICES_EXT, &maxOut); // read only
        // The sources declare their layout in GLSL 1.50 qualifiers; these old names are rejected by
        // drivers without GL_EXT_geometry_shader4, and that error is logged here and ignored.
        glProgramParameteri(program.Get(), GL_GEOMETRY_VERTICES_OUT_EXT, static_cast<GLint>(verticesOut));
        glProgramParameteri(program.Get(), GL_GEOMETRY_INPUT_TYPE_EXT, inputType);
        glProgramParameteri(program.Get(), GL_GEOMETRY_OUTPUT_TYPE_EXT, outputType);
        GLCheckError_cls::CheckGLError("SetParameter");
    }
    glAttachShader(program.Get(), frag.Get());
    glLinkProgram(program.Get());
    GLint status = GL_FALSE;
    glGetProgramiv(program.Get(), GL_LINK_STATUS, &status);
    if (status != GL_TRUE) {
        AppendLog(static_cast<int>(program.Get()), mStrName + "::Link\n", 1);
        wxLogMessage("Shader %s failed to link %s", mStrName, mStrStem);
        return;
    }
    wxLogDebug("%s::Link::Success\n", mStrName);
    // The shader objects go with their owners; the program keeps what it linked.
    mProgram = std::move(program);
    glUseProgram(mProgram.Get());
    mVLocation.clear();
    for (const wxString& strUniform : mVStrUniform)
        mVLocation.push_back(glGetUniformLocation(mProgram.Get(), strUniform.utf8_str()));
    if (mbEnsemble) {
        mEnsembleLocation[0] = glGetUniformLocation(mProgram.Get(), "ensembleParamA");
        mEnsembleLocation[1] = glGetUniformLocation(mProgram.Get(), "ensembleParamB");
        mEnsembleLocation[2] = glGetUniformLocation(mProgram.Get(), "ensembleParamC");
    }
    if (mbFog) {
        mFogLocation[0] = glGetUniformLocation(mProgram.Get(), "fogMode");
        mFogLocation[1] = glGetUniformLocation(mProgram.Get(), "projInv11");
        mFogLocation[2] = glGetUniformLocation(mProgram.Get(), "projInv15");
    }
    // After the link this binds nothing; the draw code asks glGetAttribLocation. Kept in this order.
    for (size_t i = 0; i < mVStrAttribute.size(); ++i)
        glBindAttribLocation(mProgram.Get(), static_cast<GLuint>(i), mVStrAttribute[i].utf8_str());
    glUseProgram(0);
    wxLogDebug("%s::FullSuccess\n", mStrName);
    mbValid = true;
}

void ShaderItem_cls::ReadGeometryShaderStrForParameter(const wxString& strLine, int& inputType,
                                                       int& outputType, long& verticesOut) {
    const int posWord = strLine.Find("SetParameter");
    const int posEqual = strLine.Find('=');
    if (posWord == wxNOT_FOUND || posEqual == wxNOT_FOUND)
        return;
    // The key starts one separator behind the word: 13 characters from its start.
    const int posKey = posWord + 13;
    if (posEqual <= posKey)
        return;
    const wxString strKey = strLine.Mid(posKey, posEqual - posKey);
    const wxString strValue = strLine.Mid(posEqual + 1).Trim().Trim(false);
    if (strKey == "GL_GEOMETRY_INPUT_TYPE_EXT")
        inputType = GetGLGeometryConstant(strValue);
    else if (strKey == "GL_GEOMETRY_OUTPUT_TYPE_EXT")
        outputType = GetGLGeometryConstant(strValue);
    else if (strKey == "GL_GEOMETRY_VERTICES_OUT_EXT")
        strValue.ToLong(&verticesOut, 10);
}

int ShaderItem_cls::GetGLGeometryConstant(const wxString& strName) {
    if (strName == "GL_LINES_ADJACENCY_EXT")
        return 10;
    if (strName == "GL_LINE_STRIP")
        return 3;
    if (strName == "GL_TRIANGLES_ADJACENCY_EXT")
        return 12;
    if (strName == "GL_TRIANGLES")
        return 4;
    if (strName == "GL_TRIANGLE_STRIP")
        return 5;
    if (strName == "GL_POINTS")
        return 0;
    if (strName == "GL_LINES")
        return 1;
    return 4;
}
