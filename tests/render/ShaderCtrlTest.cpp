#include "FBO_cls.h"
#include "GLPerspective_cls.h"
#include "RenderFixture.h"
#include "ShaderCtrl_cls.h"
#include "TestSupport.h"

#include <epoxy/gl.h>
#include <wx/filefn.h>

#include <map>
#include <set>

namespace {

const wxString kResourceDir = wxString(ORV_SOURCE_DIR) + "/Resource";

// Writes a text file, making its folder.
void WriteText(const wxString& strPath, const std::string& text) {
    wxFileName::Mkdir(wxFileName(strPath).GetPath(), wxS_DIR_DEFAULT, wxPATH_MKDIR_FULL);
    ASSERT_TRUE(WriteBytes(strPath, text));
}

// Makes the resource folder point somewhere else while it lives.
const char* kQuadVert = "#version 120\nvoid main() { gl_TexCoord[0] = gl_MultiTexCoord0; gl_Position = "
                        "gl_ModelViewProjectionMatrix * gl_Vertex; }\n";

// Draws the texture bound at unit 0 over the whole buffer through whatever program is bound.
void DrawQuad(int size) {
    GLPerspective_cls::Push2DMatrix(size, size);
    glBegin(GL_QUADS);
    glTexCoord2f(0, 0);
    glVertex2f(0, 0);
    glTexCoord2f(1, 0);
    glVertex2f(size, 0);
    glTexCoord2f(1, 1);
    glVertex2f(size, size);
    glTexCoord2f(0, 1);
    glVertex2f(0, size);
    glEnd();
    GLPerspective_cls::Pop2DMatrix();
}

} // namespace

class ShaderCtrlTest : public RenderFixture {};

