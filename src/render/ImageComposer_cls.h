// Overlays the two images of one frame (the time control's composite of two adjusted times):
// the first is stored, the second is drawn and the stored one laid over it. GL thread only.
#pragma once

class FBO_cls;

class ImageComposer_cls {
public:
    // Clears `store` and draws `image` into it, alpha blended (colour by the source alpha, alpha
    // added over what the store had).
    void StoreInBuffer(FBO_cls* pImage, FBO_cls* pStore);
    // Draws `store` over `image` with the same blending.
    void OverlapBuffer(FBO_cls* pImage, FBO_cls* pStore);

private:
    // `source` over the whole of `dest`, which begins with or without a clear.
    static void Compose(FBO_cls* pSource, FBO_cls* pDest, bool bClear);
};
