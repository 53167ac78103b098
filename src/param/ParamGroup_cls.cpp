#include "ParamGroup_cls.h"

#include "LuaErrorSink_cls.h"
#include "ParamStream_cls.h"
#include "TextHost_cls.h"
#include "TimeCtrl_cls.h"
#include "UndoManager_cls.h"

#include <wx/log.h>

#include <algorithm>

luaL_Reg* ParamGroup_cls::mspDataTable = nullptr;

namespace {

luaL_Reg gEmptyTable[] = {{nullptr, nullptr}};

luaL_Reg gThisTable[] = {{"GetValueAt", ParamGroup_cls::l_This_GetValueAt},
                         {"GetKeyNum", ParamGroup_cls::l_This_GetKeyNum},
                         {nullptr, nullptr}};

// The most values one expression call takes without a heap buffer: nt, seq, sub, frame and
// four members.
constexpr int ARGS_ON_STACK = 8;

} // namespace

ParamGroup_cls::ParamGroup_cls(const wxString& strName, const wxArrayString& astrMemberNames)
    : mCLinked("Linked=", true), mCShy("Shy=", false), mCUseExpr("UseExpr=", false),
      mCExpression("Expression=", ""), mCKilroy("Kilroy=", false) {
    mCStrName.SetItem("Name=", strName);
    SetTag(strName);
    for (size_t i = 0; i < astrMemberNames.GetCount(); ++i)
        mVCParam.emplace_back(this, astrMemberNames[i], static_cast<int>(i));
    // The default expression returns its input unchanged.
    mCExpression.mStrBody = "return " + GetStrMemberListCSV();
    mCExpression.mStrUpdateTag = "TEXT_EDITOR";
    mCKilroy.mStrUpdateTag = "TIMELINE";
    RegisterItems();
}

ParamGroup_cls::ParamGroup_cls(const ParamGroup_cls& src)
    : LuaBase_cls(src), StrName_cls(src), ConfListContainer_cls(), GetPC_cls(), mCLinked(src.mCLinked),
      mCShy(src.mCShy), mCUseExpr(src.mCUseExpr), mCExpression(src.mCExpression), mCKilroy(src.mCKilroy),
      mbColorCurve(src.mbColorCurve), mVCParam(src.mVCParam) {
    SetTag(src.mStrTag);
    RegisterItems();
    FixMembers();
}

ParamGroup_cls& ParamGroup_cls::operator=(const ParamGroup_cls& src) {
    if (this == &src)
        return *this;
    CloseLua();
    mCStrName = src.mCStrName;
    mCLinked = src.mCLinked;
    mCShy = src.mCShy;
    mCUseExpr = src.mCUseExpr;
    mCExpression = src.mCExpression;
    mCKilroy = src.mCKilroy;
    mRecursionDepth = 0;
    mbColorCurve = src.mbColorCurve;
    mStrCompiledExpression.clear();
    mVCParam = src.mVCParam;
    SetTag(src.mStrTag);
    RegisterItems();
    FixMembers();
    return *this;
}

ParamGroup_cls::~ParamGroup_cls() {
    CloseLua();
}

void ParamGroup_cls::RegisterItems() {
    Clear();
    for (ConfItem_cls* pItem :
         {static_cast<ConfItem_cls*>(&mCStrName), static_cast<ConfItem_cls*>(&mCLinked),
          static_cast<ConfItem_cls*>(&mCShy), static_cast<ConfItem_cls*>(&mCUseExpr),
          static_cast<ConfItem_cls*>(&mCExpression), static_cast<ConfItem_cls*>(&mCKilroy)}) {
        pItem->SetParentListTag(mStrTag);
        mVPItems.push_back(pItem);
    }
}

void ParamGroup_cls::FixMembers() {
    for (size_t i = 0; i < mVCParam.size(); ++i)
        mVCParam[i].mpCParamGroup = this;
}

// ---- values ---------------------------------------------------------------------------------

std::vector<double> ParamGroup_cls::GetVInterpolatedValue(double t, bool bExpression, ParamGroup_cls* pCaller,
                                                          bool bFlag) {
    std::vector<double> values;
    values.reserve(mVCParam.size());
    for (const Parameter_cls& param : mVCParam)
        values.push_back(param.GetValue(t));
    if (bExpression && IsUseExpr())
        return GetVExpression(t, std::move(values), pCaller, bFlag);
    return values;
}

std::vector<float> ParamGroup_cls::GetVInterpolatedValue(float t, bool bExpression, ParamGroup_cls* pCaller,
                                                         bool bFlag) {
    std::vector<double> values = GetVInterpolatedValue(static_cast<double>(t), bExpression, pCaller, bFlag);
    return std::vector<float>(values.begin(), values.end());
}

