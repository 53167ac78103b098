// A core with the time services made in a temporary application directory, and a receiver in
// the scene's slot of the command language that routes "Test::<attribute>::<group>::..." and
// "Test::<group>::..." lines to the attributes and groups a test registers, and offers every
// other line to the attributes as a scene object would.
#pragma once

#include "AttributeClone_cls.h"
#include "Attribute_cls.h"
#include "Main_cls.h"
#include "ParamGroup_cls.h"
#include "Parser_cls.h"
#include "TimeCtrl_cls.h"
#include "UndoManager_cls.h"

#include "ServicesFixture.h"
#include "SinkCapture.h"

#include <map>
#include <sstream>
#include <vector>

inline KeyFrame_cls Key(double x, double value, long type = 1, double ease = 1.0) {
    KeyFrame_cls key;
    key.mX = x;
    key.mValue = value;
    key.mType = type;
    key.mEaseFactor = ease;
    return key;
}

class ParamFixture : public ServicesFixture<ServiceLayer_enum::Time> {
protected:
    void SetUp() override {
        ServicesFixture::SetUp();
        ASSERT_NE(GpCTimeCtrl, nullptr);
        ASSERT_NE(GpCUndo, nullptr);
        mpMain->SetReceiver(
            RECV_SCENE_OBJ_CTRL,
            [this](std::wistream& stream, const wxString& strHead, const wxString& strRest) {
                return Route(stream, strHead, strRest);
            },
            [this](wxString& strOut) {
                for (Attribute_cls* p : mVPAttributes)
                    p->Serialize(strOut);
            });
    }
    // "SceneObjCtrl::Obj::<object>::<attribute>::..." and "FilterCtrl::<attribute>::..." are
    // the addresses the Syncronize family builds; they reach the same attributes.
    bool Route(std::wistream& stream, const wxString& strHead, const wxString& strRest) {
        wxString strLine = strRest;
        if (strHead == "SceneObjCtrl") {
            if (Parser_cls::PopStrItemFromStrLine(strLine, "::") != "Obj")
                return false;
            Parser_cls::PopStrItemFromStrLine(strLine, "::"); // the object
        } else if (strHead != "Test" && strHead != "FilterCtrl") {
            for (Attribute_cls* p : mVPAttributes)
                if (p->ReadStrLine(stream, strHead, strRest))
                    return true;
            return false;
        }
        wxString strName = Parser_cls::PopStrItemFromStrLine(strLine, "::");
        ParamGroup_cls* pGroup = nullptr;
        if (mMapGroups.count(strName)) {
            pGroup = mMapGroups[strName];
        } else {
            for (Attribute_cls* p : mVPAttributes)
                if (p->GetStrName() == strName)
                    pGroup = p->GetPCParamGroup(Parser_cls::PopStrItemFromStrLine(strLine, "::"));
        }
        if (!pGroup)
            return false;
        wxString strNext = Parser_cls::PopStrItemFromStrLine(strLine, "::");
        return pGroup->ReadStrOneLiner(strNext, strLine);
    }

    void SetClock(int frameMax, int frame, int sub) {
        GpCTimeCtrl->mCFrameMax.SetBodyFromData(static_cast<long long>(frameMax));
        GpCTimeCtrl->mCFrameCurrent.SetBodyFromData(static_cast<long long>(frame));
        GpCTimeCtrl->mCSubFrameCurrent.SetBodyFromData(static_cast<long long>(sub));
    }

    // Undo and redo as far as the history goes from its current point.
    void UndoAll(int to) {
        while (GpCUndo->GetCurrent() > to)
            GpCUndo->Undo();
    }
    void RedoAll() {
        while (GpCUndo->GetCurrent() < GpCUndo->GetCount())
            GpCUndo->Redo();
    }

    static wxString Text(ParamGroup_cls& group) {
        wxString str;
        group.Serialize(str);
        return str;
    }
    static wxString Text(const Parameter_cls& param) {
        wxString str;
        param.Serialize(str);
        return str;
    }

    std::map<wxString, ParamGroup_cls*> mMapGroups; // not owned
    std::vector<Attribute_cls*> mVPAttributes;      // not owned
};
