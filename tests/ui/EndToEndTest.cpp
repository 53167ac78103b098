// Starts the real program on the test display, looks at its window, closes it as a window
// manager would, and checks what quitting leaves beside the program.
#include "RibbonUI_cls.h"
#include "TestSupport.h"
#include "UiFixture.h"
#include "X11Support.h"

#include <gtest/gtest.h>
#include <wx/filefn.h>
#include <wx/filename.h>
#include <wx/image.h>
#include <wx/utils.h>

#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <set>
#include <string>
#include <thread>
#include <vector>

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

// The rectangles of ribbon tools, relative to the window's origin, in a main window of the
// program's size: the ribbon lays out the same there as in the program. An empty rectangle for a
// tool that was not found.
std::vector<wxRect> FindToolRects(const std::vector<int>& vIds) {
    PrepareWindowResources();
    auto* pProbe = new FrameMain_cls("Orvantis4 probe", nullptr, 0, 0, 1280, 960);
    pProbe->Show();
    pProbe->Layout();
    for (int i = 0; i < 10; ++i) {
        wxTheApp->Yield(true);
        wxMilliSleep(10);
    }
    std::vector<wxRect> vRects;
    for (int id : vIds) {
        wxRect rectTool;
        if (wxRibbonToolBar* pBar = pProbe->GetPCRibbon()->GetToolBar(id)) {
            wxRect rect = pBar->GetToolRect(id);
            if (!rect.IsEmpty())
                rectTool = wxRect(pBar->ClientToScreen(rect.GetPosition()) - pProbe->GetScreenPosition(),
                                  rect.GetSize());
        }
        vRects.push_back(rectTool);
    }
    pProbe->Destroy();
    wxTheApp->ProcessPendingEvents();
    return vRects;
}

// The centres of the tools; (-1, -1) for a tool that was not found.
std::vector<wxPoint> FindToolPoints(const std::vector<int>& vIds) {
    std::vector<wxPoint> vPoints;
    for (const wxRect& rect : FindToolRects(vIds))
        vPoints.push_back(rect.IsEmpty() ? wxPoint(-1, -1)
                                         : rect.GetPosition() + wxSize(rect.width / 2, rect.height / 2));
    return vPoints;
}