std::vector<double> ParamGroup_cls::GetVExpression(double t, std::vector<double> values,
                                                   ParamGroup_cls* pCaller, bool bFlag) {
    if (mCExpression.mStrBody != mStrCompiledExpression)
        OpenLua(pCaller);
    // A chained call names its caller to the host functions; the panels pass no chain.
    if (bFlag && pCaller && mpLuaState) {
        lua_pushlightuserdata(mpLuaState, pCaller);
        lua_setglobal(mpLuaState, "ParamGroupChain");
    }
    return CallLuaExpression(std::move(values), t);
}

void ParamGroup_cls::OpenLua(ParamGroup_cls*) {
    if (IsLuaOpen()) {
        mRecursionDepth = 0;
        CloseLuaBase();
    }
    // The expression starts on the header's line, so that Lua's line numbers are the user's.
    const wxString strScript = "function script(nt, seq, sub, frame, " + GetStrMemberListCSV() + ") " +
                               mCExpression.mStrBody + "\nend\n";
    mStrCompiledExpression = mCExpression.mStrBody;
    wxArrayString astrNames;
    astrNames.Add("Data");
    astrNames.Add("This");
    luaL_Reg* tables[2] = {mspDataTable ? mspDataTable : gEmptyTable, gThisTable};
    if (!OpenLuaBase(strScript, 2, astrNames, tables, GetStrName())) {
        // Reported once; the values stay the key-framed ones until the text is edited.
        CloseLuaBase();
        return;
    }
    lua_pushlightuserdata(mpLuaState, this);
    lua_setglobal(mpLuaState, "ParamGroup");
}

void ParamGroup_cls::CloseLua() {
    mRecursionDepth = 0;
    CloseLuaBase();
}

std::vector<double> ParamGroup_cls::CallLuaExpression(std::vector<double> values, double t) {
    lua_State* pL = mpLuaState;
    if (!pL)
        return values;
    lua_getglobal(pL, "ParamGroupChain");
    lua_pop(pL, 1);
    ++mRecursionDepth;
    if (mRecursionDepth >= 2) {
        // The expression has come back to itself through a host function. The check is per
        // group on this counter alone; no graph of references is built.
        LuaErrorSink_cls::Post("Reference Loop::" + GetStrName());
        --mRecursionDepth;
        return std::vector<double>();
    }
    int seq = 0;
    int sub = 0;
    int frame = 0;
    if (GpCTimeCtrl) {
        GpCTimeCtrl->GetFrameFromNT(t, seq, sub);
        frame = GpCTimeCtrl->GetCurrentStep(); // the clock's step, not the step of t: kept so
    }
    lua_getglobal(pL, "ParamGroupInit");
    if (!lua_touserdata(pL, -1)) {
        // The first call in a state names the group where the chain started.
        lua_pushlightuserdata(pL, this);
        lua_setglobal(pL, "ParamGroupInit");
    }
    lua_pop(pL, 1);

    const int n = static_cast<int>(values.size());
    double argsOnStack[ARGS_ON_STACK];
    std::vector<double> vArgsOnHeap;
    double* pArgs = argsOnStack;
    if (4 + n > ARGS_ON_STACK) {
        vArgsOnHeap.resize(4 + n);
        pArgs = vArgsOnHeap.data();
    }
    pArgs[0] = t;
    pArgs[1] = seq;
    pArgs[2] = sub;
    pArgs[3] = frame;
    std::copy(values.begin(), values.end(), pArgs + 4);
    std::vector<double> results(n, 0.0);
    if (!CallScript(pArgs, 4 + n, results.data(), n, GetStrName())) {
        // Reported; a broken expression behaves as absent until it is next edited.
        mRecursionDepth = 0;
        CloseLuaBase();
        return values;
    }
    --mRecursionDepth;
    return results;
}

wxString ParamGroup_cls::GetStrValues(double t, bool bExpression) {
    std::vector<double> values = GetVInterpolatedValue(t, bExpression, nullptr, false);
    wxString str;
    for (size_t i = 0; i < values.size(); ++i) {
        if (i > 0)
            str += " ";
        str += wxString::Format("%g", values[i]);
    }
    return str;
}

wxString ParamGroup_cls::GetStrExpressionMessage() const {
    return "nt, seq, sub, frame = Normalized Time, Index, Subindex, Scene Frame\n" + GetStrMemberListCSV() +
           " = members";
}

