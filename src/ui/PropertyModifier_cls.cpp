#include "PropertyModifier_cls.h"

#include "Attribute_cls.h"
#include "KindTable_cls.h"

namespace {

using F = PropertyField_cls;
using W = PropertyField_cls::Widget_enum;

const KindTable_cls::Entry_cls* FindEntryKind(const wxString& strClass) {
    for (auto group : {KindTable_cls::GROUP_MODIFIER, KindTable_cls::GROUP_DATA_PROC})
        if (const KindTable_cls::Entry_cls* p = KindTable_cls::Find(strClass, group))
            return p;
    return nullptr;
}

// The rows of each kind; the keys and their meanings are the kinds' own.
const std::vector<std::pair<const char*, F::Table_type>>& GetKindTables() {
    const F valid = F::Item("", "Validity=", "Validity", W::WIDGET_CHECK);
    const auto axes = [](double lo, double hi) {
        return F::Table_type{F::Group("", "X Min/Max", "X Min/Max", lo, hi),
                             F::Group("", "Y Min/Max", "Y Min/Max", lo, hi),
                             F::Group("", "Z Min/Max", "Z Min/Max", lo, hi)};
    };
    const auto join = [](F::Table_type a, const F::Table_type& b) {
        a.insert(a.end(), b.begin(), b.end());
        return a;
    };
    // The two Boolean kinds share their rows.
    const F::Table_type boolean = join({valid, F::Item("", "BooleanType=", "Boolean Type", W::WIDGET_CHOICE),
                                        F::Item("", "BooleanShape=", "Boolean Shape", W::WIDGET_CHOICE),
                                        F::Item("", "BooleanObject=", "Boolean Object", W::WIDGET_TEXT)},
                                       axes(-1e300, 1e300));
    static const std::vector<std::pair<const char*, F::Table_type>> sTables = {
        {"Tracking_cls",
         {valid, F::Item("", "Target=", "Target", W::WIDGET_TEXT),
          F::Item("", "BaseDirection=", "Base Direction", W::WIDGET_CHOICE, "Direction"),
          F::Item("", "BaseTopDirection=", "Base Top Direction", W::WIDGET_CHOICE, "Axis"),
          F::Group("", "Influence", "Influence", 0.0, 1.0)}},
        {"ArrayCopy_cls", join({valid, F::Item("", "Target=", "Target", W::WIDGET_TEXT),
                                F::Item("", "Coord=", "Coord", W::WIDGET_CHOICE),
                                F::Item("", "AxisX=", "Axis X", W::WIDGET_TEXT),
                                F::Item("", "AxisY=", "Axis Y", W::WIDGET_TEXT),
                                F::Item("", "AxisZ=", "Axis Z", W::WIDGET_TEXT)},
                               axes(-1000.0, 1000.0))},
        {"Trimming_cls", join(join({valid}, axes(-1e300, 1e300)),
                              {F::Item("", "Global=", "Global", W::WIDGET_CHECK),
                               F::Item("", "Smooth=", "Smooth", W::WIDGET_CHECK),
                               F::Number("", "SmoothWidth=", "Smooth Width", 0.0, 1e300),
                               F::Number("", "ThinningFactor=", "Thinning Factor", 0.0, 1e300),
                               F::Group("", "Thinning", "Thinning", 0.0, 1.0)})},
        {"SequenceRemap_cls",
         {valid, F::Item("", "Clamp=", "Clamp", W::WIDGET_CHECK),
          F::Item("", "Repeat=", "Repeat", W::WIDGET_CHECK), F::Group("", "Remap", "Remap")}},
        {"TexSpaceMod_cls", {valid, F::Item("", "AdjustScale=", "Adjust Scale", W::WIDGET_CHECK)}},
        {"ModifyApparentSize_cls",
         {valid, F::Item("", "TargetType=", "Target Type", W::WIDGET_CHOICE),
          F::Group("", "Parameters", "Min Apparent / Max Apparent", 0.0, 1e300),
          F::Item("", "LimitApparentMin=", "Limit Min", W::WIDGET_CHECK),
          F::Item("", "ModifyAlphaMin=", "Modify Alpha Min", W::WIDGET_CHECK),
          F::Number("", "PowerAlphaMin=", "Power Alpha Min", 0, 2),
          F::Item("", "LimitApparentMax=", "Limit Max", W::WIDGET_CHECK),
          F::Item("", "ModifyAlphaMax=", "Modify Alpha Max", W::WIDGET_CHECK),
          F::Number("", "PowerAlphaMax=", "Power Alpha Max", 0, 3)}},
        {"ModifyParticleSize_cls",
         {valid, F::Item("", "TargetType=", "Target Type", W::WIDGET_CHOICE),
          F::Item("", "DependType=", "Depend Type", W::WIDGET_CHOICE),
          F::Number("", "ColorCurveIndex=", "Color Curve", 0, 1e9),
          F::Number("", "ChannelType=", "Channel", 0, 16)}},
        {"ParticleBoolean_cls", boolean},
        {"ParticleDownsizing_cls",
         {valid, F::Item("", "DownsizeType=", "Downsizing Type", W::WIDGET_CHOICE),
          F::Number("", "Downsize=", "Downsize", 1, 1e9)}},
        {"ParticleFiltering_cls",
         {valid, F::Item("", "FilteringType=", "Filtering Type", W::WIDGET_CHOICE),
          F::Item("", "IndexType=", "Index Type", W::WIDGET_CHOICE),
          F::Item("", "FilteringString=", "Filtering String", W::WIDGET_TEXT)}},
        {"ParticleMerge_cls", {valid, F::Item("", "Target=", "Target", W::WIDGET_TEXT)}},
        {"ParticleTweak_cls",
         {valid, F::Item("", "BillboardRotOrder=", "Rotate Order", W::WIDGET_CHOICE),
          F::Group("", "BillboardFocus", "Billboard Focus (YPR)")}},
        {"VolumeCoord_cls",
         {valid, F::Item("", "CoordType=", "Coordinates", W::WIDGET_CHOICE),
          F::Item("", "CustomCoord=", "Custom Coordinates", W::WIDGET_TEXT)}},
        {"VolumeMask_cls", {valid, F::Item("", "MaskType=", "Mask Type", W::WIDGET_CHOICE)}},
        {"VolumeBoolean_cls", boolean},
        {"VolumeDownsize_cls",
         {valid, F::Number("", "DownsizeX=", "Downsize X", 1, 1024),
          F::Number("", "DownsizeY=", "Downsize Y", 1, 1024),
          F::Number("", "DownsizeZ=", "Downsize Z", 1, 1024)}},
        {"StreamFiltering_cls",
         {valid, F::Item("", "FilteringType=", "Filtering Type", W::WIDGET_CHOICE, "StreamFilteringType"),
          F::Item("", "FilteringString=", "Filtering String", W::WIDGET_TEXT)}},
        {"StreamSetAlpha_cls",
         {valid, F::Item("", "SetAlphaType=", "Set Alpha Type", W::WIDGET_CHOICE),
          F::Number("", "Crit=", "Criterion", -1e300, 1e300)}},
        {"StreamTransform_cls",
         {valid, F::Item("", "Offset=", "Offset", W::WIDGET_TEXT),
          F::Item("", "Rotate=", "Rotate", W::WIDGET_TEXT),
          F::Item("", "RotateOrder=", "Rotate Order", W::WIDGET_CHOICE),
          F::Item("", "Scale=", "Scale", W::WIDGET_TEXT)}},
    };
    return sTables;
}

} // namespace

