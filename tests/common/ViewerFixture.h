// A core with the services up to the data viewers made in a temporary directory, and
// generators of numbered particle and volume files. Shared by the viewer and modifier tests.
#pragma once

#include "Main_cls.h"
#include "Parser_cls.h"
#include "Preference_cls.h"
#include "TimeCtrl_cls.h"
#include "UndoManager_cls.h"

#include "SceneFixtureOf.h"

#include <cstring>
#include <sstream>
#include <string>

// Top is the viewer layer for the viewer tests; the modifier tests stop one layer higher.
template <ServiceLayer_enum Top> class ViewerFixtureOf : public SceneFixtureOf<Top> {
protected:
    using ServicesFixture<Top>::mDir;

    void SetUp() override {
        SceneFixtureOf<Top>::SetUp();
        ASSERT_NE(GpCTimeCtrl, nullptr);
        ASSERT_NE(GpCPreference, nullptr);
    }

    void SetFrames(int frameMax, int current) {
        GpCTimeCtrl->mCFrameMax.SetBodyFromData(static_cast<long long>(frameMax));
        GpCTimeCtrl->mCFrameCurrent.SetBodyFromData(static_cast<long long>(current));
    }
    void SetPrefetch(int length) {
        GpCPreference->mCPrefetchLength.SetBodyFromData(static_cast<long long>(length));
    }
    void SetMemoryLimit(int mb) {
        GpCPreference->mCMemoryLimitMB.SetBodyFromData(static_cast<long long>(mb));
    }

    // count binary particle files <stem>0000.dat ... in the default format (number, time; then
    // XYZ, type, size per particle). Returns the path of the first.
    wxString MakeParticleFiles(const wxString& strStem, int count, int particles) {
        for (int i = 0; i < count; ++i) {
            std::string bytes;
            auto put = [&bytes](const void* p, size_t n) { bytes.append(static_cast<const char*>(p), n); };
            const int n = particles;
            const float time = static_cast<float>(i);
            put(&n, 4);
            put(&time, 4);
            for (int k = 0; k < particles; ++k) {
                const float xyz[3] = {static_cast<float>(k), static_cast<float>(i), 0.5f};
                const int type = k % 3;
                const float size = 1.0f;
                put(xyz, 12);
                put(&type, 4);
                put(&size, 4);
            }
            EXPECT_TRUE(WriteBytes(mDir.Path(wxString::Format("%s%04d.dat", strStem, i)), bytes));
        }
        return mDir.Path(strStem + "0000.dat");
    }

    // count df3 volumes <stem>000.df3 ... of size^3 voxels.
    wxString MakeVolumeFiles(const wxString& strStem, int count, int size) {
        for (int i = 0; i < count; ++i) {
            std::string s;
            for (int k = 0; k < 3; ++k) {
                s.push_back(static_cast<char>((size >> 8) & 0xff));
                s.push_back(static_cast<char>(size & 0xff));
            }
            s.append(static_cast<size_t>(size) * size * size, static_cast<char>(i + 1));
            EXPECT_TRUE(WriteBytes(mDir.Path(wxString::Format("%s%03d.df3", strStem, i)), s));
        }
        return mDir.Path(strStem + "000.df3");
    }
};

using ViewerFixture = ViewerFixtureOf<ServiceLayer_enum::Viewer>;
