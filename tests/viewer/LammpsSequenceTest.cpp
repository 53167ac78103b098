// Particle objects on text dumps of the LAMMPS code (tests/data/lammps, made by its LJ melt example
// in.melt): 256 atoms, a dump every 50 steps, atoms in changing order ("dump.melt"), and a run that
// writes only the atoms with x < 3 so that the set changes between dumps ("dump.half", sorted by ID).
#include "ViewerFixture.h"

#include "ParticleSnap_cls.h"
#include "Particle_cls.h"

#include <wx/filefn.h>

#include <cmath>
#include <fstream>
#include <map>
#include <sstream>
#include <vector>

namespace {

const wxString kData = ORV_TEST_DATA_DIR "/lammps/";

// One dump as it stands in the file, parsed here on its own: ID to position, and the box.
struct Dump {
    std::map<int, std::array<double, 3>> atoms;
    double lo[3] = {0, 0, 0}, hi[3] = {0, 0, 0};
};

Dump ParseDump(const wxString& strPath) {
    Dump d;
    std::ifstream in(strPath.fn_str());
    std::string line;
    for (int k = 0; k < 5; ++k)
        std::getline(in, line);
    for (int k = 0; k < 3; ++k) {
        std::getline(in, line);
        std::istringstream(line) >> d.lo[k] >> d.hi[k];
    }
    std::getline(in, line); // ITEM: ATOMS id type x y z
    int id = 0, type = 0;
    double x, y, z;
    while (in >> id >> type >> x >> y >> z)
        d.atoms[id] = {x, y, z};
    return d;
}

} // namespace

class LammpsSequenceTest : public ViewerFixture {
protected:
    void SetUp() override {
        ViewerFixture::SetUp();
        GpCTimeCtrl->mCSubFrameMax.SetBodyFromData(10LL);
        SetFrames(11, 0);
        mpP = dynamic_cast<Particle_cls*>(Obj(Ctrl()->AppendSceneObjCommand("Particle", "Melt")));
        ASSERT_NE(mpP, nullptr);
        // The layout of "dump custom ... id type x y z", as the README shows it.
        mpP->mCFormat.mCDataType.PushCommandPair("0");
        mpP->mCFormat.UpdateHeaderCommand(
            "Dummy::##::Time::##::Dummy::##::ParticleNumber::##::Dummy::##::BoxBounds::##::Dummy");
        mpP->mCFormat.UpdateBodyCommand("ID::##::Type::##::XYZ");
        mpP->mCInterpolateBy.PushCommandPair("1");
    }
    // The snap of step i, read now.
    ParticleSnap_cls* ReadStep(int i) {
        SetFrames(11, i);
        EXPECT_TRUE(mpP->PrepareDraw(0, 0));
        return mpP->mCSequence.GetPCSnap(i);
    }

    Particle_cls* mpP = nullptr;
};

TEST_F(LammpsSequenceTest, StridedDumpsOpenAsElevenStepsOfRealData) {
    struct Case {
        const char* name;
        wxString path;
    };
    // The unpadded names of LAMMPS's default ("dump.plain.0", ".50", ... ".500") through "%d".
    for (int i = 0; i <= 500; i += 50)
        ASSERT_TRUE(wxCopyFile(kData + wxString::Format("dump.melt.%04d.txt", i),
                               mDir.Path(wxString::Format("dump.plain.%d", i))));
    const Case cases[] = {{"padded %04d", kData + "dump.melt.%04d.txt"},
                          {"unpadded %d", mDir.Path("dump.plain.%d")}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        LogCapture_cls log;
        mpP->mCPath.PushCommandPair(c.path);
        ASSERT_EQ(mpP->CheckFileSequence(), 11);
        EXPECT_EQ(mpP->mCSequence.FileSequence_cls::mStep, 50);
        for (int i = 0; i < 11; ++i) {
            SCOPED_TRACE(i);
            ParticleSnap_cls* pSnap = ReadStep(i);
            ASSERT_NE(pSnap, nullptr);
            EXPECT_TRUE(pSnap->mReadFile.EndsWith(
                wxString::Format(c.path.EndsWith(".txt") ? "%04d.txt" : ".%d", 50 * i)))
                << pSnap->mReadFile;
            EXPECT_EQ(pSnap->mNumber.load(), 256) << "no substitute data";
            EXPECT_DOUBLE_EQ(pSnap->mTime, 50.0 * i);
            ASSERT_TRUE(pSnap->mHasBox);
            EXPECT_NEAR(pSnap->mBoxHi[0], 6.7183847655300291, 1e-9);
            // Every atom where the file puts it.
            const Dump dump = ParseDump(pSnap->mReadFile);
            int wrong = 0;
            for (int k = 0; k < pSnap->mNumber.load(); ++k) {
                const auto& p = dump.atoms.at(pSnap->mID[k]);
                for (int c3 = 0; c3 < 3; ++c3)
                    wrong += pSnap->mXYZ[3 * k + c3] != static_cast<float>(p[c3]);
            }
            EXPECT_EQ(wrong, 0);
        }
        EXPECT_FALSE(log.Contains("Read Header Fails"));
    }
}

