// One named, animatable property of up to four channels (Position x, y, z; a colour R, G, B, A;
// a size) with the key operations that act on all channels together and a Lua expression that
// can replace or post-process the interpolated values. Property code reads values through
// GetVInterpolatedValue, never straight from a channel.
// Main thread only; a worker evaluates its own copy (the copy starts with Lua closed).
#pragma once

#include "ConfListContainer_cls.h"
#include "GetPC_cls.h"
#include "LuaBase_cls.h"
#include "Parameter_cls.h"
#include "StrName_cls.h"

#include <wx/arrstr.h>
#include <wx/string.h>

#include <cstdint>
#include <istream>
#include <vector>

class ParamGroup_cls : public virtual LuaBase_cls,
                       public ConfListContainer_cls,
                       public GetPC_cls,
                       public virtual StrName_cls {
public:
    // One channel per name, each with one key at 0. The list tag is the group's name.
    ParamGroup_cls(const wxString& strName, const wxArrayString& astrMemberNames);
    // Deep copy of items and channels; the Lua state of the copy starts closed and compiles
    // on its first evaluation.
    ParamGroup_cls(const ParamGroup_cls& src);
    ParamGroup_cls& operator=(const ParamGroup_cls& src);
    ~ParamGroup_cls() override;

    // ---- values ----
    // The value of each channel at t, then the expression when bExpression is on and UseExpr=
    // is set. pCaller and bFlag pass through to the expression call. Empty when the
    // expression has re-entered itself (a reference loop): callers must cope with that.
    std::vector<double> GetVInterpolatedValue(double t, bool bExpression, ParamGroup_cls* pCaller,
                                              bool bFlag);
    std::vector<float> GetVInterpolatedValue(float t, bool bExpression, ParamGroup_cls* pCaller, bool bFlag);
    // Re-compiles when Expression= changed since the state was opened, then calls it.
    std::vector<double> GetVExpression(double t, std::vector<double> values, ParamGroup_cls* pCaller,
                                       bool bFlag);
    // The call of the user's expression; the input values when no state is open.
    std::vector<double> CallLuaExpression(std::vector<double> values, double t);
    void OpenLua(ParamGroup_cls* pCaller);
    void CloseLua();
    // The member values in one line, "%g" numbers joined by a blank.
    wxString GetStrValues(double t, bool bExpression);
    wxString GetStrExpressionMessage() const;
    // The member names joined by ",".
    wxString GetStrMemberListCSV() const;
    Parameter_cls* GetPCParameter(const wxString& strName);

    void PrecalcBegin();
    void PrecalcEnd();
    bool IsTimeDepend() const;
    bool IsLinked() const;
    bool IsUseExpr() const;
    // The user's bookmark on the group, shown in the timeline's mark column.
    bool IsKilroy() const { return mCKilroy.GetBodyBOOL(); }
    bool IsSelectedKeyExist() const;
    bool IsKeyExistAll(double x) const;
    // The first key's value of members 0 to 3, as far as they exist.
    void SetInitValue(double a, double b = 0.0, double c = 0.0, double d = 0.0);
    // num rows of x and one value per member; the group must have four members.
    void SetInitKeyframes(int num, double (*table)[5]);
    void DeselectKey(wxString strTag);
    void SelectKey(double x, bool bSelect, bool bAdd, double tolerance);
    void SelectKeyAll();
    void Flip();
    // Exchanges the keys of the first and the third member (red and blue of a colour).
    void SwapRGB();

    // ---- text ----
    void Serialize(wxString& strOut);
    // One line of a ReadParamGroup block, the head popped; false when the line is not taken.
    bool ReadStrLine(std::wistream& stream, const wxString& strHead, const wxString& strRest);
    bool ReadStrOneLiner(const wxString& strHead, const wxString& strRest);
    // True when the tag ends at a member of this group: the member is removed, so the tag
    // ends at the group.
    bool CheckCalledAsLink(wxString& strTag);
    // Appends "::" and the group's name unless the tag already ends with it.
    void CheckTag(wxString& strTag) const;
    // The list's counters and each channel's: changes whenever anything was read or set.
    wxString GetStrProcCounter() const;

    // ---- commands ----
    void SetNewKeyCommand(double value, double x, wxString strTag, int type, double ease);
    void InsertKeyCommand(double x, wxString strTag, int type, double ease);
    void DeleteKeyCommand(double x, wxString strTag);
    // ease is not used: the channel passes -1.0 here.
    bool ChangeKeyTypeByModKey(wxString strTag, double x, int type, double ease);
    void DeleteSelectedTLKeyCommand(wxString strTag);
    void MoveSelectedTLKeyCommand(double dx, double dy, wxString strTag);
    void SetSelectedTLKeyTypeCommand(wxString strTag, int type, double ease);
    void RescaleParametersCommand(double factor, wxString strTag);

    // ---- host functions of expressions ----
    // The table "This": GetValueAt(nt) gives the group's own values at another time,
    // GetKeyNum(member index) the key count of a member. The group is the global "ParamGroup".
    static int l_This_GetValueAt(lua_State* pL);
    static int l_This_GetKeyNum(lua_State* pL);
    static luaL_Reg* GetThisTable();
    // The table "Data" comes from the interpreter of the scene layer, which installs it at
    // start. Until then expressions see an empty "Data". Not owned; must end in a null entry.
    static void SetExpressionDataTable(luaL_Reg* pTable);

    ConfItemBOOL_cls mCLinked;
    ConfItemBOOL_cls mCShy;
    ConfItemBOOL_cls mCUseExpr;
    ConfItemSTR_cls mCExpression;
    // Written only when set, so the files of unmarked groups stay as they were.
    ConfItemBOOL_cls mCKilroy;
    int32_t mRecursionDepth = 0;
    bool mbColorCurve = false; // moves of keys snap to the colour grid instead of frames
    wxString mStrCompiledExpression;
    std::vector<Parameter_cls> mVCParam;

private:
    // Puts the items in the list and points the channels at this group.
    void RegisterItems();
    void FixMembers();
    // CheckCalledAsLink and CheckTag: the tag then ends at the group.
    bool NormalizeTag(wxString& strTag, wxString* pStrMember);
    static luaL_Reg* mspDataTable;
};
