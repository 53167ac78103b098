// Reads record buffers back and hands their pixels to a ring of four writer threads, so up to
// four files are written at once while rendering goes on; a save waits only when the next slot
// is still busy. The GL read-back runs on the calling (GL) thread, the resize and the file on
// the worker. Main (GL) thread only, except what the workers touch through their slot's flags.
#pragma once

#include <wx/gdicmn.h>
#include <wx/string.h>

#include <atomic>
#include <memory>
#include <string>
#include <thread>
#include <vector>

class FBO_cls;
class ReadBackTable_cls;
class ThreadImageSave_cls;

class ImageIO_cls {
public:
    static constexpr int msSlotNum = 4;

    ImageIO_cls();
    // Waits for the writers still running: each owns its buffers and its file.
    ~ImageIO_cls();
    ImageIO_cls(const ImageIO_cls&) = delete;
    ImageIO_cls& operator=(const ImageIO_cls&) = delete;

    // Reads the buffer back and starts a writer. A folder that does not exist saves nothing and
    // says nothing. The file format follows the extension; pngBitDepth 16 writes 16-bit PNG.
    void SaveImageFromFBO(FBO_cls* pFBO, wxSize size, const wxString& strPath, bool bAlpha);
    // One picture from two eye buffers, even rows from the first.
    void SaveImageFromFBOScanLine(FBO_cls** pFBOs, wxSize size, const wxString& strPath);
    // Keeps a copy of the current projection matrix for scripts that convert coordinates.
    void PrepareViewportInfo();
    const double* GetProjectionMatrix() const { return mProjection; }

    // A finished file: its path and whether it was written whole.
    struct Result_cls {
        std::string mStrPath;
        bool mbOk;
        int mTag;
    };
    // Reclaims the slots whose writer has finished and gives their results (oldest first).
    std::vector<Result_cls> CollectFinished();
    // Waits for every running writer and gives all results not yet collected.
    std::vector<Result_cls> WaitAll();
    // Number of writers started and not yet collected.
    int GetBusyCount() const;

    int mPNGCompression = 6;
    int mPNGBitDepth = 8;
    // Given to the results of the saves that start from now on (the batch: the frame's index).
    int mTag = 0;
    // Saves started (or refused after the folder check) since construction.
    long long mSaveCount = 0;

private:
    struct Slot_cls {
        bool mbUsed = false;
        std::atomic<bool> mbFinished{false};
        std::atomic<bool> mbOk{false};
        std::thread mThread;
        std::unique_ptr<ThreadImageSave_cls> mpCThread;
        std::string mStrPath;
        int mTag = 0;
    };
    // Waits for the slot's writer, 3 ms at a time, and frees it.
    void Reclaim(Slot_cls& slot);
    // Above this side the driver converts on this thread: raw half samples would take the
    // writers' memory from 3 to 8 bytes a pixel.
    static constexpr int msRawSideMax = 4096;
    // The driver's conversion as a table, asked once; null if the driver cannot give one.
    const ReadBackTable_cls* GetTable();
    // Reads the colour texture of the buffer into the writer's source: half-float buffers raw,
    // for the writer to convert; others (and float files) converted by the driver here.
    bool ReadBack(FBO_cls* pFBO, bool bAlpha, const std::string& strPath, ThreadImageSave_cls& thread,
                  bool bSecondEye);
    Slot_cls* TakeNextSlot();
    // One buffer, or two eyes merged by scan lines.
    void Save(FBO_cls* const* pFBOs, int count, wxSize size, const wxString& strPath, bool bAlpha);
    void Start(Slot_cls& slot, std::unique_ptr<ThreadImageSave_cls> pThread, const std::string& strPath);

    Slot_cls mSlots[msSlotNum];
    int mNextSlot = 0;
    std::vector<Result_cls> mVResults;
    std::shared_ptr<const ReadBackTable_cls> mpCTable;
    bool mbTableAsked = false;
    double mProjection[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
};
