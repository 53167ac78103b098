// The window doing its two long jobs on the test display: recording a frame range to files from
// the render page through the 3D view, and playing a particle sequence in the view.
#include "ScenePanelsFixture.h"

#include "ImageIO_cls.h"
#include "ImageOutput_cls.h"
#include "PropertyRender_cls.h"
#include "TimeCtrl_cls.h"
#include "View3DPanel_cls.h"
#include "ViewWindowFixture.h"

#include <wx/button.h>
#include <wx/dir.h>
#include <wx/ffile.h>

#include <array>

namespace {

int ColourDistance(const wxImage& a, int ax, int ay, const wxImage& b, int bx, int by) {
    return std::abs(a.GetRed(ax, ay) - b.GetRed(bx, by)) + std::abs(a.GetGreen(ax, ay) - b.GetGreen(bx, by)) +
           std::abs(a.GetBlue(ax, ay) - b.GetBlue(bx, by));
}

// The PNG ends with its IEND chunk: the writer finished the file.
bool EndsWithIEnd(const wxString& strPath) {
    wxFFile file(strPath, "rb");
    if (!file.IsOpened() || file.Length() < 12)
        return false;
    char tail[12] = {};
    file.Seek(-12, wxFromEnd);
    if (file.Read(tail, 12) != 12)
        return false;
    return std::string(tail + 4, 4) == "IEND";
}

// Mean column of the pixels in the rows [top, bottom) that differ from the image's top left
// corner, which is background; -1 when there are none.
double MeanForegroundColumn(const wxImage& image, int top, int bottom) {
    double sum = 0.0;
    long count = 0;
    for (int y = top; y < bottom; ++y)
        for (int x = 0; x < image.GetWidth(); ++x)
            if (ColourDistance(image, x, y, image, 0, 0) > 30) {
                sum += x;
                ++count;
            }
    return count ? sum / count : -1.0;
}

} // namespace

// The 3D view beside the property panel, with the output services behind the render page.
class WindowRunTest : public ViewWindowFixture<ServiceLayer_enum::Output> {
protected:
    void TearDown() override {
        ViewWindowFixture::TearDown();
        if (!mStrOldDir.empty())
            wxSetWorkingDirectory(mStrOldDir);
    }
    // Opens the project as the program does (its relative data paths resolve against its folder)
    // and shows it in a view beside the property panel.
    void OpenInWindow(const wxString& strProject) {
        mStrOldDir = wxGetCwd();
        ASSERT_TRUE(mpMain->OpenProject(wxString(ORV_SOURCE_DIR) + "/" + strProject));
        ReadFrameLayout(Split('V', 700, Leaf("VIEW3D"), Leaf("PROPERTY")));
        ASSERT_TRUE(FindLeaf<View3DPanel_cls>() && FindLeaf<Property_cls>());
        mpCanvas = FindLeaf<View3DPanel_cls>()->GetPCCanvas();
        mpRender = FindLeaf<Property_cls>()->mpCPageRender;
        ASSERT_TRUE(mpCanvas && mpRender);
        ASSERT_TRUE(SettleCanvas(*mpCanvas)) << "the view never painted";
    }
    // A screenshot of the display after a fresh paint, cut to the canvas, saved as name.
    wxImage CanvasShot(const wxString& strName) {
        mpCanvas->Refresh();
        RunLoop(300);
        wxImage screen;
        if (!TakeScreenshot(strName, screen))
            return wxImage();
        const wxImage canvas =
            screen.GetSubImage(wxRect(mpCanvas->GetScreenPosition(), mpCanvas->GetClientSize()));
        canvas.SaveFile(ScreenshotDir() + "/" + strName, wxBITMAP_TYPE_PNG);
        return canvas;
    }

    GLCanvas_cls* mpCanvas = nullptr;
    PropertyRender_cls* mpRender = nullptr;
    wxString mStrOldDir;
};

