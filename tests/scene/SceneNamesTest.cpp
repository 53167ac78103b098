#include "ParentObj_cls.h"
#include "SceneClassWord_cls.h"
#include "TensorMath_cls.h"
#include "TestSupport.h"

#include <gtest/gtest.h>

#include <cmath>

TEST(SceneNames, NewCandidate) {
    const struct {
        const char* pIn;
        const char* pOut;
    } cases[] = {
        {"Box", "Box.001"},         {"Box.001", "Box.002"},
        {"a.b", "a.b.001"},         {"x.12", "x.12.001"},
        {"Box.999", "Box.1000"},    {"Box.1000", "Box.1000.001"},
        {"Box.abc", "Box.abc.001"}, {"Box.", "Box..001"},
        {"Box.01a", "Box.01a.001"}, {"", ".001"},
        {"Light.009", "Light.010"}, {"Box. 12", "Box. 12.001"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.pIn);
        EXPECT_EQ(ParentObj_cls::GetStrNewCandidate(c.pIn), wxString(c.pOut));
    }
}

TEST(SceneNames, ClassWords) {
    EXPECT_EQ(SceneClassWord_cls::GetStrClassFromKind("Camera"), "Camera_cls");
    EXPECT_EQ(SceneClassWord_cls::GetStrClassFromKind("MeshObj_cls"), "MeshObj_cls");
    EXPECT_EQ(SceneClassWord_cls::GetStrClassFromKind("Text"), "");
    EXPECT_EQ(SceneClassWord_cls::GetStrClassFromKind("ColorCurve_cls"), "");
    EXPECT_FALSE(SceneClassWord_cls::IsObjectClass("Text_cls"));
    EXPECT_EQ(SceneClassWord_cls::GetStrBaseName("HeightField_cls"), "HeightField");
    EXPECT_EQ(SceneClassWord_cls::GetPrimitiveTypeFromStr("Cylinder"), 4);
    EXPECT_EQ(SceneClassWord_cls::GetPrimitiveTypeFromStr("box"), -1);
    EXPECT_EQ(SceneClassWord_cls::GetLightTypeFromStr("SpotLight"), 2);
    EXPECT_EQ(SceneClassWord_cls::GetLightTypeFromStr(""), -1);
    EXPECT_EQ(SceneClassWord_cls::GetAstrCameraType()[6], "Equirecutangular");
    EXPECT_EQ(SceneClassWord_cls::GetAstrEyeType()[7], "QUAD BUFFERING");
    EXPECT_EQ(SceneClassWord_cls::GetAstrStereoType()[2], "Toe-in");
}

TEST(TensorMath, RotationOrderAndInverse) {
    // RotateX then RotateY applied to a matrix: a vector sees Y first, then X.
    double m[16];
    TensorMath_cls::SetIdentity(m);
    TensorMath_cls::RotateX(m, M_PI / 2);
    TensorMath_cls::RotateY(m, M_PI / 2);
    const double v[3] = {0.0, 0.0, 1.0};
    double out[3];
    TensorMath_cls::TransformVector(m, v, out);
    // Y turns +z to +x; X leaves +x alone.
    ExpectNear3(out, 1.0, 0.0, 0.0, 1e-12);
    // Z turns +x to +y, counter-clockwise seen from +z.
    double z[16];
    TensorMath_cls::SetIdentity(z);
    TensorMath_cls::RotateZ(z, M_PI / 2);
    const double x[3] = {1.0, 0.0, 0.0};
    TensorMath_cls::TransformVector(z, x, out);
    EXPECT_NEAR(out[0], 0.0, 1e-12);
    EXPECT_NEAR(out[1], 1.0, 1e-12);
    TensorMath_cls::Translate(m, 1.0, 2.0, 3.0);
    TensorMath_cls::Scale(m, 2.0, 3.0, 4.0);
    double inv[16], id[16];
    ASSERT_TRUE(TensorMath_cls::Invert(m, inv));
    TensorMath_cls::Multiply(id, m, inv);
    for (int i = 0; i < 16; ++i)
        EXPECT_NEAR(id[i], (i % 5 == 0) ? 1.0 : 0.0, 1e-12) << i;
    double zero[16] = {};
    EXPECT_FALSE(TensorMath_cls::Invert(zero, inv));
}
