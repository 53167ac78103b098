// Every start of the process goes through the one ordered list of the composition root: the
// programs, the benchmarks and the test fixtures call RegisterServices, never a layer's own
// registration, so a new layer is added in one place and reaches every start.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

// Where the layers' registrations may be named: the list itself.
const char* const kRoot = "src/app/ServiceRegistry.h";

// Calls of a layer's registration: "RegisterCoreServices();" and the like, but not the
// declarations ("void RegisterCoreServices();") nor the definitions.
std::vector<std::string> LayerCalls(const std::string& text) {
    static const std::regex call(R"(^\s*(?:\w+::)?(Register\w+Services)\s*\(\s*\)\s*;)");
    std::vector<std::string> v;
    std::istringstream stream(text);
    std::string line;
    int number = 0;
    while (std::getline(stream, line)) {
        ++number;
        std::smatch m;
        if (std::regex_search(line, m, call))
            v.push_back(std::to_string(number) + ": " + m[1].str());
    }
    return v;
}

std::string ReadText(const fs::path& path) {
    std::ifstream in(path);
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
}

} // namespace

TEST(CompositionRoot, OnlyTheRootCallsTheLayersRegistrations) {
    const fs::path root(ORV_SOURCE_DIR);
    int files = 0;
    for (const char* pFolder : {"src", "tests", "bench"}) {
        for (const auto& entry : fs::recursive_directory_iterator(root / pFolder)) {
            const std::string ext = entry.path().extension().string();
            if (!entry.is_regular_file() || (ext != ".cpp" && ext != ".h"))
                continue;
            ++files;
            const std::string rel = fs::relative(entry.path(), root).generic_string();
            if (rel == kRoot)
                continue;
            for (const std::string& strCall : LayerCalls(ReadText(entry.path())))
                ADD_FAILURE() << rel << ":" << strCall
                              << " registers a layer by itself; call RegisterServices";
        }
    }
    EXPECT_GT(files, 100);
    // The root itself names every layer once, in order.
    const std::vector<std::string> vCalls = LayerCalls(ReadText(root / kRoot));
    std::vector<std::string> vNames;
    for (const std::string& str : vCalls)
        vNames.push_back(str.substr(str.find(' ') + 1));
    EXPECT_EQ(vNames, (std::vector<std::string>{
                          "RegisterCoreServices", "RegisterTimeServices", "RegisterLuaServices",
                          "RegisterSceneServices", "RegisterPrepServices", "RegisterViewerServices",
                          "RegisterModifierServices", "RegisterRenderServices", "RegisterFilterServices",
                          "RegisterOutputServices", "RegisterUIServices"}));
}