wxString ParamGroup_cls::GetStrMemberListCSV() const {
    wxString str;
    for (size_t i = 0; i < mVCParam.size(); ++i) {
        if (i > 0)
            str += ",";
        str += mVCParam[i].GetStrName();
    }
    return str;
}

Parameter_cls* ParamGroup_cls::GetPCParameter(const wxString& strName) {
    for (Parameter_cls& param : mVCParam)
        if (param.GetStrName() == strName)
            return &param;
    return nullptr;
}

void ParamGroup_cls::PrecalcBegin() {
    for (Parameter_cls& param : mVCParam)
        param.PrecalcBegin();
}

void ParamGroup_cls::PrecalcEnd() {
    for (Parameter_cls& param : mVCParam)
        param.PrecalcEnd();
}

bool ParamGroup_cls::IsTimeDepend() const {
    for (const Parameter_cls& param : mVCParam)
        if (param.IsTimeDepend())
            return true;
    return false;
}

bool ParamGroup_cls::IsLinked() const {
    return Parameter_cls::IsItemTrue(mCLinked);
}

bool ParamGroup_cls::IsUseExpr() const {
    return Parameter_cls::IsItemTrue(mCUseExpr);
}

bool ParamGroup_cls::IsSelectedKeyExist() const {
    for (const Parameter_cls& param : mVCParam)
        if (param.IsSelectedKeyExist())
            return true;
    return false;
}

bool ParamGroup_cls::IsKeyExistAll(double x) const {
    for (const Parameter_cls& param : mVCParam)
        if (!param.IsKeyExist(x))
            return false;
    return true;
}

void ParamGroup_cls::SetInitValue(double a, double b, double c, double d) {
    const double values[4] = {a, b, c, d};
    for (size_t i = 0; i < mVCParam.size() && i < 4; ++i)
        if (!mVCParam[i].mVCKey.empty())
            mVCParam[i].mVCKey[0].mValue = values[i];
}

void ParamGroup_cls::SetInitKeyframes(int num, double (*table)[5]) {
    if (mVCParam.size() != 4) {
        wxLogWarning("ParamGroup %s: initial keys need four members, not %d (num == 4)", GetStrName(),
                     static_cast<int>(mVCParam.size()));
        return;
    }
    if (num < 1 || !table) {
        wxLogWarning("ParamGroup %s: no initial keys given", GetStrName());
        return;
    }
    for (size_t m = 0; m < mVCParam.size(); ++m) {
        Parameter_cls& param = mVCParam[m];
        param.mCTimeDepend.SetBodyFromData(wxString("1"));
        param.mVCKey.clear();
        for (int r = 0; r < num; ++r) {
            wxString strKey = wxString::Format("%g::0::%g::1::1", table[r][0], table[r][1 + m]);
            param.mVCKey.emplace_back(strKey);
        }
    }
}

void ParamGroup_cls::DeselectKey(wxString) {
    for (Parameter_cls& param : mVCParam)
        param.DeselectKey();
}

void ParamGroup_cls::SelectKey(double x, bool bSelect, bool bAdd, double tolerance) {
    for (Parameter_cls& param : mVCParam)
        param.SelectKey(x, bSelect, bAdd, tolerance);
}

void ParamGroup_cls::SelectKeyAll() {
    for (Parameter_cls& param : mVCParam)
        param.SelectKeyAll(true);
}

void ParamGroup_cls::Flip() {
    for (Parameter_cls& param : mVCParam)
        param.Flip();
}

void ParamGroup_cls::SwapRGB() {
    if (mVCParam.size() < 3)
        return;
    std::swap(mVCParam[0].mVCKey, mVCParam[2].mVCKey);
    ++mVCParam[0].mProcCounter;
    ++mVCParam[2].mProcCounter;
}

// ---- text -----------------------------------------------------------------------------------

void ParamGroup_cls::Serialize(wxString& strOut) {
    strOut += "ReadParamGroup::" + GetStrName() + "\n";
    strOut += "ConfItemList::Begin::" + mStrTag + "\n";
    for (ConfItem_cls* pItem : mVPItems)
        if (pItem != &mCKilroy || IsKilroy())
            pItem->Serialize(strOut);
    strOut += "ConfItemList::End\n";
    for (const Parameter_cls& param : mVCParam)
        param.Serialize(strOut);
    strOut += "ReadParamGroup::End\n";
}

