#include "LuaServices.h"

#include "LuaMiniCalc_cls.h"
#include "OwnedService_cls.h"

void RegisterLuaServices() {
    OwnedService_cls::Register(SVC_LuaMinicalc, GpCLuaMinicalc);
}
