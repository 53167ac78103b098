// The headless program run as a user runs it: a project with a particle object and a stack of
// modifiers is opened and saved again, and the modifiers come back unchanged.
#include "TestSupport.h"

#include <gtest/gtest.h>
#include <wx/filefn.h>

#include <cstdio>
#include <sstream>
#include <string>
#include <vector>

namespace {

const char* const kProject = "particle_modifiers.ovp";

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> v;
    std::istringstream stream(text);
    std::string line;
    while (std::getline(stream, line))
        v.push_back(line);
    return v;
}

// The lines of the object's modifier and data-process entries, each from its "New::" line to
// the "ReadAttribute::End" that closes it (the entries hold parameter groups of their own).
std::vector<std::string> ModifierLines(const std::string& text) {
    std::vector<std::string> v;
    bool bIn = false;
    for (const std::string& line : Lines(text)) {
        if (line.rfind("New::Modifier::", 0) == 0 || line.rfind("New::DataProc::", 0) == 0)
            bIn = true;
        if (bIn)
            v.push_back(line);
        if (line == "ReadAttribute::End")
            bIn = false;
    }
    return v;
}

// The whole block of the particle object "Stars", from its creation to the end of its properties.
std::vector<std::string> ObjectLines(const std::string& text) {
    std::vector<std::string> v;
    bool bIn = false;
    for (const std::string& line : Lines(text)) {
        if (line == "SceneObjCtrl::New::Particle_cls::ANY::Stars")
            bIn = true;
        if (bIn)
            v.push_back(line);
        if (bIn && line == "ReadProperties::End")
            break;
    }
    return v;
}

// Runs the program with the arguments; its standard output and error, and its exit status.
int RunProgram(const std::string& strArgs, std::string& strOut) {
    const std::string strCommand = std::string("'") + ORV_SMOKE_EXE + "' " + strArgs + " 2>&1";
    FILE* fp = popen(strCommand.c_str(), "r");
    if (!fp)
        return -1;
    char buffer[4096];
    size_t n;
    while ((n = fread(buffer, 1, sizeof buffer, fp)) > 0)
        strOut.append(buffer, n);
    return pclose(fp);
}

} // namespace

TEST(HeadlessProgram, ParticleModifierStackSurvivesOpenAndSave) {
    // The project and the particle files it names, in a folder of their own, so the saved raw
    // path stays the same.
    TempDir_cls dir;
    const wxString strData = wxString(ORV_TEST_DATA_DIR) + "/ovp/";
    for (const char* pName : {kProject, "stars0000.dat", "stars0001.dat"})
        ASSERT_TRUE(wxCopyFile(strData + pName, dir.Path(pName))) << pName;
    const std::string input = ReadBytes(dir.Path(kProject));

    std::string strOut;
    const std::string strArgs = "'" + std::string(dir.Path(kProject).utf8_str()) + "' '" +
                                std::string(dir.Path("saved.ovp").utf8_str()) + "'";
    ASSERT_EQ(RunProgram(strArgs, strOut), 0) << strOut;
    const std::string saved = ReadBytes(dir.Path("saved.ovp"));
    ASSERT_FALSE(saved.empty()) << strOut;

    // Four entries of the input, with values other than their defaults.
    const std::vector<std::string> vExpected = ModifierLines(input);
    ASSERT_GT(vExpected.size(), 100u);
    for (const char* pEntry :
         {"New::Modifier::ParticleFiltering_cls::Hide", "New::Modifier::ModifyApparentSize_cls::Apparent",
          "New::Modifier::ParticleBoolean_cls::Cut", "New::DataProc::ParticleDownsizing_cls::Thin"})
        ASSERT_NE(input.find(pEntry), std::string::npos) << pEntry;

    EXPECT_EQ(ModifierLines(saved), vExpected);
    // Nothing else of the object changed either: the entries stand in the same places.
    EXPECT_EQ(ObjectLines(saved), ObjectLines(input));
    // The text the program prints as it would save it is the same.
    EXPECT_EQ(ModifierLines(strOut), vExpected);
}

TEST(HeadlessProgram, WrongArgumentsAndAMissingProjectFail) {
    TempDir_cls dir;
    std::string strOut;
    EXPECT_NE(RunProgram("", strOut), 0);
    EXPECT_NE(strOut.find("usage: orvantis4-smoke <project.ovp> [<saved.ovp>]"), std::string::npos) << strOut;
    strOut.clear();
    EXPECT_NE(RunProgram("'" + std::string(dir.Path("none.ovp").utf8_str()) + "'", strOut), 0);
    EXPECT_NE(strOut.find("Could not open"), std::string::npos) << strOut;
}
