// Starts the real program on the test display, looks at its window, closes it as a window
// manager would, and checks what quitting leaves beside the program.
#include "RibbonUI_cls.h"
#include "ViewWindowFixture.h"
#include "X11Support.h"

#include <wx/image.h>
#include <wx/utils.h>

#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <set>
#include <thread>

#if defined(ORV_GUI_EXE) && defined(ORV_BUILD_DIR)

namespace {

using Clock = std::chrono::steady_clock;

// Starts the program with the source tree as working folder, so that its Resource folder is
// found; its output goes to two files.
pid_t StartProgram(const std::string& strExe, const std::string& strOut, const std::string& strErr) {
    pid_t pid = fork();
    if (pid != 0)
        return pid;
    if (chdir(ORV_SOURCE_DIR) != 0)
        _exit(126);
    int fdOut = open(strOut.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    int fdErr = open(strErr.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    if (fdOut < 0 || fdErr < 0)
        _exit(126);
    dup2(fdOut, 1);
    dup2(fdErr, 2);
    execl(strExe.c_str(), strExe.c_str(), static_cast<char*>(nullptr));
    _exit(127);
}

// Waits for the process to end; -1 when it did not within the time.
int WaitForExit(pid_t pid, int seconds) {
    auto end = Clock::now() + std::chrono::seconds(seconds);
    while (Clock::now() < end) {
        int status = 0;
        if (waitpid(pid, &status, WNOHANG) == pid)
            return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    return -1;
}

// The distinct colours in a rectangle, sampled every other pixel.
size_t CountColours(const wxImage& image, const wxRect& rect) {
    std::set<unsigned> colours;
    for (int y = rect.y; y < rect.GetBottom() && y < image.GetHeight(); y += 2)
        for (int x = rect.x; x < rect.GetRight() && x < image.GetWidth(); x += 2)
            colours.insert((image.GetRed(x, y) << 16) | (image.GetGreen(x, y) << 8) | image.GetBlue(x, y));
    return colours.size();
}

// The centres of ribbon tools, relative to the window's origin, in a main window of the
// program's size: the ribbon lays out the same there as in the program. (-1, -1) for a tool that
// was not found.
std::vector<wxPoint> FindToolPoints(const std::vector<int>& vIds) {
    PrepareWindowResources();
    auto* pProbe = new FrameMain_cls("Orvantis4 probe", nullptr, 0, 0, 1280, 960);
    pProbe->Show();
    pProbe->Layout();
    for (int i = 0; i < 10; ++i) {
        wxTheApp->Yield(true);
        wxMilliSleep(10);
    }
    std::vector<wxPoint> vPoints;
    for (int id : vIds) {
        wxPoint point(-1, -1);
        if (wxRibbonToolBar* pBar = pProbe->GetPCRibbon()->GetToolBar(id)) {
            wxRect rect = pBar->GetToolRect(id);
            if (!rect.IsEmpty())
                point = pBar->ClientToScreen(rect.GetPosition()) - pProbe->GetScreenPosition() +
                        wxSize(rect.width / 2, rect.height / 2);
        }
        vPoints.push_back(point);
    }
    pProbe->Destroy();
    wxTheApp->ProcessPendingEvents();
    return vPoints;
}

// Runs a shell command and gives back its first line of output.
std::string FirstLineOf(const std::string& strCommand) {
    std::string strOut;
    if (FILE* pPipe = popen(strCommand.c_str(), "r")) {
        char buffer[256];
        if (fgets(buffer, sizeof(buffer), pPipe))
            strOut = buffer;
        pclose(pPipe);
    }
    while (!strOut.empty() && (strOut.back() == '\n' || strOut.back() == '\r'))
        strOut.pop_back();
    return strOut;
}

// How many sampled pixels differ between two pictures inside the rectangle.
size_t CountChangedPixels(const wxImage& a, const wxImage& b, const wxRect& rect) {
    size_t changed = 0;
    for (int y = rect.y; y < rect.GetBottom() && y < a.GetHeight() && y < b.GetHeight(); y += 2)
        for (int x = rect.x; x < rect.GetRight() && x < a.GetWidth() && x < b.GetWidth(); x += 2)
            if (a.GetRed(x, y) != b.GetRed(x, y) || a.GetGreen(x, y) != b.GetGreen(x, y) ||
                a.GetBlue(x, y) != b.GetBlue(x, y))
                ++changed;
    return changed;
}

// A copy of the program in a fresh folder (the settings it writes beside itself land there),
// started with its output in two files there; killed at the end if it still runs.
class ProgramRun_cls {
public:
    explicit ProgramRun_cls(const TempDir_cls& temp) : mTemp(temp) {}
    ~ProgramRun_cls() {
        if (mPid > 0 && waitpid(mPid, nullptr, WNOHANG) == 0) {
            kill(mPid, SIGKILL);
            waitpid(mPid, nullptr, 0);
        }
    }
    ProgramRun_cls(const ProgramRun_cls&) = delete;
    ProgramRun_cls& operator=(const ProgramRun_cls&) = delete;

    // Starts it and waits for its window and start-up line; the window's id on success.
    std::string Start() {
        const std::string strExe = std::string(mTemp.Path("orvantis4").utf8_str());
        if (!wxCopyFile(ORV_GUI_EXE, mTemp.Path("orvantis4")))
            return std::string();
        chmod(strExe.c_str(), 0755);
        mPid = StartProgram(strExe, std::string(mTemp.Path("stdout.txt").utf8_str()),
                            std::string(mTemp.Path("stderr.txt").utf8_str()));
        if (mPid <= 0)
            return std::string();
        auto end = Clock::now() + std::chrono::seconds(30);
        while (Clock::now() < end &&
               (ReadBytes(mTemp.Path("stdout.txt")).find("Orvantis4 start-up:") == std::string::npos ||
                X11Support::CountWindows("Orvantis4 ver") == 0))
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        if (X11Support::CountWindows("Orvantis4 ver") == 0)
            return std::string();
        return FirstLineOf("xdotool search --onlyvisible --name '^Orvantis4 ver' 2>/dev/null");
    }
    // The exit code, -1 when it did not end within the time.
    int WaitForEnd(int seconds) {
        int code = WaitForExit(mPid, seconds);
        if (code >= 0)
            mPid = -1;
        return code;
    }
    std::string Err() const { return ReadBytes(mTemp.Path("stderr.txt")); }
    std::string Out() const { return ReadBytes(mTemp.Path("stdout.txt")); }

private:
    const TempDir_cls& mTemp;
    pid_t mPid = -1;
};

} // namespace

// The tests need a display, a GUI toolkit and xdotool; they take screenshots in PNG.
class EndToEndTest : public ::testing::Test {
protected:
    void SetUp() override {
        if (!X11Support::IsDisplayReachable() || !IsGuiAvailable())
            GTEST_SKIP() << "no display: the end-to-end test needs one (run under xvfb-run)";
        if (!wxFileExists("/usr/bin/xdotool"))
            GTEST_SKIP() << "xdotool is not installed";
        if (!wxImage::FindHandler(wxBITMAP_TYPE_PNG))
            wxImage::AddHandler(new wxPNGHandler);
    }
    // Clicks at the point of the program's window, or only moves there when bClick is false.
    bool Click(const std::string& strWindow, const wxPoint& point, bool bClick = true) {
        const std::string strCommand = "xdotool mousemove --window " + strWindow + " " +
                                       std::to_string(point.x) + " " + std::to_string(point.y) +
                                       (bClick ? " click 1" : "");
        return system(strCommand.c_str()) == 0;
    }

    TempDir_cls mTemp;
    ProgramRun_cls mRun{mTemp};
};

TEST_F(EndToEndTest, TheProgramShowsItsWindowAndQuitsWritingItsSettings) {
    ASSERT_FALSE(mRun.Start().empty()) << mRun.Err();
    // The first idle prints the start-up line once the layout is in and the window shows.
    const std::string strOut = mRun.Out();
    const size_t at = strOut.find("Orvantis4 start-up:");
    const std::string strStartLine = strOut.substr(at, strOut.find('\n', at) - at);
    printf("%s\n", strStartLine.c_str());
    ::testing::Test::RecordProperty("startup", strStartLine);

    // Let the panels paint, then take the whole screen.
    std::this_thread::sleep_for(std::chrono::milliseconds(1500));
    wxImage image;
    ASSERT_TRUE(TakeScreenshot("main-window.png", image));
    // The window stands at 0,0 with 1280x960: ribbon icons, panel bars and texts give many
    // colours there; the screen beside it is the plain root window.
    EXPECT_GT(CountColours(image, wxRect(0, 0, 1280, 960)), 50u);
    EXPECT_GT(CountColours(image, wxRect(0, 0, 400, 100)), 20u); // the ribbon
    if (image.GetWidth() > 1290 && image.GetHeight() > 970) {
        EXPECT_LE(CountColours(image, wxRect(1290, 970, image.GetWidth() - 1290, image.GetHeight() - 970)),
                  2u);
    }

    // Escape goes to the window; then close it as a window manager would.
    EXPECT_EQ(system("xdotool key Escape"), 0);
    EXPECT_GT(X11Support::AskWindowsToClose("Orvantis4 ver"), 0);
    EXPECT_EQ(mRun.WaitForEnd(20), 0) << mRun.Err();

    std::string strConf = ReadBytes(mTemp.Path("Orvantis4Configure.txt"));
    EXPECT_NE(strConf.find("ConfItemList::Begin::MainConfList"), std::string::npos) << strConf;
    EXPECT_NE(strConf.find("VersionProject=0.47 (2018/9/27)"), std::string::npos) << strConf;
    EXPECT_TRUE(wxFileExists(mTemp.Path("Orvantis4Recent.txt")));
}

// A user adds a box: a click on the ribbon's Add tool opens the menu of object kinds, the first
// item (Box) is taken with the keyboard, and the outliner at the right shows the new object;
// a click on Undo takes it away again.
TEST_F(EndToEndTest, AddingABoxFromTheRibbonShowsItInTheOutlinerAndUndoTakesItBack) {
    const std::vector<wxPoint> vPoints = FindToolPoints({ID_RBN_NEW_OBJ, ID_RBN_UNDO});
    const wxPoint point = vPoints[0], pointUndo = vPoints[1], away(600, 600);
    ASSERT_TRUE(point.x >= 0 && point.y >= 0 && pointUndo.x >= 0 && pointUndo.y >= 0);

    const std::string strWindow = mRun.Start();
    ASSERT_FALSE(strWindow.empty()) << mRun.Err();
    std::this_thread::sleep_for(std::chrono::milliseconds(1500));
    wxImage before, menu, after, undone;
    ASSERT_TRUE(TakeScreenshot("add-box-before.png", before));

    ASSERT_TRUE(Click(strWindow, point));
    std::this_thread::sleep_for(std::chrono::milliseconds(700));
    ASSERT_TRUE(TakeScreenshot("add-box-menu.png", menu));
    // The menu pops up below the tool.
    EXPECT_GT(CountChangedPixels(before, menu, wxRect(point.x - 20, point.y + 20, 200, 300)), 100u);
    ASSERT_EQ(system("xdotool key Down Return"), 0);
    std::this_thread::sleep_for(std::chrono::milliseconds(1200));
    // Move the pointer away so that no hover remains in the picture.
    EXPECT_TRUE(Click(strWindow, away, false));
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    ASSERT_TRUE(TakeScreenshot("add-box-after.png", after));

    // The start layout puts the outliner in the upper right, right of the split at 940, below
    // the ribbon: a new row appears there.
    const wxRect outliner(950, 150, 320, 250);
    EXPECT_GT(CountChangedPixels(before, after, outliner), 20u);
    // The 3D view in the upper left shows the new box, selected, in the middle; the timeline
    // below it does not change.
    EXPECT_GT(CountChangedPixels(before, after, wxRect(250, 250, 300, 300)), 100u);
    EXPECT_EQ(CountChangedPixels(before, after, wxRect(0, 760, 900, 160)), 0u);

    // The Undo tool takes the box back: the outliner shows the scene as it was.
    ASSERT_TRUE(Click(strWindow, pointUndo));
    EXPECT_TRUE(Click(strWindow, away, false));
    std::this_thread::sleep_for(std::chrono::milliseconds(1200));
    ASSERT_TRUE(TakeScreenshot("add-box-undone.png", undone));
    EXPECT_GT(CountChangedPixels(after, undone, outliner), 20u);
    EXPECT_EQ(CountChangedPixels(before, undone, outliner), 0u);

    EXPECT_GT(X11Support::AskWindowsToClose("Orvantis4 ver"), 0);
    EXPECT_EQ(mRun.WaitForEnd(20), 0) << mRun.Err();
}

#endif
