#include "ImageResample_cls.h"

#include <algorithm>
#include <cmath>
#include <type_traits>
#include <vector>

template <class T>
double ImageResample_cls::GetAverage(const T* pSource, int side, int channels, int channel, double x0,
                                     double y0, double x1, double y1) {
    const double limit = side - 0.001;
    x1 = std::min(x1, limit);
    y1 = std::min(y1, limit);
    const int ix0 = static_cast<int>(x0), ix1 = static_cast<int>(x1);
    const int iy0 = static_cast<int>(y0), iy1 = static_cast<int>(y1);
    double sum = 0.0, weightSum = 0.0;
    for (int iy = iy0; iy <= iy1; ++iy) {
        // The part of row iy inside [y0, y1].
        const double wy = std::min(y1, iy + 1.0) - std::max(y0, static_cast<double>(iy));
        if (wy <= 0.0)
            continue;
        const T* pRow = pSource + (static_cast<size_t>(iy) * side) * channels + channel;
        for (int ix = ix0; ix <= ix1; ++ix) {
            const double wx = std::min(x1, ix + 1.0) - std::max(x0, static_cast<double>(ix));
            if (wx <= 0.0)
                continue;
            sum += wx * wy * static_cast<double>(pRow[static_cast<size_t>(ix) * channels]);
            weightSum += wx * wy;
        }
    }
    return weightSum > 0.0 ? sum / weightSum : 0.0;
}

void ImageResample_cls::GetSourceRect(int side, int width, int height, int x, int y, double& x0, double& y0,
                                      double& x1, double& y1) {
    const double w = width, h = height, s = side;
    if (width >= height) {
        x0 = x / w * s;
        y0 = (y / w + (1.0 - h / w) * 0.5) * s;
        x1 = x0 + s / w;
        y1 = y0 + s / w;
    } else {
        x0 = (x / h + (1.0 - w / h) * 0.5) * s;
        y0 = y / h * s;
        x1 = x0 + s / h;
        y1 = y0 + s / h;
    }
}

namespace {
template <class T> T ToSample(double v) {
    if constexpr (std::is_floating_point<T>::value) {
        return static_cast<T>(v);
    } else {
        return static_cast<T>(std::lround(v));
    }
}
} // namespace

namespace {
// The covered part of each source row (or column) [i, i + 1) of the span [lo, hi] that GetAverage
// walks, in its order, with its clamp and its skip of parts that are not covered.
struct Span_cls {
    int mFirst = 0;
    std::vector<double> mVWeight;
};
Span_cls GetSpan(double lo, double hi, double limit) {
    hi = std::min(hi, limit);
    Span_cls span;
    span.mFirst = static_cast<int>(lo);
    for (int i = span.mFirst; i <= static_cast<int>(hi); ++i)
        span.mVWeight.push_back(std::min(hi, i + 1.0) - std::max(lo, static_cast<double>(i)));
    return span;
}
} // namespace

namespace {
// The same sums as GetAverage, term by term in the same order, so the same bits; but all channels
// in one walk and the weights of a column taken once for the whole picture.
template <class T, int kChannels>
void ResizeChannels(const T* pSource, int side, int width, int height, T* pOut) {
    const double limit = side - 0.001;
    double x0, y0, x1, y1;
    std::vector<Span_cls> vColumns(static_cast<size_t>(width));
    for (int x = 0; x < width; ++x) {
        ImageResample_cls::GetSourceRect(side, width, height, x, 0, x0, y0, x1, y1);
        vColumns[x] = GetSpan(x0, x1, limit);
    }
    for (int y = 0; y < height; ++y) {
        ImageResample_cls::GetSourceRect(side, width, height, 0, y, x0, y0, x1, y1);
        const Span_cls rows = GetSpan(y0, y1, limit);
        for (int x = 0; x < width; ++x) {
            const Span_cls& columns = vColumns[x];
            double sum[kChannels] = {};
            double weightSum = 0.0;
            for (size_t j = 0; j < rows.mVWeight.size(); ++j) {
                const double wy = rows.mVWeight[j];
                if (wy <= 0.0)
                    continue;
                const T* pRow =
                    pSource + static_cast<size_t>(rows.mFirst + static_cast<int>(j)) * side * kChannels;
                for (size_t i = 0; i < columns.mVWeight.size(); ++i) {
                    const double wx = columns.mVWeight[i];
                    if (wx <= 0.0)
                        continue;
                    const T* pPixel =
                        pRow + static_cast<size_t>(columns.mFirst + static_cast<int>(i)) * kChannels;
                    for (int c = 0; c < kChannels; ++c)
                        sum[c] += wx * wy * static_cast<double>(pPixel[c]);
                    weightSum += wx * wy;
                }
            }
            T* pPixel = pOut + (static_cast<size_t>(y) * width + x) * kChannels;
            for (int c = 0; c < kChannels; ++c)
                pPixel[c] = ToSample<T>(weightSum > 0.0 ? sum[c] / weightSum : 0.0);
        }
    }
}
} // namespace

template <class T>
void ImageResample_cls::Resize(const T* pSource, int side, int channels, int width, int height, T* pOut) {
    if (channels == 3)
        return ResizeChannels<T, 3>(pSource, side, width, height, pOut);
    if (channels == 4)
        return ResizeChannels<T, 4>(pSource, side, width, height, pOut);
    if (channels == 1)
        return ResizeChannels<T, 1>(pSource, side, width, height, pOut);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            double x0, y0, x1, y1;
            GetSourceRect(side, width, height, x, y, x0, y0, x1, y1);
            T* pPixel = pOut + (static_cast<size_t>(y) * width + x) * channels;
            for (int c = 0; c < channels; ++c)
                pPixel[c] = ToSample<T>(GetAverage(pSource, side, channels, c, x0, y0, x1, y1));
        }
    }
}

template <class T>
void ImageResample_cls::ResizeScanline(const T* pSource0, const T* pSource1, int side, int channels,
                                       int width, int height, T* pOut) {
    const size_t rowSize = static_cast<size_t>(width) * channels;
    std::vector<T> vEye(rowSize * height);
    for (int eye = 0; eye < 2; ++eye) {
        Resize(eye == 0 ? pSource0 : pSource1, side, channels, width, height, vEye.data());
        // Rows are stored bottom to top: file row r is stored row height - 1 - r.
        for (int y = 0; y < height; ++y) {
            const int fileRow = height - 1 - y;
            if (fileRow % 2 == eye)
                std::copy_n(vEye.data() + rowSize * y, rowSize, pOut + rowSize * y);
        }
    }
}

template void ImageResample_cls::Resize<uint8_t>(const uint8_t*, int, int, int, int, uint8_t*);
template void ImageResample_cls::Resize<uint16_t>(const uint16_t*, int, int, int, int, uint16_t*);
template void ImageResample_cls::Resize<float>(const float*, int, int, int, int, float*);
template void ImageResample_cls::ResizeScanline<uint8_t>(const uint8_t*, const uint8_t*, int, int, int, int,
                                                         uint8_t*);
template void ImageResample_cls::ResizeScanline<uint16_t>(const uint16_t*, const uint16_t*, int, int, int,
                                                          int, uint16_t*);
template void ImageResample_cls::ResizeScanline<float>(const float*, const float*, int, int, int, int,
                                                       float*);
template double ImageResample_cls::GetAverage<uint8_t>(const uint8_t*, int, int, int, double, double, double,
                                                       double);
template double ImageResample_cls::GetAverage<float>(const float*, int, int, int, double, double, double,
                                                     double);
