#include "UiFixture.h"

#include "PanelMakers.h"

#include "MyArtProvider.h"
#include "UndoManager_cls.h"
#include "X11Support.h"

#include <wx/image.h>

namespace {

// The toolkit is started by the shared test main; with a display it gets a GUI application
// object, without one a console one, so that the tests can report themselves skipped.
wxAppConsole* CreateTestApp() {
    if (X11Support::IsDisplayReachable())
        return new wxApp;
    return new wxAppConsole;
}

wxAppInitializer gTestAppInitializer(CreateTestApp);

} // namespace

bool IsGuiAvailable() {
    // wxTheApp is already cast to wxApp in a GUI build: ask the instance itself.
    return dynamic_cast<wxApp*>(wxAppConsole::GetInstance()) != nullptr;
}

void PrepareWindowResources() {
    static bool sbArt = false;
    if (sbArt)
        return;
    if (!wxImage::FindHandler(wxBITMAP_TYPE_PNG))
        wxImage::AddHandler(new wxPNGHandler);
    wxArtProvider::Push(new MyArtProvider(ORV_SOURCE_DIR));
    wxPanelEX::InitializeStatic();
    sbArt = true;
}

void UiFixture::SetUp() {
    SKIP_WITHOUT_DISPLAY();
    PrepareWindowResources();
    ServicesFixture::SetUp();
    mpFrame = new FrameMain_cls("Orvantis4 ver test", mpMain.get(), 0, 0, 1000, 800);
    // A modal box would block the test: a question no test expected fails it instead.
    mpFrame->mFuncAskUser = [](const wxString& strTitle, const wxString& strMessage,
                               const std::vector<wxString>&) {
        ADD_FAILURE() << "unexpected question: " << strTitle << ": " << strMessage;
        return -1;
    };
    mpFrame->Show();
    mpFrame->Layout();
}

void UiFixture::RegisterLayers() {
    ServicesFixture::RegisterLayers();
    UnregisterPanelMakers();
}

void UiFixture::TearDown() {
    delete mpFrame;
    mpFrame = nullptr;
    ServicesFixture::TearDown();
    UnregisterPanelMakers();
}

void UiFixture::ReadLayout(const wxString& strLayoutBlock) {
    wxString strPath = mDir.Path("layout.ovp");
    ASSERT_TRUE(WriteBytes(strPath, std::string(strLayoutBlock.utf8_str())));
    ASSERT_TRUE(mpMain->OpenProjectMain(strPath, false));
    mpFrame->Layout();
}

void UiFixture::ReadFrameLayout(const wxString& strTree) {
    std::wistringstream stream((strTree + "FrameMain::Close\n").ToStdWstring());
    ASSERT_TRUE(mpFrame->ReadStrLine(stream, "FrameMain", "0::1000::800"));
    mpFrame->Layout();
}

void UiFixture::CollectLeaves(SplittableWindow_cls* pNode, std::vector<wxPanelEX*>& vLeaves) {
    if (!pNode)
        return;
    if (pNode->IsSplit()) {
        CollectLeaves(pNode->mpCChildSWindow[0], vLeaves);
        CollectLeaves(pNode->mpCChildSWindow[1], vLeaves);
        return;
    }
    if (wxPanelEX* pPanel = pNode->GetPCPanel())
        vLeaves.push_back(pPanel);
}

void UiFixture::RunPendingEvents() {
    // A handler may queue a further event (a menu mirror queues its ribbon click).
    for (int i = 0; i < 4; ++i)
        wxTheApp->ProcessPendingEvents();
}