TEST_F(ShaderCtrlTest, EveryResourceProgramLinksAndHasTheUniformsTheHostLooksUp) {
    ResourceDir_cls dir(kResourceDir);
    // Uniforms a program may leave out on purpose (the linker drops what a source does not use).
    // The billboards take their axes from baseInvMatrix alone; the two object-pose matrices are
    // passed along for sources that place the square in the object's frame. Points size by their
    // factor and distance, not by the viewport; ray-cast spheres are as large as they are. The plain
    // variants of the point programs light nothing and dissolve nothing.
    const std::map<wxString, std::set<wxString>> absent = {
        {"PointBillboard", {"baseInvModelMatrix", "modelInvBaseMatrix"}},
        {"PointBasic", {"viewport"}},
        {"PointPseudoSphere", {"baseDistance", "pointSizeFactor"}},
        {"PointBillboardPlain",
         {"baseInvModelMatrix", "modelInvBaseMatrix", "lightNumber", "lightRecieve", "dissolveMode",
          "textureImage", "paramBit"}},
        {"PointBillboardFarPlain",
         {"baseInvModelMatrix", "modelInvBaseMatrix", "lightNumber", "lightRecieve", "dissolveMode",
          "textureImage", "paramBit"}},
        {"PointBasicPlain", {"viewport", "lightNumber", "lightRecieve", "dissolveMode", "textureImage"}},
        {"PointSquarePlain",
         {"viewport", "lightNumber", "lightRecieve", "dissolveMode", "textureImage", "paramBit"}},
        {"PointCirclePlain",
         {"viewport", "lightNumber", "lightRecieve", "dissolveMode", "textureImage", "paramBit"}},
        {"PointCircleGridPlain", {"lightNumber", "lightRecieve", "dissolveMode", "textureImage", "paramBit"}},
        {"PointPseudoSpherePlain",
         {"baseDistance", "pointSizeFactor", "lightNumber", "lightRecieve", "dissolveMode", "textureImage",
          "paramBit"}},
        {"PointPseudoSphereFarPlain",
         {"baseDistance", "pointSizeFactor", "lightNumber", "lightRecieve", "dissolveMode", "textureImage",
          "paramBit"}}};
    ShaderCtrl_cls ctrl;
    ASSERT_EQ(ctrl.GetVItems().size(), 40u);
    int built = 0;
    LogCapture_cls log;
    for (ShaderItem_cls& item : ctrl.GetVItems()) {
        if (!wxFileExists(kResourceDir + "/" + item.mStrStem + ".vert"))
            continue; // reported below: not every program has its files yet
        SCOPED_TRACE(item.mStrName.ToStdString());
        item.MakeShader();
        if (!item.IsValid()) {
            for (const wxString& line : log.mVStrLines)
                std::cout << line << "\n";
            FAIL() << "the program did not build; its log is above";
        }
        ++built;
        EXPECT_EQ(item.mStrVertCompiled.Find("//##"), wxNOT_FOUND) << "a mark was left in the vertex text";
        for (size_t i = 0; i < item.mVStrUniform.size(); ++i) {
            const auto it = absent.find(item.mStrName);
            const bool bMayBeAbsent = it != absent.end() && it->second.count(item.mVStrUniform[i]) > 0;
            if (!bMayBeAbsent) {
                EXPECT_NE(item.GetLocation(i), -1)
                    << item.mVStrUniform[i].ToStdString() << " is not in the program";
            }
        }
        // The draw code asks the attributes by name; the sphere drawing feeds one vec2
        // "colorCurveST" instead of the two names of the table, so those two are absent there.
        // Plain variants without images have no use for the image bits.
        const bool bSphere = item.mStrName.StartsWith("Sphere");
        const auto itAbsent = absent.find(item.mStrName);
        for (const wxString& strAttribute : item.mVStrAttribute) {
            if (bSphere && (strAttribute == "colorCurveS" || strAttribute == "colorCurveT"))
                continue;
            if (itAbsent != absent.end() && itAbsent->second.count(strAttribute) > 0)
                continue;
            EXPECT_NE(glGetAttribLocation(item.GetProgram(), strAttribute.utf8_str()), -1)
                << "attribute " << strAttribute.ToStdString();
        }
        if (bSphere) {
            for (const char* strAttribute : {"colorCurveST", "filterAlpha", "paramBit"})
                EXPECT_NE(glGetAttribLocation(item.GetProgram(), strAttribute), -1) << strAttribute;
        }
        // The billboard drawing takes location 0 of twistID for "absent".
        if (item.mStrName == "PointBillboard") {
            EXPECT_GT(glGetAttribLocation(item.GetProgram(), "twistID"), 0);
        }
        for (int i = 0; i < 3; ++i) {
            if (item.mbEnsemble) {
                EXPECT_NE(item.mEnsembleLocation[i], -1) << "ensemble uniform " << i;
            }
            if (item.mbFog) {
                EXPECT_NE(item.mFogLocation[i], -1) << "fog uniform " << i;
            }
        }
    }
    std::cout << built << " of 40 programs have resource files and were built\n";
    EXPECT_EQ(built, 40); // the programs whose files exist so far
    // The only GL errors: the old geometry parameters, which this driver does not know.
    for (const wxString& line : log.mVStrLines) {
        if (line.Contains("error = ")) {
            EXPECT_TRUE(line.EndsWith("error = INVALID_ENUM SetParameter")) << line.ToStdString();
        }
    }
}

TEST_F(ShaderCtrlTest, SnippetsReplaceTheirMarks) {
    TempDir_cls tmp;
    ResourceDir_cls dir(tmp.mStrPath);
    WriteText(tmp.Path("GL/CommonDefinitionsShader.h"), "#define COMMON 1");
    WriteText(tmp.Path("GL/FUNCTION/SpotEffect.txt"), "float Spot() { return 1.0; }");
    WriteText(tmp.Path("GL/FUNCTION/FogEffect.txt"), "float Fog() { return 1.0; }");
    WriteText(tmp.Path("GL/FUNCTION/Normal.txt"), "float Normal() { return 1.0; }");
    WriteText(tmp.Path("GL/Gouraud.vert"), "A //##COMMON_DEFINITIONS_SHADER## B //##FUNC_SPOT_EFFECT## "
                                           "C //##FUNC_FOG_EFFECT## D //##FUNC_NORMAL##");
    WriteText(tmp.Path("GL/Gouraud.frag"), "A //##COMMON_DEFINITIONS_SHADER## B //##FUNC_SPOT_EFFECT## "
                                           "C //##FUNC_NORMAL## D //##FUNC_ENSEMBLE_DITHERING## "
                                           "E //##APPLY_ENSEMBLE_DITHERING##");
    {
        SCOPED_TRACE("without the ensemble snippet");
        ShaderCtrl_cls ctrl;
        ShaderItem_cls* pItem = ctrl.GetPCItem("ObjectGouraud");
        ASSERT_NE(pItem, nullptr);
        // The vertex text takes common definitions, spot and fog; not the normal.
        EXPECT_EQ(pItem->mStrVert,
                  "A #define COMMON 1 B float Spot() { return 1.0; } C float Fog() { return 1.0; } "
                  "D //##FUNC_NORMAL##");
        // The fragment text takes spot, fog, normal and dithering; not the common definitions.
        // Without the dithering snippet its mark goes, but the apply mark stays a comment.
        EXPECT_EQ(pItem->mStrFrag, "A //##COMMON_DEFINITIONS_SHADER## B float Spot() { return 1.0; } "
                                   "C float Normal() { return 1.0; } D ## E //##APPLY_ENSEMBLE_DITHERING##");
    }
    WriteText(tmp.Path("GL/FUNCTION/EnsembleDithering.txt"), "void EnsembleDithering(float a) {} //");
    {
        SCOPED_TRACE("with the ensemble snippet");
        ShaderCtrl_cls ctrl;
        ShaderItem_cls* pItem = ctrl.GetPCItem("ObjectGouraud");
        EXPECT_EQ(pItem->mStrFrag,
                  "A //##COMMON_DEFINITIONS_SHADER## B float Spot() { return 1.0; } "
                  "C float Normal() { return 1.0; } D void EnsembleDithering(float a) {} //## "
                  "E EnsembleDithering(alpha);");
    }
}