TEST_F(LammpsSequenceTest, UnsortedIDsWarnOncePerSequenceUntilPreSortIsOn) {
    mpP->mCPath.PushCommandPair(kData + "dump.melt.%04d.txt");
    ASSERT_EQ(mpP->CheckFileSequence(), 11);
    auto countWarnings = [](const LogCapture_cls& log) {
        int n = 0;
        for (const wxString& line : log.mVStrLines)
            if (line.Contains("are not in ascending order") && line.Contains("\"Melt\"") &&
                line.Contains("PreSortByID="))
                ++n;
        return n;
    };
    {
        LogCapture_cls log;
        for (int i = 0; i < 3; ++i)
            ReadStep(i);
        EXPECT_EQ(countWarnings(log), 1);
    }
    {
        SCOPED_TRACE("the same sequence set up again warns again");
        LogCapture_cls log;
        mpP->mCPath.PushCommandPair(kData + "dump.melt.0000.txt");
        ReadStep(0);
        EXPECT_EQ(countWarnings(log), 1);
    }
    {
        SCOPED_TRACE("pre-sorted, or matched by index: no warning");
        LogCapture_cls log;
        mpP->mCFormat.mCPreSortByID.PushCommandPair("1");
        mpP->mCPath.PushCommandPair(kData + "dump.melt.%04d.txt");
        ReadStep(0);
        ReadStep(1);
        mpP->mCFormat.mCPreSortByID.PushCommandPair("0");
        mpP->mCInterpolateBy.PushCommandPair("0");
        ASSERT_EQ(mpP->CheckFileSequence(), 11);
        ReadStep(2);
        EXPECT_EQ(countWarnings(log), 0);
        ParticleSnap_cls* pSnap = mpP->mCSequence.GetPCSnap(2);
        ASSERT_NE(pSnap, nullptr);
        EXPECT_FALSE(pSnap->AreIDsAscending());
    }
}

TEST_F(LammpsSequenceTest, PeriodicBoxKeepsCrossingAtomsOnTheShortWay) {
    // The dumps that change their atom set are written sorted by ID; the full melt is sorted on reading.
    mpP->mCFormat.mCPreSortByID.PushCommandPair("1");
    mpP->mCPath.PushCommandPair(kData + "dump.melt.%04d.txt");
    ASSERT_EQ(mpP->CheckFileSequence(), 11);
    const double len = 6.7183847655300291;
    int crossingPairs = 0;
    for (int periodic : {0, 1}) {
        SCOPED_TRACE(periodic ? "periodic box of the header" : "no box");
        mpP->mCPeriodicBox.PushCommandPair(periodic ? "1" : "0");
        int farAtoms = 0, outside = 0;
        for (int step = 0; step < 10; ++step) {
            // Half way between two dumps.
            GpCTimeCtrl->mCFrameCurrent.SetBodyFromData(static_cast<long long>(step));
            GpCTimeCtrl->mCSubFrameCurrent.SetBodyFromData(5LL);
            ASSERT_TRUE(mpP->PrepareDraw(0, 0));
            const ParticleForRender_cls& set = *mpP->mpCCurrent;
            ParticleSnap_cls* pA = mpP->mCSequence.GetPCSnap(step);
            ASSERT_NE(pA, nullptr);
            ASSERT_EQ(set.mNumber, pA->mNumber.load());
            for (long long i = 0; i < set.mNumber; ++i) {
                double d2 = 0.0;
                for (int k = 0; k < 3; ++k) {
                    const double p = set.mXYZ[3 * i + k];
                    outside += p < 0.0 || p >= len;
                    double d = p - pA->mXYZ[3 * i + k];
                    if (periodic)
                        d -= len * std::nearbyint(d / len);
                    d2 += d * d;
                }
                // Half of what an atom of the melt moves in 50 steps is far below a box length.
                farAtoms += d2 > 1.0;
            }
        }
        if (periodic) {
            EXPECT_EQ(farAtoms, 0) << "an atom flew across the box";
            EXPECT_EQ(outside, 0);
        } else {
            crossingPairs = farAtoms;
        }
    }
    EXPECT_GT(crossingPairs, 0) << "the data have atoms that cross a face: without the box they fly";
}

TEST_F(ViewerFixture, BundledLammpsExampleOpensElevenSteps) {
    ASSERT_TRUE(mpMain->OpenProject(ORV_SOURCE_DIR "/examples/lammps/melt.ovp"));
    Particle_cls* p = dynamic_cast<Particle_cls*>(Obj("Melt"));
    ASSERT_NE(p, nullptr);
    EXPECT_EQ(p->CheckFileSequence(), 11);
    EXPECT_TRUE(p->mCFormat.IsPreSortByID());
    GpCTimeCtrl->mCFrameCurrent.SetBodyFromData(10LL);
    ASSERT_TRUE(p->PrepareDraw(0, 0));
    ParticleSnap_cls* pSnap = p->mCSequence.GetPCSnap(10);
    ASSERT_NE(pSnap, nullptr);
    EXPECT_TRUE(pSnap->mReadFile.EndsWith("dump.melt.0500.txt")) << pSnap->mReadFile;
    EXPECT_EQ(pSnap->mNumber.load(), 256);
    EXPECT_TRUE(pSnap->AreIDsAscending());
}

TEST_F(LammpsSequenceTest, FileThatDisappearsLaterGetsTheSubstituteWithItsNameLogged) {
    for (int i = 0; i <= 500; i += 50)
        ASSERT_TRUE(wxCopyFile(kData + wxString::Format("dump.melt.%04d.txt", i),
                               mDir.Path(wxString::Format("dump.melt.%04d.txt", i))));
    mpP->mCPath.PushCommandPair(mDir.Path("dump.melt.%04d.txt"));
    ASSERT_EQ(mpP->CheckFileSequence(), 11);
    ASSERT_TRUE(wxRemoveFile(mDir.Path("dump.melt.0150.txt")));
    LogCapture_cls log;
    ParticleSnap_cls* pSnap = ReadStep(3);
    ASSERT_NE(pSnap, nullptr);
    EXPECT_EQ(pSnap->mReadFile, "#DefaultData");
    EXPECT_TRUE(log.Contains("Read Header Fails!! " + mDir.Path("dump.melt.0150.txt")));
    EXPECT_EQ(ReadStep(4)->mNumber.load(), 256) << "the steps around it read as before";
}
