// Finds the object under a point of the view. The objects are drawn once more through a small
// window of the frustum around the point, in GL's selection mode (the compatibility profile has
// it, llvmpipe included): each instance draws under its name, 0 to n - 1 for the objects and
// n to 2n - 1 for their X-ray entries, and the nearest hit record names the object. The same
// small window drawn normally into a small buffer is the loupe, a magnified view at the mouse.
// GL thread only; deleted while its context is current.
#pragma once

#include <wx/string.h>

#include <memory>
#include <vector>

class FBO_cls;
class SceneObj_cls;

class Hittest_cls {
public:
    // The side of the loupe's buffer in pixels.
    static constexpr int msBufferSize = 64;
    // Room for the hit records of one pick.
    static constexpr int msSelectBufferSize = 4096;

    Hittest_cls();
    ~Hittest_cls();
    Hittest_cls(const Hittest_cls&) = delete;
    Hittest_cls& operator=(const Hittest_cls&) = delete;

    // Starts a pick (bSelect) or a loupe drawing around the point (centreX, centreY) of a square
    // frustum of the angle, in unit coordinates (0, 0 bottom left); size is the side of the small
    // window in the same units. Sets the projection and leaves the model-view selected and reset.
    // A loupe drawing goes into the loupe's buffer, cleared to transparent black.
    void HitTestBegin(double centreX, double centreY, double size, double angle, double zNear, double zFar,
                      bool bSelect);
    // Ends what HitTestBegin started. After a pick: the name of the nearest object drawn through
    // the window, empty when none was.
    wxString HitTestEnd();
    // Draws the loupe's buffer over the rectangle, in the current 2D matrices.
    void Draw(double x, double y, double w, double h) const;
    const FBO_cls* GetPCLoupe() const { return mpCFBO.get(); }

    // The objects drawn in this pass in the order of their hit-test names. The draw pass clears
    // the table and appends each object after drawing it.
    static void ClearReferTable();
    static void SetReferTable(const SceneObj_cls* pObj);
    static void SetReferName(const wxString& strName) { msVStrReferTable.push_back(strName); }
    // The object of a hit-test name: an X-ray name n + i stands for the object i. Empty for a
    // name outside the table.
    static wxString GetStrReferName(unsigned int name);
    // The name of the nearest hit among the records (count, z min, z max, names...) that GL's
    // selection mode writes; -1 when there is none.
    static long long GetNearestName(const unsigned int* pBuffer, int hits, int bufferSize);

private:
    static std::vector<wxString> msVStrReferTable;
    std::unique_ptr<FBO_cls> mpCFBO;
    std::vector<unsigned int> mVSelectBuffer;
    bool mbSelect = false;
    bool mbActive = false;
};