bool ParamGroup_cls::ReadStrLine(std::wistream& stream, const wxString& strHead, const wxString& strRest) {
    if (ConfListContainer_cls::ReadStrLine(stream, strHead, strRest))
        return true;
    ConfItemSTR_cls dummy("Name=", "dummy");
    if (!dummy.ReadStrLine(ParamStream_cls::Join(strHead, strRest)))
        return false;
    Parameter_cls* pParam = GetPCParameter(dummy.GetBodySTR());
    if (!pParam) {
        wxLogWarning("ParamGroup %s: no member \"%s\"", GetStrName(), dummy.GetBodySTR());
        return false;
    }
    ParamStream_cls reader;
    wxString strLine;
    if (!reader.GetLine(stream, strLine)) {
        wxLogWarning("ParamGroup %s: the text ends after Name=%s", GetStrName(), pParam->GetStrName());
        return true;
    }
    wxString strLineHead = ParamStream_cls::PopHead(strLine);
    return pParam->ReadStrLine(stream, strLineHead, strLine);
}

bool ParamGroup_cls::ReadStrOneLiner(const wxString& strHead, const wxString& strRest) {
    if (ReadStrLineAll(ParamStream_cls::Join(strHead, strRest)))
        return true;
    for (Parameter_cls& param : mVCParam) {
        if (param.GetStrName() != strHead)
            continue;
        wxString strRemainder = strRest;
        wxString strNext = PopStrItemFromStrLine(strRemainder, "::");
        return param.ReadStrOneLiner(strNext, strRemainder);
    }
    return false;
}

bool ParamGroup_cls::CheckCalledAsLink(wxString& strTag) {
    const wxString strLast = GetLastItem(strTag, "::");
    wxString strParent = strTag;
    PopLastItemFromStrLine(strParent, "::");
    const bool bMember = GetPCParameter(strLast) != nullptr;
    if (strLast == GetStrName()) {
        // Addressed to the group, unless a member of the group's own name follows the group.
        if (!bMember || GetLastItem(strParent, "::") != GetStrName())
            return false;
    } else if (!bMember) {
        return false; // the tag ends at the owner
    }
    if (GetLastItem(strParent, "::") != GetStrName())
        wxLogWarning("ParamGroup %s: member tag %s without the group (GetLastItem(strTag, \"::\").IsSameAs("
                     "GetStrName()) == TRUE)",
                     GetStrName(), strTag);
    strTag = strParent;
    return true;
}

void ParamGroup_cls::CheckTag(wxString& strTag) const {
    if (GetLastItem(strTag, "::") != GetStrName())
        strTag += "::" + GetStrName();
}

bool ParamGroup_cls::NormalizeTag(wxString& strTag, wxString* pStrMember) {
    const wxString strLast = GetLastItem(strTag, "::");
    const bool bLink = CheckCalledAsLink(strTag);
    if (bLink && pStrMember)
        *pStrMember = strLast;
    CheckTag(strTag);
    return bLink;
}

wxString ParamGroup_cls::GetStrProcCounter() const {
    wxString str = ConfItemList_cls::GetStrProcCounter();
    for (const Parameter_cls& param : mVCParam)
        str += wxString::Format("::%d", param.GetProcCounter());
    return str;
}

// ---- commands -------------------------------------------------------------------------------

void ParamGroup_cls::SetNewKeyCommand(double value, double x, wxString strTag, int type, double ease) {
    wxString strMember;
    const bool bLink = NormalizeTag(strTag, &strMember);
    if (GpCUndo)
        GpCUndo->OpenBlock("SetNewKeyAsGroup");
    for (size_t i = 0; i < mVCParam.size(); ++i) {
        Parameter_cls& param = mVCParam[i];
        if (param.IsKeyExist(x))
            continue;
        // The other members of a linked call keep their shape: they get a key of their own value.
        const double v = (!bLink || param.GetStrName() == strMember) ? value : param.GetValue(x);
        param.SetNewKeyCommand(v, x, strTag + "::" + param.GetStrName(), type, ease, true);
    }
    if (GpCUndo)
        GpCUndo->CloseBlock("SetNewKeyAsGroup");
}

void ParamGroup_cls::InsertKeyCommand(double x, wxString strTag, int type, double ease) {
    NormalizeTag(strTag, nullptr);
    if (GpCUndo)
        GpCUndo->OpenBlock("InsertKeyAsGroup");
    // A key in a group makes the whole group time dependent, in the same undo step.
    for (size_t i = 0; i < mVCParam.size(); ++i) {
        if (mVCParam[i].IsTimeDepend())
            continue;
        const wxString strMemberTag = strTag + "::" + mVCParam[i].GetStrName();
        TextHost_cls::PushAndRedo(strMemberTag + "::TimeDepend=0", strMemberTag + "::TimeDepend=1");
    }
    for (size_t i = 0; i < mVCParam.size(); ++i)
        mVCParam[i].InsertKeyCommand(x, strTag + "::" + mVCParam[i].GetStrName(), type, ease, true);
    if (GpCUndo)
        GpCUndo->CloseBlock("InsertKeyAsGroup");
}

