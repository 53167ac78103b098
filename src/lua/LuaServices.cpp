#include "LuaServices.h"

#include "ClassProvider_cls.h"
#include "LuaMiniCalc_cls.h"

void RegisterLuaServices() {
    ClassProvider_cls::SetServiceMaker(
        SVC_LuaMinicalc, [] { GpCLuaMinicalc = new LuaMiniCalc_cls(); },
        [] {
            delete GpCLuaMinicalc;
            GpCLuaMinicalc = nullptr;
        });
}