TEST_F(ShaderCtrlTest, BadSourcesLogOneLineNamingTheFileAndLeaveTheProgramUnbound) {
    TempDir_cls tmp;
    ResourceDir_cls dir(tmp.mStrPath);
    WriteText(tmp.Path("GL/Exposure.vert"), kQuadVert);
    WriteText(tmp.Path("GL/Exposure.frag"), "#version 120\nvoid main() { gl_FragColor = undefinedThing; }\n");
    WriteText(tmp.Path("GL/ClampAlpha.vert"), kQuadVert);
    WriteText(tmp.Path("GL/ClampAlpha.frag"),
              "#version 120\nuniform sampler2D textureImage;\n"
              "void main() { gl_FragColor = texture2D(textureImage, gl_TexCoord[0].st); }\n");
    ShaderCtrl_cls ctrl;

    // A good program first: the bad ones must leave it bound.
    ctrl.BeginClampAlpha(nullptr);
    const GLuint good = ctrl.GetPCItem("ClampAlpha")->GetProgram();
    ASSERT_NE(good, 0u);
    ASSERT_EQ(ctrl.GetCurrentProgram(), good);
    {
        SCOPED_TRACE("compile error");
        LogCapture_cls log;
        ExposureParams_cls params;
        ctrl.BeginExposure(&params);
        EXPECT_FALSE(ctrl.GetPCItem("Exposure")->IsValid());
        EXPECT_TRUE(ctrl.GetPCItem("Exposure")->IsTried());
        EXPECT_TRUE(log.Contains("Shader Exposure failed to compile GL/Exposure.frag: "));
        EXPECT_TRUE(log.Contains("undefinedThing")) << "the driver's message is logged";
        EXPECT_TRUE(log.Contains("Exposure::fragment"));
        GLint bound = 0;
        glGetIntegerv(GL_CURRENT_PROGRAM, &bound);
        EXPECT_EQ(static_cast<GLuint>(bound), good);
        // Tried once: a second use neither builds nor logs again.
        LogCapture_cls log2;
        ctrl.BeginExposure(&params);
        EXPECT_TRUE(log2.mVStrLines.empty());
    }
    {
        SCOPED_TRACE("missing file");
        LogCapture_cls log;
        ctrl.BeginDepth(nullptr);
        EXPECT_FALSE(ctrl.GetPCItem("Depth")->IsValid());
        EXPECT_TRUE(log.Contains("Shader Depth has no source: cannot read " + tmp.mStrPath +
                                 "/GL/ConvertDepth.vert"));
        EXPECT_EQ(ctrl.GetCurrentProgram(), good);
    }
    {
        SCOPED_TRACE("a name outside the thirteen");
        ctrl.BeginShader("LineBasic", nullptr);
        ctrl.BeginShader("NoSuchProgram", nullptr);
        EXPECT_EQ(ctrl.GetCurrentProgram(), good);
        EXPECT_FALSE(ctrl.GetPCItem("LineBasic")->IsTried());
    }
    ctrl.EndShader();
    ctrl.EndShader(); // harmless
    GLint bound = -1;
    glGetIntegerv(GL_CURRENT_PROGRAM, &bound);
    EXPECT_EQ(bound, 0);
    EXPECT_EQ(ctrl.GetCurrentProgram(), 0u);
}

