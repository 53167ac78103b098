// A snap whose step is one file read whole into arrays of its own (stream lines, height fields).
// The kinds say how a file becomes their arrays (ReadFileInto) and how they are freed; this base
// decides when a read is due and runs it now or on the snap's reader thread. The reader writes
// only the snap's arrays and hands them over through mReadFinished, as every reader does.
#pragma once

#include "DataSnap_cls.h"

#include <wx/string.h>

class FileSnap_cls : public DataSnap_cls {
public:
    FileSnap_cls(DataSequence_cls* pSequence, int kind, int index) : DataSnap_cls(pSequence, kind, index) {}

    // Main thread.
    void SetStrFile(const wxString& strName) { mFile = strName; }
    // Main thread. Reads the file now; false when there was nothing to do (read already, no file,
    // "None").
    bool ReadData();
    // Main thread. Starts the same read on the reader thread; true when one started.
    bool PrefetchData();
    // Main thread: waits for the reader and frees the arrays.
    void Clear();
    wxString GetStrFile() const override { return mFile; }

    wxString mFile;     // main thread
    wxString mReadFile; // the file the arrays came (or come) from
    // Reader side: the file gave no data (bad or missing); set before the finished flag.
    bool mbBad = false;

protected:
    // Any one thread at a time: fills the arrays from the file; false, after one log line that
    // names the file and the fault, when the file gives no data (the arrays are then empty).
    virtual bool ReadFileInto(const wxString& strFile) = 0;
    virtual void FreeArrays() = 0;

private:
    // Whether a read of mFile is due (waiting for a running one first); if so marks it started and
    // frees the old arrays.
    bool BeginRead();
};
