#include "Particle_cls.h"

#include "ParticleFormatClone_cls.h"

#include <memory>

namespace {
const wxString kDraw = "VIEW3D";
const wxString kObject = "VIEW3D::PROPERTY_OBJECT";
} // namespace

Particle_cls::Particle_cls(ParentObj_cls* pParent) : DataViewerBase_cls(pParent, "Particle_cls") {
    mDrawOrder = 1;
    Add(&mCLink, "Link=", "None", kObject);
    Add(&mCDissolve, "Dissolve=", "0", kDraw);
    Add(&mCTwoPass, "TwoPass=", "0", kDraw);
    Add(&mCSortType, "SortType=", "0", kObject);
    Add(&mCSortFrequency, "SortFrequency=", "0.999", kObject);
    Add(&mCSortObject, "SortObject=", "None", kObject);
    Add(&mCClassifyType, "ClassifyType=", "0", kObject);
    Add(&mCClassify, "Classify=", "return 0", kObject);
    Add(&mCDepthMask, "DepthMask=", "1", kDraw);
    Add(&mCInterpType, "InterpType=", "1", kObject);
    Add(&mCInterpolateBy, "InterpolateBy=", "0", kObject);
    Add(&mCVanishSizeType, "VanishSizeType=", "2", kObject);
    Add(&mCExtrapolateType, "ExtrapolateType=", "0", kObject);
    Add(&mCTexturePath0, "TexturePath0=", "None", kObject);
    Add(&mCTexturePath1, "TexturePath1=", "None", kObject);
    Add(&mCTexturePath2, "TexturePath2=", "None", kObject);
    Add(&mCDependDistance, "DependDistance=", "0", kObject);
    Add(&mCPointSizeFactor, "PointSizeFactor=", "10", kObject);
    Add(&mCDistanceBase, "DistanceBase=", "10", kObject);
    Add(&mCSphereDepth, "SphereDepth=", "2", kObject);
    Add(&mCAlphaCrit, "AlphaCrit=", "0.01", kObject);
    Add(&mCTextureNum, "TextureNum=", "1", kObject);
    Add(&mCInfoIndex, "InfoIndex=", "0", "PROPERTY_INFO");
    Add(&mCCastShadow, "CastShadow=", "1", kDraw);
    Add(&mCTwistRandom, "TwistRandom=", "0", kDraw);
}

int Particle_cls::CheckFileSequence() {
    return DataViewerBase_cls::CheckFileSequence(mCSequence);
}

bool Particle_cls::PrefetchData() {
    if (IsPathChanged())
        CheckFileSequence();
    // A fresh clone per call: the user may edit the format while a reader runs.
    auto pClone = std::make_unique<ParticleFormatClone_cls>();
    pClone->CloneFromFormat(mCFormat, IsInterpolateByID());
    return mCSequence.PrefetchData(pClone.get(), GetPCSequenceRemap());
}

bool Particle_cls::ReleaseMemoryData() {
    return mCSequence.ReleaseMemoryData(GetPCSequenceRemap());
}

void Particle_cls::SyncFormatTag() {
    mCFormat.SetTag("SceneObj::" + GetStrName() + "::ParticleFormat");
}

void Particle_cls::SerializeFormat(wxString& strOut) {
    SyncFormatTag();
    mCFormat.Serialize(strOut);
}

bool Particle_cls::ReadStrLineFormat(std::wistream& stream, const wxString& strHead,
                                     const wxString& strRest) {
    SyncFormatTag();
    if (!mCFormat.ReadStrLine(stream, strHead, strRest))
        return false;
    mCFormat.UpdateRowsFromStrings();
    return true;
}