TEST_F(ShaderCtrlTest, GeometryProgramLinksWithLayoutQualifiersAndIgnoresTheOldParameters) {
    struct Case_cls {
        const char* strName;
        const char* strHeader;
    };
    const Case_cls cases[] = {
        {"with SetParameter lines", "// SetParameter GL_GEOMETRY_INPUT_TYPE_EXT=GL_TRIANGLES\n"
                                    "// SetParameter GL_GEOMETRY_OUTPUT_TYPE_EXT=GL_TRIANGLE_STRIP\n"
                                    "// SetParameter GL_GEOMETRY_VERTICES_OUT_EXT=3\n"},
        {"without SetParameter lines", ""},
    };
    for (const Case_cls& c : cases) {
        SCOPED_TRACE(c.strName);
        TempDir_cls tmp;
        ResourceDir_cls dir(tmp.mStrPath);
        WriteText(tmp.Path("GL/SVTriangleMesh.vert"),
                  "#version 150 compatibility\nvoid main() { gl_Position = "
                  "gl_ModelViewProjectionMatrix * gl_Vertex; }\n");
        WriteText(tmp.Path("GL/SVTriangleMesh.geom"),
                  std::string("#version 150 compatibility\n") + c.strHeader +
                      "layout(triangles) in;\nlayout(triangle_strip, max_vertices = 3) out;\n"
                      "uniform float shadowLength;\n"
                      "void main() { for (int i = 0; i < 3; ++i) { gl_Position = gl_in[i].gl_Position + "
                      "vec4(0.0, 0.0, shadowLength, 0.0); EmitVertex(); } EndPrimitive(); }\n");
        WriteText(tmp.Path("GL/SVTriangleMesh.frag"),
                  "#version 150 compatibility\nvoid main() { gl_FragColor = vec4(1.0); }\n");
        ShaderCtrl_cls ctrl;
        ShaderItem_cls* pItem = ctrl.GetPCItem("SVTriangleMesh");
        LogCapture_cls log;
        pItem->MakeShader();
        EXPECT_TRUE(pItem->IsValid());
        EXPECT_NE(pItem->GetLocation(0), -1);
        EXPECT_EQ(pItem->GetLocation(1), -1) << "dropped by the linker: located as -1";
        // This driver has no GL_EXT_geometry_shader4: the old parameters raise an error that is
        // logged at its checkpoint and ignored.
        EXPECT_TRUE(log.Contains("error = INVALID_ENUM SetParameter"));
    }
}

TEST_F(ShaderCtrlTest, GeometryParameterLines) {
    struct Case_cls {
        const char* strLine;
        int input, output;
        long vertices;
    };
    const Case_cls cases[] = {
        {"// SetParameter GL_GEOMETRY_INPUT_TYPE_EXT=GL_LINES_ADJACENCY_EXT", 10, -1, -1},
        {"// SetParameter GL_GEOMETRY_INPUT_TYPE_EXT=GL_TRIANGLES_ADJACENCY_EXT", 12, -1, -1},
        {"// SetParameter GL_GEOMETRY_INPUT_TYPE_EXT=GL_POINTS", 0, -1, -1},
        {"// SetParameter GL_GEOMETRY_INPUT_TYPE_EXT=GL_LINES", 1, -1, -1},
        {"// SetParameter GL_GEOMETRY_OUTPUT_TYPE_EXT=GL_LINE_STRIP", -1, 3, -1},
        {"// SetParameter GL_GEOMETRY_OUTPUT_TYPE_EXT=GL_TRIANGLE_STRIP", -1, 5, -1},
        {"// SetParameter GL_GEOMETRY_OUTPUT_TYPE_EXT=SOMETHING_ELSE", -1, 4, -1},
        {"// SetParameter GL_GEOMETRY_VERTICES_OUT_EXT=24", -1, -1, 24},
        // The key starts 13 characters behind the word: a doubled separator shifts it.
        {"// SetParameter  GL_GEOMETRY_VERTICES_OUT_EXT=24", -1, -1, -1},
        {"// SetParameter GL_GEOMETRY_VERTICES_OUT_EXT 24", -1, -1, -1},
        {"// GL_GEOMETRY_VERTICES_OUT_EXT=24", -1, -1, -1},
    };
    for (const Case_cls& c : cases) {
        SCOPED_TRACE(c.strLine);
        int input = -1, output = -1;
        long vertices = -1;
        ShaderItem_cls::ReadGeometryShaderStrForParameter(c.strLine, input, output, vertices);
        EXPECT_EQ(input, c.input);
        EXPECT_EQ(output, c.output);
        EXPECT_EQ(vertices, c.vertices);
    }
}