PropertyModifier_cls::PropertyModifier_cls(wxWindow* pParent, std::function<SceneObj_cls*()> funcObject,
                                           Attribute_cls* pEntry)
    : PropertyFieldPanel_cls(pParent, GetVField(pEntry), std::move(funcObject)),
      mStrEntryName(pEntry ? pEntry->GetStrName() : wxString()) {}

PropertyField_cls::Table_type PropertyModifier_cls::GetVField(Attribute_cls* pEntry) {
    if (!pEntry)
        return {};
    const KindTable_cls::Entry_cls* pKind = FindEntryKind(pEntry->GetStrAttributeName());
    const F::Table_type* pTable =
        pKind ? pKind->GetSlot<F::Table_type>(KindTable_cls::SLOT_PROPERTY_PAGE) : nullptr;
    return F::WithAttr(pTable ? *pTable : GetVFieldGeneric(pEntry), pEntry->GetStrName());
}

PropertyField_cls::Table_type PropertyModifier_cls::GetVFieldGeneric(Attribute_cls* pEntry) {
    F::Table_type v;
    if (!pEntry)
        return v;
    for (const wxString& strKey : pEntry->GetAstrItemList()) {
        const ConfItem_cls* pItem = pEntry->GetPCItem(strKey);
        if (!pItem)
            continue;
        const bool bNumber =
            pItem->mKind == CONF_INT || pItem->mKind == CONF_UINT || pItem->mKind == CONF_FLOAT;
        const W widget = pItem->mKind == CONF_BOOL ? W::WIDGET_CHECK
                         : bNumber                 ? W::WIDGET_NUMBER
                                                   : W::WIDGET_TEXT;
        v.push_back(F::Item("", strKey, strKey.BeforeLast('='), widget));
    }
    for (ParamGroup_cls* pGroup : pEntry->mVPCParamGroup)
        v.push_back(F::Group("", pGroup->GetStrName(), pGroup->GetStrName()));
    return v;
}

void PropertyModifier_cls::RegisterTables() {
    for (const auto& [pClass, vField] : GetKindTables()) {
        const KindTable_cls::Entry_cls* pKind = FindEntryKind(pClass);
        if (pKind)
            KindTable_cls::Register(pClass, pKind->mGroup).SetSlot(KindTable_cls::SLOT_PROPERTY_PAGE, vField);
    }
}