TEST_F(WindowRunTest, RenderAnimRecordsTheWorkAreaThroughTheView) {
    SKIP_WITHOUT_DISPLAY();
    OpenInWindow("examples/demo.ovp");
    ASSERT_NE(GpCImageOutput, nullptr);
    ASSERT_NE(GpCImageIO, nullptr);
    if (!wxImage::FindHandler(wxBITMAP_TYPE_PNG))
        wxImage::AddHandler(new wxPNGHandler);
    ScriptedDialog_cls dialog;
    mpRender->mpCDialog = &dialog;

    // Frames 0, 40 and 80 of the demo's 120: the run stops when the clock reaches 120.
    const wxString strFolder = mDir.Path("frames");
    ASSERT_TRUE(wxFileName::Mkdir(strFolder, wxS_DIR_DEFAULT, wxPATH_MKDIR_FULL));
    SendTextEnter(mpRender->mpCOutput, strFolder + "/f%04d.png");
    ASSERT_TRUE(mpRender->SetSizeFromText("160", "120"));
    RunText("ConfItemList::Begin::TimeCtrl\nSubFrameStepping=80\nConfItemList::End\n");
    GpCTimeCtrl->SetWAMinCommand(0);
    GpCTimeCtrl->SetWAMaxCommand(120);
    GpCTimeCtrl->SetCurrentFrameCommand(0);
    ASSERT_EQ(GpCTimeCtrl->GetSubFrameMax(), 2);

    wxCommandEvent press(wxEVT_BUTTON, mpRender->mpCRenderAnim->GetId());
    mpRender->OnRenderAnim(press);
    EXPECT_TRUE(dialog.mVStrTexts.empty()) << dialog.mVStrTexts.front();
    ASSERT_TRUE(GpCTimeCtrl->IsOutputRunning());
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (GpCTimeCtrl->IsOutputRunning() && std::chrono::steady_clock::now() < end)
        RunLoop(20);
    ASSERT_FALSE(GpCTimeCtrl->IsOutputRunning()) << "the run did not stop within 20 seconds";
    const std::vector<ImageIO_cls::Result_cls> results = GpCImageIO->WaitAll();

    // Steps count subframes: frame 40 of two subframes each is step 80.
    const std::vector<wxString> names = {"f0000.png", "f0080.png", "f0160.png"};
    {
        SCOPED_TRACE("the folder holds the three frames and nothing else");
        wxArrayString files;
        wxDir::GetAllFiles(strFolder, &files, wxEmptyString, wxDIR_FILES | wxDIR_HIDDEN);
        std::vector<wxString> found;
        for (const wxString& strFile : files)
            found.push_back(wxFileName(strFile).GetFullName());
        std::sort(found.begin(), found.end());
        EXPECT_EQ(found, names);
        for (const ImageIO_cls::Result_cls& r : results)
            EXPECT_TRUE(r.mbOk) << r.mStrPath;
    }
    std::vector<wxImage> images;
    for (const wxString& strName : names) {
        SCOPED_TRACE(strName);
        const wxString strPath = strFolder + "/" + strName;
        EXPECT_TRUE(EndsWithIEnd(strPath));
        wxImage image;
        ASSERT_TRUE(image.LoadFile(strPath, wxBITMAP_TYPE_PNG));
        EXPECT_EQ(image.GetSize(), wxSize(160, 120));
        images.push_back(image);
        // Kept beside the screenshots, to look at.
        image.SaveFile(ScreenshotDir() + "/record-" + strName, wxBITMAP_TYPE_PNG);
    }
    // The planet goes along x: between frames pixels change, and in the band of rows where it
    // stands its pixels move to the right from frame to frame.
    double lastColumn = -1.0;
    for (size_t i = 0; i < images.size(); ++i) {
        SCOPED_TRACE(names[i]);
        if (i > 0) {
            long changed = 0;
            for (int y = 0; y < 120; ++y)
                for (int x = 0; x < 160; ++x)
                    changed += ColourDistance(images[i], x, y, images[i - 1], x, y) > 30;
            EXPECT_GT(changed, 100) << "the frame is the same picture as the one before";
        }
        const double column = MeanForegroundColumn(images[i], 120 * 3 / 8, 120 * 5 / 8);
        EXPECT_GT(column, lastColumn + 3.0);
        lastColumn = column;
    }
}

TEST_F(WindowRunTest, PlayingTheMeltMovesItsAtomsInTheView) {
    SKIP_WITHOUT_SCREENSHOTS();
    OpenInWindow("examples/lammps/melt.ovp");
    ASSERT_EQ(GpCTimeCtrl->GetFrameCurrent(), 0);

    const wxImage before = CanvasShot("play-melt-start.png");
    ASSERT_TRUE(before.IsOk());
    // The play strip's forward button; the clock goes a subframe per idle pass.
    GpCTimeCtrl->StartPlayCommand(1);
    ASSERT_TRUE(GpCTimeCtrl->IsPlaying());
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (GpCTimeCtrl->GetFrameCurrent() < 5 && std::chrono::steady_clock::now() < end)
        RunLoop(20);
    GpCTimeCtrl->StopPlayCommand();
    EXPECT_FALSE(GpCTimeCtrl->IsPlaying());
    EXPECT_GE(GpCTimeCtrl->GetFrameCurrent(), 5) << "playback did not advance the clock";
    const wxImage after = CanvasShot("play-melt-later.png");
    ASSERT_TRUE(after.IsOk());
    ASSERT_EQ(after.GetSize(), before.GetSize());

    // The box spans 0 to 6.72 in x and y; from the default pose (at z 10 looking down -z with
    // 45 degrees) it lies right of and above the canvas centre. The atoms are drawn as small
    // squares of about 6 pixels a side: count the pixels off the background right and up of the
    // centre (away from the text line at the top and the grid's line through the centre), and
    // in the same rectangle mirrored to the left, where no atom can be.
    const wxSize size = before.GetSize();
    const wxRect box(size.x / 2 + 4, 40, size.x / 2 - 4, size.y / 2 - 44);
    const wxRect empty(4, 40, size.x / 2 - 14, size.y / 2 - 44);
    const wxPoint corner(size.x - 10, size.y - 10); // below the box: background
    auto countDrawn = [&](const wxImage& image, const wxRect& r) {
        long count = 0;
        for (int y = r.GetTop(); y <= r.GetBottom(); ++y)
            for (int x = r.GetLeft(); x <= r.GetRight(); ++x)
                count += ColourDistance(image, x, y, image, corner.x, corner.y) > 30;
        return count;
    };
    struct Shot_cls {
        const char* strWhat;
        const wxImage* pImage;
    };
    for (const Shot_cls& shot : {Shot_cls{"before playing", &before}, Shot_cls{"after playing", &after}}) {
        SCOPED_TRACE(shot.strWhat);
        // At least a dozen atoms' worth of pixels where the box projects, none outside it.
        EXPECT_GT(countDrawn(*shot.pImage, box), 12 * 25);
        EXPECT_EQ(countDrawn(*shot.pImage, empty), 0);
    }
    long changed = 0;
    for (int y = box.GetTop(); y <= box.GetBottom(); ++y)
        for (int x = box.GetLeft(); x <= box.GetRight(); ++x)
            changed += ColourDistance(before, x, y, after, x, y) > 30;
    // The lattice melts: at least a dozen atoms left their places or came to new ones.
    EXPECT_GT(changed, 12 * 25) << "the atoms did not move";
}