TEST_F(ShaderCtrlTest, ClampAlphaAndDepthDrawTheExpectedPixels) {
    ResourceDir_cls dir(kResourceDir);
    ShaderCtrl_cls ctrl;
    // A source frame with alpha above 1 and a colour above 1.
    FBO_cls source(8, 8, nullptr);
    source.MakeFBO(true, false);
    source.Begin(true, false);
    glClampColor(GL_CLAMP_VERTEX_COLOR, GL_FALSE);
    glClampColor(GL_CLAMP_FRAGMENT_COLOR, GL_FALSE);
    glDisable(GL_BLEND);
    GLPerspective_cls::Push2DMatrix(8, 8);
    glColor4f(2.f, 0.5f, 0.f, 3.f);
    glRectf(0, 0, 8, 8);
    GLPerspective_cls::Pop2DMatrix();
    source.End();

    FBO_cls target(8, 8, nullptr);
    target.MakeFBO(true, false);
    target.Begin(true, false);
    glClampColor(GL_CLAMP_FRAGMENT_COLOR, GL_FALSE);
    glDisable(GL_BLEND);
    ctrl.BeginClampAlpha(nullptr);
    ASSERT_TRUE(ctrl.GetPCItem("ClampAlpha")->IsValid());
    glActiveTexture(GL_TEXTURE0);
    source.Bind();
    DrawQuad(8);
    ctrl.EndShader();
    target.End();
    ReadTexture(target.GetTexture(), 8, 8);
    SaveFrame("ClampAlpha.png");
    EXPECT_TRUE(PixelNear(At(4, 4), 2.f, 0.5f, 0.f, 1.f));

    // Depth: a plane at eye distance 5 in a frustum of 1 to 100 reads back as distance 5.
    FBO_cls depth(8, 8, nullptr);
    depth.SetColorDepth(8);
    depth.MakeFBO(true, true);
    depth.Begin(true, false);
    depth.SetProjection();
    depth.SetFrustum(45.0, 1.0, 100.0);
    ctrl.PrepareViewportInfo();
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glEnable(GL_DEPTH_TEST);
    glBegin(GL_QUADS);
    glVertex3f(-10, -10, -5);
    glVertex3f(10, -10, -5);
    glVertex3f(10, 10, -5);
    glVertex3f(-10, 10, -5);
    glEnd();
    depth.End();
    target.Begin(true, false);
    glClampColor(GL_CLAMP_FRAGMENT_COLOR, GL_FALSE);
    ctrl.BeginDepth(nullptr);
    ASSERT_TRUE(ctrl.GetPCItem("Depth")->IsValid());
    glBindTexture(GL_TEXTURE_2D, depth.GetPCDepthTexture()->GetTexture());
    DrawQuad(8);
    ctrl.EndShader();
    target.End();
    ReadTexture(target.GetTexture(), 8, 8);
    EXPECT_TRUE(PixelNear(At(4, 4), 5.f, 5.f, 5.f, 1.f, 0.05f));
}