void ParamGroup_cls::DeleteKeyCommand(double x, wxString strTag) {
    NormalizeTag(strTag, nullptr);
    if (GpCUndo)
        GpCUndo->OpenBlock("DeleteKeyAsGroup");
    for (size_t i = 0; i < mVCParam.size(); ++i)
        if (mVCParam[i].IsKeyExist(x))
            mVCParam[i].DeleteKeyCommand(x, strTag + "::" + mVCParam[i].GetStrName(), true);
    if (GpCUndo)
        GpCUndo->CloseBlock("DeleteKeyAsGroup");
}

bool ParamGroup_cls::ChangeKeyTypeByModKey(wxString strTag, double x, int type, double) {
    NormalizeTag(strTag, nullptr);
    bool bChanged = false;
    if (GpCUndo)
        GpCUndo->OpenBlock("ChangeKeyTypeGroup");
    for (size_t i = 0; i < mVCParam.size(); ++i) {
        const int k = mVCParam[i].GetKeyIndex(x);
        if (k >= 0 && mVCParam[i].ChangeKeyType(strTag + "::" + mVCParam[i].GetStrName(), k, type))
            bChanged = true;
    }
    if (GpCUndo)
        GpCUndo->CloseBlock("ChangeKeyTypeGroup");
    return bChanged;
}

void ParamGroup_cls::DeleteSelectedTLKeyCommand(wxString strTag) {
    NormalizeTag(strTag, nullptr);
    for (size_t i = 0; i < mVCParam.size(); ++i)
        mVCParam[i].DeleteSelectedTLKeyCommand(strTag + "::" + mVCParam[i].GetStrName());
}

void ParamGroup_cls::MoveSelectedTLKeyCommand(double dx, double dy, wxString strTag) {
    NormalizeTag(strTag, nullptr);
    for (size_t i = 0; i < mVCParam.size(); ++i)
        mVCParam[i].MoveSelectedTLKeyCommand(dx, dy, strTag + "::" + mVCParam[i].GetStrName());
}

void ParamGroup_cls::SetSelectedTLKeyTypeCommand(wxString strTag, int type, double ease) {
    NormalizeTag(strTag, nullptr);
    for (size_t i = 0; i < mVCParam.size(); ++i)
        mVCParam[i].SetSelectedTLKeyTypeCommand(strTag + "::" + mVCParam[i].GetStrName(), type, ease);
}

void ParamGroup_cls::RescaleParametersCommand(double factor, wxString strTag) {
    NormalizeTag(strTag, nullptr);
    for (size_t i = 0; i < mVCParam.size(); ++i)
        mVCParam[i].RescaleCommand(factor, strTag + "::" + mVCParam[i].GetStrName());
}

// ---- host functions -------------------------------------------------------------------------

int ParamGroup_cls::l_This_GetValueAt(lua_State* pL) {
    lua_getglobal(pL, "ParamGroup");
    ParamGroup_cls* pGroup = static_cast<ParamGroup_cls*>(lua_touserdata(pL, -1));
    lua_pop(pL, 1);
    if (!pGroup)
        return 0;
    double nt = 0.0;
    const char* pText = lua_tolstring(pL, 1, nullptr);
    if (pText)
        wxString::FromUTF8(pText).ToCDouble(&nt);
    std::vector<double> values = pGroup->GetVInterpolatedValue(nt, true, pGroup, false);
    if (!lua_checkstack(pL, static_cast<int>(values.size())))
        return 0;
    for (double value : values)
        lua_pushnumber(pL, value);
    return static_cast<int>(values.size());
}

int ParamGroup_cls::l_This_GetKeyNum(lua_State* pL) {
    lua_getglobal(pL, "ParamGroup");
    ParamGroup_cls* pGroup = static_cast<ParamGroup_cls*>(lua_touserdata(pL, -1));
    lua_pop(pL, 1);
    if (!pGroup)
        return 0;
    const lua_Integer index = static_cast<lua_Integer>(lua_tonumberx(pL, 1, nullptr));
    if (index < 0 || index >= static_cast<lua_Integer>(pGroup->mVCParam.size()))
        return 0;
    lua_pushinteger(pL, pGroup->mVCParam[index].GetKeyNum());
    return 1;
}

luaL_Reg* ParamGroup_cls::GetThisTable() {
    return gThisTable;
}

void ParamGroup_cls::SetExpressionDataTable(luaL_Reg* pTable) {
    mspDataTable = pTable;
}
