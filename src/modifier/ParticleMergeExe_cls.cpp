#include "ParticleMergeExe_cls.h"

#include "AttributeClone_cls.h"
#include "ModifierBase_cls.h"
#include "ParticleForRender_cls.h"

#include <algorithm>
#include <climits>
#include <vector>

ParticleMergeExe_cls::ParticleMergeExe_cls(AttributeClone_cls* pClone, ParticleForRender_cls* pOwn,
                                           ParticleForRender_cls* pOther)
    : mpOwn(pOwn), mpOther(pOther) {
    mbValid = pClone && ModifierBase_cls::IsCloneValid(*pClone);
}

namespace {

template <class T> std::vector<T> Keep(const std::unique_ptr<T[]>& p, long long n) {
    return p ? std::vector<T>(p.get(), p.get() + n) : std::vector<T>(static_cast<size_t>(n), T());
}

template <class T>
void Put(std::unique_ptr<T[]>& dst, const std::vector<T>& own, const std::unique_ptr<T[]>& other,
         long long n) {
    std::copy(own.begin(), own.end(), dst.get());
    if (other)
        std::copy(other.get(), other.get() + n, dst.get() + own.size());
    else
        std::fill(dst.get() + own.size(), dst.get() + own.size() + n, T());
}

} // namespace

bool ParticleMergeExe_cls::Execute() {
    if (!mbValid || !mpOwn || !mpOther || mpOther == mpOwn || mpOther->mNumber < 1)
        return true;
    const long long nOwn = std::max(0LL, mpOwn->mNumber);
    const long long nOther = mpOther->mNumber;
    // The own values are kept aside: Allocate may hand out fresh arrays.
    std::vector<float> xyz = Keep(mpOwn->mXYZ, nOwn * 3);
    std::vector<unsigned char> type = Keep(mpOwn->mType, nOwn);
    std::vector<float> size = Keep(mpOwn->mSize, nOwn);
    std::vector<float> s = Keep(mpOwn->mColorS, nOwn);
    std::vector<float> t = Keep(mpOwn->mColorT, nOwn);
    std::vector<ArrayAndIndex_cls> order = Keep(mpOwn->mOrder, nOwn);
    std::vector<float> alpha = Keep(mpOwn->mAlpha, nOwn);
    // Filled only when the pass thinned; otherwise element e is particle e.
    const bool bSource = !mpOwn->mbSourceIdentity;
    std::vector<int> source = bSource ? Keep(mpOwn->mSource, nOwn) : std::vector<int>();
    if (!mpOwn->Allocate(nOwn + nOther))
        return false;
    Put(mpOwn->mXYZ, xyz, mpOther->mXYZ, nOther * 3);
    Put(mpOwn->mType, type, mpOther->mType, nOther);
    Put(mpOwn->mSize, size, mpOther->mSize, nOther);
    Put(mpOwn->mColorS, s, mpOther->mColorS, nOther);
    Put(mpOwn->mColorT, t, mpOther->mColorT, nOther);
    Put(mpOwn->mOrder, order, mpOther->mOrder, nOther);
    Put(mpOwn->mAlpha, alpha, mpOther->mAlpha, nOther);
    std::copy(source.begin(), source.end(), mpOwn->mSource.get());
    for (long long i = nOwn; i < nOwn + nOther; ++i) {
        mpOwn->mOrder[i].mIndex += static_cast<int>(nOwn);
        // The other's elements are no particles of own's file: past its end for the filters, and shown.
        // Without thinning their places lie past own's count already.
        if (bSource)
            mpOwn->mSource[i] = INT_MAX;
    }
    return true;
}
