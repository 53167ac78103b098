#include "JpegSlice_cls.h"

// jpeglib.h needs FILE and size_t declared ahead of it.
#include <cstddef>
#include <cstdio>

#include <jerror.h>
#include <jpeglib.h>

#include <csetjmp>

namespace {

// libjpeg's error manager with a way out: errors leave through longjmp with libjpeg's text kept,
// and a warning that the data ended early is noted.
struct JpegError {
    jpeg_error_mgr mgr;
    jmp_buf jump;
    char strMessage[JMSG_LENGTH_MAX];
    bool bEndedEarly;
};

void OnJpegError(j_common_ptr pInfo) {
    auto* pError = reinterpret_cast<JpegError*>(pInfo->err);
    (*pInfo->err->format_message)(pInfo, pError->strMessage);
    longjmp(pError->jump, 1);
}

void OnJpegMessage(j_common_ptr pInfo, int level) {
    if (level < 0 && pInfo->err->msg_code == JWRN_JPEG_EOF)
        reinterpret_cast<JpegError*>(pInfo->err)->bEndedEarly = true;
}

// Kept free of C++ objects with destructors because an error leaves through longjmp.
bool Decode(jpeg_decompress_struct& info, JpegError& error, FILE* fp, bool bSizeOnly, SlicePixels_cls& slice,
            bool& bSizeRefused) {
    if (setjmp(error.jump))
        return false;
    jpeg_create_decompress(&info);
    jpeg_stdio_src(&info, fp);
    jpeg_read_header(&info, TRUE);
    if (!slice.SetSize(info.image_width, info.image_height, !bSizeOnly)) {
        bSizeRefused = true;
        return false;
    }
    if (bSizeOnly)
        return true;
    // Grey stays grey; any colour space libjpeg knows how to convert becomes RGB, and red counts.
    info.out_color_space = info.jpeg_color_space == JCS_GRAYSCALE ? JCS_GRAYSCALE : JCS_RGB;
    jpeg_start_decompress(&info);
    const int channels = info.output_components;
    JSAMPARRAY pLine = (*info.mem->alloc_sarray)(reinterpret_cast<j_common_ptr>(&info), JPOOL_IMAGE,
                                                 info.output_width * channels, 1);
    while (info.output_scanline < info.output_height) {
        const int y = static_cast<int>(info.output_scanline);
        jpeg_read_scanlines(&info, pLine, 1);
        unsigned char* pRow = slice.Row(y);
        for (int x = 0; x < slice.mWidth; ++x)
            pRow[x] = pLine[0][static_cast<size_t>(x) * channels];
        if (slice.mbColour) {
            unsigned char* pRGBA = slice.RowRGBA(y);
            for (int x = 0; x < slice.mWidth; ++x)
                for (int c = 0; c < 3; ++c) // a grey picture repeats its one channel
                    pRGBA[4 * x + c] = pLine[0][static_cast<size_t>(x) * channels + (channels == 3 ? c : 0)];
        }
    }
    jpeg_finish_decompress(&info);
    return true;
}

} // namespace

bool JpegSlice_cls::Read(FILE* fp, bool bSizeOnly, SlicePixels_cls& slice) {
    jpeg_decompress_struct info{};
    JpegError error{};
    info.err = jpeg_std_error(&error.mgr);
    error.mgr.error_exit = OnJpegError;
    error.mgr.emit_message = OnJpegMessage;
    error.strMessage[0] = '\0';
    error.bEndedEarly = false;
    bool bSizeRefused = false;
    bool bOk = Decode(info, error, fp, bSizeOnly, slice, bSizeRefused);
    jpeg_destroy_decompress(&info);
    if (bSizeRefused)
        return false;
    if (!bOk)
        return slice.Fail(wxString::Format("JPEG data cannot be decoded: %s", error.strMessage));
    if (error.bEndedEarly && !bSizeOnly)
        return slice.Fail("JPEG data ends early");
    return true;
}
