// Imposter spheres against the sphere worked out along each pixel's ray: the window depth they
// write and, when lit by a light along the view, the brightness of their true normal, with and
// without perspective, for the program with lights and the plain one.
#include "MaterialParticle_cls.h"
#include "OrthoDrawFixture.h"
#include "ParticleDraw_cls.h"
#include "Particle_cls.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>

using ImposterSphereTest = OrthoDrawFixture;

TEST_F(ImposterSphereTest, DepthAndLightFollowTheSphereAlongEachRay) {
    if (IsSkipped())
        GTEST_SKIP();
    ParticleDraw_cls draw(nullptr);
    // Eye-space centres: the fixture's orthographic camera looks down -z from the origin; its
    // perspective one from z = 100 with 90 degrees over near 1 and far 1000.
    const struct {
        bool bPerspective, bLit;
        double x, y, z, r;
    } cases[] = {{false, false, -7, 5, 40, 20},
                 {false, true, 9, -6, -30, 18},
                 {true, false, 20, -15, 60, 14},
                 {true, true, -25, 30, 50, 12}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message()
                     << (c.bPerspective ? "perspective" : "orthographic") << (c.bLit ? ", lit" : ", plain"));
        const int index = static_cast<int>(&c - cases);
        const wxString strPath = mDir.Path(wxString::Format("s%d0000.txt", index));
        std::ofstream(strPath.ToStdString()) << "1\n0\n"
                                             << c.x << " " << c.y << " " << c.z << " 0 " << c.r << "\n";
        auto* p = dynamic_cast<Particle_cls*>(GpCSceneObjCtrl->GetPCFromName(
            GpCSceneObjCtrl->AppendSceneObjCommand("Particle", wxString::Format("S%d", index))));
        ASSERT_NE(p, nullptr);
        p->mCFormat.mCDataType.SetBodyFromData("0");
        p->mCFormat.UpdateBodyCommand("XYZ::##::Type::##::Size");
        p->mCPath.SetBodyFromData(strPath);
        p->mCAlphaCrit.SetBodyFromData("0");
        p->GetPCMaterialParticle(0)->mCShaderTypePoint.SetBodyFromData("2");
        GLDrawStatus_cls status = Begin(true, kSize / 2, c.bPerspective);
        // One parallel light along the view, diffuse only: the brightness is the normal's z.
        const GLfloat position[4] = {0, 0, 1, 0}, white[4] = {1, 1, 1, 1}, black[4] = {0, 0, 0, 1};
        glPushMatrix();
        glLoadIdentity();
        glLightfv(GL_LIGHT0, GL_POSITION, position);
        glPopMatrix();
        glLightfv(GL_LIGHT0, GL_DIFFUSE, white);
        glLightfv(GL_LIGHT0, GL_AMBIENT, black);
        glLightfv(GL_LIGHT0, GL_SPECULAR, black);
        status.mLightNumber = c.bLit ? 1 : 0;
        draw.GLDraw(*p, status);
        End();
        std::vector<float> vDepth(kSize * kSize);
        glBindFramebuffer(GL_FRAMEBUFFER, mFramebuffer.Get());
        glReadPixels(0, 0, kSize, kSize, GL_DEPTH_COMPONENT, GL_FLOAT, vDepth.data());
        glBindFramebuffer(GL_FRAMEBUFFER, 0);

        // The ray of each pixel centre, the nearer hit, its normal's z and its window depth.
        const double ez = c.bPerspective ? c.z - 100.0 : c.z; // the centre in eye space
        // Lit, the brightness follows the normal (the far side that perspective shows stays dark);
        // plain, the colour is flat. The unlit colour comes from the brightest pixel.
        std::vector<std::array<double, 3>> vShadeRedPixel;
        for (int j = 0; j < kSize; ++j) {
            for (int i = 0; i < kSize; ++i) {
                double o[3] = {World(i), World(j), 0.0}, d[3] = {0.0, 0.0, -1.0};
                if (c.bPerspective) {
                    o[0] = o[1] = 0.0;
                    d[0] = (i + 0.5) / 32.0 - 1.0;
                    d[1] = (j + 0.5) / 32.0 - 1.0;
                }
                const double oc[3] = {o[0] - c.x, o[1] - c.y, o[2] - ez};
                const double a = d[0] * d[0] + d[1] * d[1] + d[2] * d[2];
                const double b = oc[0] * d[0] + oc[1] * d[1] + oc[2] * d[2];
                const double disc = b * b - a * (oc[0] * oc[0] + oc[1] * oc[1] + oc[2] * oc[2] - c.r * c.r);
                // Within about a pixel of the outline the coverage is the sprite's business.
                if (disc < a * c.r * c.r * 0.1)
                    continue;
                const double t = (-b - std::sqrt(disc)) / a;
                const double z = o[2] + t * d[2];
                const double ndc = c.bPerspective ? (-1001.0 * z - 2000.0) / (-999.0 * z) : -z / 2000.0;
                SCOPED_TRACE(i * 100 + j);
                EXPECT_NEAR(vDepth[static_cast<size_t>(j * kSize + i)], 0.5 * ndc + 0.5, 3e-6);
                EXPECT_GT(At(i, j).a, 0.99f);
                const double shade = c.bLit ? std::max(0.0, (z - ez) / c.r) : 1.0;
                vShadeRedPixel.push_back({shade, At(i, j).r, j * 100.0 + i});
            }
        }
        ASSERT_GT(vShadeRedPixel.size(), 100u);
        const auto& brightest = *std::max_element(vShadeRedPixel.begin(), vShadeRedPixel.end());
        const double colour = brightest[1] / brightest[0];
        EXPECT_GT(colour, 0.1);
        for (const auto& v : vShadeRedPixel)
            EXPECT_NEAR(v[1], colour * v[0], 2e-3) << "brightness at " << v[2];
    }
}