TEST_F(ShaderCtrlTest, ObjectAndExposureProgramsDrawTheExpectedPixels) {
    ResourceDir_cls dir(kResourceDir);
    ShaderCtrl_cls ctrl;
    FBO_cls target(8, 8, nullptr);
    target.MakeFBO(true, false);

    // A quad facing a white directional light straight on, with a red diffuse material and no
    // ambient anywhere: lit, it shows its diffuse colour; with no lights, black.
    const GLfloat black[4] = {0, 0, 0, 1};
    const GLfloat white[4] = {1, 1, 1, 1};
    const GLfloat red[4] = {1, 0, 0, 1};
    const GLfloat lightFront[4] = {0, 0, 1, 0};
    struct Case_cls {
        const char* strName;
        int lightNumber;
        float r;
    };
    for (const Case_cls& c : {Case_cls{"one light", 1, 1.f}, Case_cls{"no light", 0, 0.f}}) {
        SCOPED_TRACE(c.strName);
        target.Begin(true, false);
        target.SetProjection();
        glOrtho(-1, 1, -1, 1, -1, 1);
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
        glLightModelfv(GL_LIGHT_MODEL_AMBIENT, black);
        glLightfv(GL_LIGHT0, GL_AMBIENT, black);
        glLightfv(GL_LIGHT0, GL_DIFFUSE, white);
        glLightfv(GL_LIGHT0, GL_SPECULAR, black);
        glLightfv(GL_LIGHT0, GL_POSITION, lightFront);
        glMaterialfv(GL_FRONT_AND_BACK, GL_AMBIENT, black);
        glMaterialfv(GL_FRONT_AND_BACK, GL_DIFFUSE, red);
        glMaterialfv(GL_FRONT_AND_BACK, GL_SPECULAR, black);
        ObjectGouraudParam_cls params;
        params.mLightNumber = c.lightNumber;
        ctrl.mFogMode = 0;
        ctrl.BeginObjectGouraud(&params);
        ASSERT_TRUE(ctrl.GetPCItem("ObjectGouraud")->IsValid());
        glNormal3f(0, 0, 1);
        glBegin(GL_QUADS);
        glVertex2f(-1, -1);
        glVertex2f(1, -1);
        glVertex2f(1, 1);
        glVertex2f(-1, 1);
        glEnd();
        ctrl.EndShader();
        target.End();
        ReadTexture(target.GetTexture(), 8, 8);
        EXPECT_TRUE(PixelNear(At(4, 4), c.r, 0, 0, 1));
    }

    // Exposure: levels 0.25 to 0.75 stretch 0.5 grey... to 0.5, and 0.75 to 1; gamma 1.
    FBO_cls source(8, 8, nullptr);
    source.MakeFBO(true, false);
    source.Begin(true, false);
    GLPerspective_cls::Push2DMatrix(8, 8);
    glColor4f(0.75f, 0.5f, 0.25f, 1.f);
    glRectf(0, 0, 8, 8);
    GLPerspective_cls::Pop2DMatrix();
    source.End();
    ExposureParams_cls exposure;
    for (int i = 0; i < 3; ++i) {
        exposure.mLevelMin[i] = 0.25f;
        exposure.mLevelMax[i] = 0.75f;
    }
    target.Begin(true, false);
    ctrl.BeginShader("Exposure", &exposure);
    ASSERT_TRUE(ctrl.GetPCItem("Exposure")->IsValid());
    source.Bind();
    DrawQuad(8);
    ctrl.EndShader();
    target.End();
    ReadTexture(target.GetTexture(), 8, 8);
    SaveFrame("Exposure.png");
    EXPECT_TRUE(PixelNear(At(4, 4), 1.f, 0.5f, 0.f, 1.f));
}

TEST_F(ShaderCtrlTest, NullRecordOnlyBindsAndCullingSideNeedsItsProgramBound) {
    ResourceDir_cls dir(kResourceDir);
    ShaderCtrl_cls ctrl;
    SphereGouraudParam_cls sphere;
    sphere.mUseTexAlpha = 1;
    ctrl.BeginSphereGouraud(&sphere);
    ShaderItem_cls* pItem = ctrl.GetPCItem("SphereGouraud");
    ASSERT_TRUE(pItem->IsValid());
    ctrl.EndShader();
    ctrl.BeginSphereGouraud(nullptr); // as the sphere walk does when it switches programs
    EXPECT_EQ(ctrl.GetCurrentProgram(), pItem->GetProgram());
    GLint value = -1;
    glGetUniformiv(pItem->GetProgram(), pItem->GetLocationByName("useTexAlpha"), &value);
    EXPECT_EQ(value, 1) << "the uniforms of the last record stay";

    ShaderSVTriangleMesh_cls sv;
    ctrl.BeginSVTrinagleMesh(&sv);
    ShaderItem_cls* pSV = ctrl.GetPCItem("SVTriangleMesh");
    ASSERT_TRUE(pSV->IsValid());
    ctrl.SetCullingSide(1);
    glGetUniformiv(pSV->GetProgram(), pSV->GetLocationByName("cullingSide"), &value);
    EXPECT_EQ(value, 1);
    ctrl.EndShader();
    ctrl.SetCullingSide(0); // not bound: no effect
    glGetUniformiv(pSV->GetProgram(), pSV->GetLocationByName("cullingSide"), &value);
    EXPECT_EQ(value, 1);
}