// Waits until a top-level window whose name starts with the prefix is shown (or, with bGone,
// until none is); false when that did not happen within the time.
bool WaitForWindow(const std::string& strPrefix, bool bGone, int seconds) {
    auto end = Clock::now() + std::chrono::seconds(seconds);
    while (Clock::now() < end) {
        if ((X11Support::CountWindows(strPrefix) > 0) != bGone)
            return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    return false;
}

// Gives the keyboard to the named window (there is no window manager to do it) and presses keys.
bool PressKeysIn(const std::string& strNameRegex, const std::string& strKeys) {
    std::string strFocus = "xdotool search --onlyvisible --name '" + strNameRegex + "' windowfocus --sync";
    if (system(strFocus.c_str()) != 0)
        return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    return system(("xdotool key " + strKeys).c_str()) == 0;
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

bool TakeScreenshot(const wxString& strPath, wxImage& image) {
    if (wxFileExists(strPath))
        wxRemoveFile(strPath);
    std::string strCommand = "import -window root '" + std::string(strPath.utf8_str()) + "'";
    return system(strCommand.c_str()) == 0 && image.LoadFile(strPath, wxBITMAP_TYPE_PNG);
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

private:
    const TempDir_cls& mTemp;
    pid_t mPid = -1;
};

} // namespace

// The tests that click need a display, a GUI toolkit and xdotool; they take screenshots in PNG.
#define SKIP_WITHOUT_DISPLAY_OR_XDOTOOL()                                                                    \
    do {                                                                                                     \
        if (!X11Support::IsDisplayReachable() || !IsGuiAvailable())                                          \
            GTEST_SKIP() << "no display: the end-to-end test needs one (run under xvfb-run)";                \
        if (!wxFileExists("/usr/bin/xdotool"))                                                               \
            GTEST_SKIP() << "xdotool is not installed";                                                      \
        if (!wxImage::FindHandler(wxBITMAP_TYPE_PNG))                                                        \
            wxImage::AddHandler(new wxPNGHandler);                                                           \
    } while (0)

TEST(EndToEndTest, TheProgramShowsItsWindowAndQuitsWritingItsSettings) {
    if (!X11Support::IsDisplayReachable())
        GTEST_SKIP() << "no display: the end-to-end test needs one (run under xvfb-run)";
    if (!wxImage::FindHandler(wxBITMAP_TYPE_PNG))
        wxImage::AddHandler(new wxPNGHandler);

    // A copy of the program in a fresh folder: the settings it writes beside itself land there.
    TempDir_cls temp;
    std::string strExe = std::string(temp.Path("orvantis4").utf8_str());
    ASSERT_TRUE(wxCopyFile(ORV_GUI_EXE, temp.Path("orvantis4")));
    chmod(strExe.c_str(), 0755);
    std::string strOut = std::string(temp.Path("stdout.txt").utf8_str());
    std::string strErr = std::string(temp.Path("stderr.txt").utf8_str());

    pid_t pid = StartProgram(strExe, strOut, strErr);
    ASSERT_GT(pid, 0);
    struct Reaper {
        pid_t pid;
        ~Reaper() {
            if (pid > 0 && waitpid(pid, nullptr, WNOHANG) == 0) {
                kill(pid, SIGKILL);
                waitpid(pid, nullptr, 0);
            }
        }
    } reaper{pid};

    // The first idle prints the start-up line once the layout is in and the window shows.
    std::string strStartLine;
    auto end = Clock::now() + std::chrono::seconds(30);
    while (Clock::now() < end && (strStartLine.empty() || X11Support::CountWindows("Orvantis4 ver") == 0)) {
        std::string strText = ReadBytes(temp.Path("stdout.txt"));
        size_t at = strText.find("Orvantis4 start-up:");
        if (at != std::string::npos && strText.find('\n', at) != std::string::npos)
            strStartLine = strText.substr(at, strText.find('\n', at) - at);
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    ASSERT_FALSE(strStartLine.empty()) << ReadBytes(temp.Path("stderr.txt"));
    ASSERT_GT(X11Support::CountWindows("Orvantis4 ver"), 0);
    printf("%s\n", strStartLine.c_str());
    ::testing::Test::RecordProperty("startup", strStartLine);

    // Let the panels paint, then take the whole screen.
    std::this_thread::sleep_for(std::chrono::milliseconds(1500));
    wxString strShotDir = wxString(ORV_BUILD_DIR) + "/ui-screenshots";
    wxFileName::Mkdir(strShotDir, wxS_DIR_DEFAULT, wxPATH_MKDIR_FULL);
    wxString strShot = strShotDir + "/main-window.png";
    if (wxFileExists(strShot))
        wxRemoveFile(strShot);
    std::string strCommand = "import -window root '" + std::string(strShot.utf8_str()) + "'";
    ASSERT_EQ(system(strCommand.c_str()), 0) << strCommand;
    wxImage image;
    ASSERT_TRUE(image.LoadFile(strShot, wxBITMAP_TYPE_PNG));
    // The window stands at 0,0 with 1280x960: ribbon icons, panel bars and texts give many
    // colours there; the screen beside it is the plain root window.
    EXPECT_GT(CountColours(image, wxRect(0, 0, 1280, 960)), 50u);
    EXPECT_GT(CountColours(image, wxRect(0, 0, 400, 100)), 20u); // the ribbon
    if (image.GetWidth() > 1290 && image.GetHeight() > 970) {
        EXPECT_LE(CountColours(image, wxRect(1290, 970, image.GetWidth() - 1290, image.GetHeight() - 970)),
                  2u);
    }

    // Escape goes to the window; then close it as a window manager would.
    if (wxFileExists("/usr/bin/xdotool")) {
        EXPECT_EQ(system("xdotool key Escape"), 0);
    }
    EXPECT_GT(X11Support::AskWindowsToClose("Orvantis4 ver"), 0);
    int exitCode = WaitForExit(pid, 20);
    reaper.pid = exitCode >= 0 ? -1 : pid;
    EXPECT_EQ(exitCode, 0) << ReadBytes(temp.Path("stderr.txt"));

    std::string strConf = ReadBytes(temp.Path("Orvantis4Configure.txt"));
    EXPECT_NE(strConf.find("ConfItemList::Begin::MainConfList"), std::string::npos) << strConf;
    EXPECT_NE(strConf.find("VersionProject=0.47 (2018/9/27)"), std::string::npos) << strConf;
    EXPECT_TRUE(wxFileExists(temp.Path("Orvantis4Recent.txt")));
}

// A user adds a box: a click on the ribbon's Add tool opens the menu of object kinds, the first
// item (Box) is taken with the keyboard, and the outliner at the right shows the new object;
// a click on Undo takes it away again.
TEST(EndToEndTest, AddingABoxFromTheRibbonShowsItInTheOutlinerAndUndoTakesItBack) {
    SKIP_WITHOUT_DISPLAY_OR_XDOTOOL();
    const std::vector<wxPoint> vPoints = FindToolPoints({ID_RBN_NEW_OBJ, ID_RBN_UNDO});
    const wxPoint point = vPoints[0], pointUndo = vPoints[1];
    ASSERT_GE(point.x, 0);
    ASSERT_GE(point.y, 0);
    ASSERT_GE(pointUndo.x, 0);
    ASSERT_GE(pointUndo.y, 0);

    TempDir_cls temp;
    ProgramRun_cls run(temp);
    const std::string strWindow = run.Start();
    ASSERT_FALSE(strWindow.empty()) << run.Err();
    std::this_thread::sleep_for(std::chrono::milliseconds(1500));

    wxString strShotDir = wxString(ORV_BUILD_DIR) + "/ui-screenshots";
    wxFileName::Mkdir(strShotDir, wxS_DIR_DEFAULT, wxPATH_MKDIR_FULL);
    wxImage before, menu, after;
    ASSERT_TRUE(TakeScreenshot(strShotDir + "/add-box-before.png", before));

    std::string strClick = "xdotool mousemove --window " + strWindow + " " + std::to_string(point.x) + " " +
                           std::to_string(point.y) + " click 1";
    ASSERT_EQ(system(strClick.c_str()), 0) << strClick;
    std::this_thread::sleep_for(std::chrono::milliseconds(700));
    ASSERT_TRUE(TakeScreenshot(strShotDir + "/add-box-menu.png", menu));
    // The menu pops up below the tool.
    EXPECT_GT(CountChangedPixels(before, menu, wxRect(point.x - 20, point.y + 20, 200, 300)), 100u);
    ASSERT_EQ(system("xdotool key Down Return"), 0);
    std::this_thread::sleep_for(std::chrono::milliseconds(1200));
    // Move the pointer away so that no hover remains in the picture.
    EXPECT_EQ(system(("xdotool mousemove --window " + strWindow + " 600 600").c_str()), 0);
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    ASSERT_TRUE(TakeScreenshot(strShotDir + "/add-box-after.png", after));

    // The start layout puts the outliner in the upper right, right of the split at 940, below
    // the ribbon: a new row appears there.
    EXPECT_GT(CountChangedPixels(before, after, wxRect(950, 150, 320, 250)), 20u);
    // The 3D view in the upper left shows the new box, selected, in the middle; the timeline
    // below it does not change.
    EXPECT_GT(CountChangedPixels(before, after, wxRect(250, 250, 300, 300)), 100u);
    EXPECT_EQ(CountChangedPixels(before, after, wxRect(0, 760, 900, 160)), 0u);

    // The Undo tool takes the box back: the outliner shows the scene as it was.
    std::string strUndo = "xdotool mousemove --window " + strWindow + " " + std::to_string(pointUndo.x) +
                          " " + std::to_string(pointUndo.y) + " click 1 mousemove --window " + strWindow +
                          " 600 600";
    ASSERT_EQ(system(strUndo.c_str()), 0) << strUndo;
    std::this_thread::sleep_for(std::chrono::milliseconds(1200));
    wxImage undone;
    ASSERT_TRUE(TakeScreenshot(strShotDir + "/add-box-undone.png", undone));
    EXPECT_GT(CountChangedPixels(after, undone, wxRect(950, 150, 320, 250)), 20u);
    EXPECT_EQ(CountChangedPixels(before, undone, wxRect(950, 150, 320, 250)), 0u);

    EXPECT_GT(X11Support::AskWindowsToClose("Orvantis4 ver"), 0);
    EXPECT_EQ(run.WaitForEnd(20), 0) << run.Err();
}

// A new user opens random bytes from the recent list: the program refuses them with a notice
// that names the file, and the scene and outliner stay as they were. After an edit, closing asks
// about the unsaved changes: Cancel keeps the program, Discard lets it end.
TEST(EndToEndTest, ARandomFileIsRefusedAndClosingAsksAboutTheEdit) {
    SKIP_WITHOUT_DISPLAY_OR_XDOTOOL();
    const std::vector<wxRect> vRects = FindToolRects({ID_RBN_OPEN_RECENT, ID_RBN_NEW_OBJ});
    ASSERT_FALSE(vRects[0].IsEmpty());
    ASSERT_FALSE(vRects[1].IsEmpty());
    // The recent tool is split: its left part opens the newest recent file, the arrow a menu.
    const wxPoint pointRecent(vRects[0].x + vRects[0].width / 4, vRects[0].y + vRects[0].height / 3);
    const wxPoint pointAdd = vRects[1].GetPosition() + wxSize(vRects[1].width / 2, vRects[1].height / 2);

    TempDir_cls temp;
    std::string noise(8192, '\0');
    unsigned seed = 12345;
    for (char& c : noise) {
        seed = seed * 1103515245u + 12345u;
        c = static_cast<char>(seed >> 16);
    }
    const wxString strJunk = temp.Path("downloaded.ovp");
    ASSERT_TRUE(WriteBytes(strJunk, noise));
    ASSERT_TRUE(WriteBytes(temp.Path("Orvantis4Recent.txt"), std::string(strJunk.utf8_str()) + "\n"));

    ProgramRun_cls run(temp);
    const std::string strWindow = run.Start();
    ASSERT_FALSE(strWindow.empty()) << run.Err();
    const std::string strTitle = FirstLineOf("xdotool getwindowname " + strWindow);
    std::this_thread::sleep_for(std::chrono::milliseconds(1500));

    wxString strShotDir = wxString(ORV_BUILD_DIR) + "/ui-screenshots";
    wxFileName::Mkdir(strShotDir, wxS_DIR_DEFAULT, wxPATH_MKDIR_FULL);
    wxImage before, refused, edited;
    ASSERT_TRUE(TakeScreenshot(strShotDir + "/refused-before.png", before));

    auto click = [&strWindow](const wxPoint& point) {
        std::string strClick = "xdotool mousemove --window " + strWindow + " " + std::to_string(point.x) +
                               " " + std::to_string(point.y) + " click 1";
        return system(strClick.c_str()) == 0;
    };
    ASSERT_TRUE(click(pointRecent));
    ASSERT_TRUE(WaitForWindow("Error", false, 10)) << run.Err();
    const std::string strErr = run.Err();
    EXPECT_NE(strErr.find("Cannot open \"" + std::string(strJunk.utf8_str()) + "\": not a project file."),
              std::string::npos)
        << strErr;
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
    ASSERT_TRUE(TakeScreenshot(strShotDir + "/refused-notice.png", refused));
    ASSERT_TRUE(PressKeysIn("^Error$", "Return"));
    ASSERT_TRUE(WaitForWindow("Error", true, 10));
    EXPECT_EQ(system(("xdotool mousemove --window " + strWindow + " 600 600").c_str()), 0);
    std::this_thread::sleep_for(std::chrono::milliseconds(800));
    ASSERT_TRUE(TakeScreenshot(strShotDir + "/refused-after.png", refused));
    // The outliner (upper right) and the 3D view with the timeline (left) are as they were; the
    // title still names no file.
    EXPECT_EQ(CountChangedPixels(before, refused, wxRect(950, 150, 320, 250)), 0u);
    EXPECT_EQ(CountChangedPixels(before, refused, wxRect(0, 300, 900, 500)), 0u);
    EXPECT_EQ(FirstLineOf("xdotool getwindowname " + strWindow), strTitle);

    // An edit: a box from the Add menu. The outliner shows it and the title marks the change.
    ASSERT_TRUE(click(pointAdd));
    std::this_thread::sleep_for(std::chrono::milliseconds(700));
    ASSERT_EQ(system("xdotool key Down Return"), 0);
    std::this_thread::sleep_for(std::chrono::milliseconds(1200));
    EXPECT_EQ(system(("xdotool mousemove --window " + strWindow + " 600 600").c_str()), 0);
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    ASSERT_TRUE(TakeScreenshot(strShotDir + "/refused-edited.png", edited));
    EXPECT_GT(CountChangedPixels(refused, edited, wxRect(950, 150, 320, 250)), 20u);
    EXPECT_EQ(FirstLineOf("xdotool getwindowname " + strWindow), strTitle + " *");

    // Close: Cancel keeps the program running with its window.
    EXPECT_GT(X11Support::AskWindowsToClose("Orvantis4 ver"), 0);
    ASSERT_TRUE(WaitForWindow("Unsaved changes", false, 10)) << run.Err();
    ASSERT_TRUE(PressKeysIn("^Unsaved changes$", "Escape"));
    ASSERT_TRUE(WaitForWindow("Unsaved changes", true, 10));
    EXPECT_EQ(run.WaitForEnd(2), -1);
    EXPECT_GT(X11Support::CountWindows("Orvantis4 ver"), 0);

    // Close again: Discard ends it.
    EXPECT_GT(X11Support::AskWindowsToClose("Orvantis4 ver"), 0);
    ASSERT_TRUE(WaitForWindow("Unsaved changes", false, 10));
    ASSERT_TRUE(PressKeysIn("^Unsaved changes$", "alt+d"));
    EXPECT_EQ(run.WaitForEnd(20), 0) << run.Err();
    // Nothing was written over the refused file.
    EXPECT_EQ(ReadBytes(strJunk), noise);
}

#endif
