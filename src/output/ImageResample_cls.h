// The exact box filter that turns the square record buffer into the output picture. The output
// w by h takes the middle band of the square: with w >= h the full width and the rows around
// the middle, with w < h the full height and the middle columns, so the file shows what the
// window shows. Each output pixel averages the source rectangle it covers, the first and last
// row and column weighted by the fraction covered. Rows run bottom to top as GL gives them.
// Any thread.
#pragma once

#include <cstdint>

class ImageResample_cls {
public:
    // The average of channel c of a source of side S with the given channel count over the
    // rectangle (x0, y0)-(x1, y1), in source pixel units; the upper bounds are clamped to S - 0.001.
    template <class T>
    static double GetAverage(const T* pSource, int side, int channels, int channel, double x0, double y0,
                             double x1, double y1);
    // Resamples a square source of side S into w by h, channels per pixel, rounding to the
    // nearest value of T (float is not rounded).
    template <class T>
    static void Resize(const T* pSource, int side, int channels, int width, int height, T* pOut);
    // One picture from two eyes: rows 0, 2, 4, ... of the file (counted from the top) from the
    // first eye, the odd rows from the second, each in the resampling of Resize.
    template <class T>
    static void ResizeScanline(const T* pSource0, const T* pSource1, int side, int channels, int width,
                               int height, T* pOut);
    // The source rectangle of output pixel (x, y).
    static void GetSourceRect(int side, int width, int height, int x, int y, double& x0, double& y0,
                              double& x1, double& y1);
};

extern template void ImageResample_cls::Resize<uint8_t>(const uint8_t*, int, int, int, int, uint8_t*);
extern template void ImageResample_cls::Resize<uint16_t>(const uint16_t*, int, int, int, int, uint16_t*);
extern template void ImageResample_cls::Resize<float>(const float*, int, int, int, int, float*);
extern template void ImageResample_cls::ResizeScanline<uint8_t>(const uint8_t*, const uint8_t*, int, int, int,
                                                                int, uint8_t*);
extern template void ImageResample_cls::ResizeScanline<uint16_t>(const uint16_t*, const uint16_t*, int, int,
                                                                 int, int, uint16_t*);
extern template void ImageResample_cls::ResizeScanline<float>(const float*, const float*, int, int, int, int,
                                                              float*);
extern template double ImageResample_cls::GetAverage<uint8_t>(const uint8_t*, int, int, int, double, double,
                                                              double, double);
extern template double ImageResample_cls::GetAverage<float>(const float*, int, int, int, double, double,
                                                            double, double);
