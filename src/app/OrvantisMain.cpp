// The entry point of the window program.
#include "MyApp.h"

wxIMPLEMENT_APP(MyApp);
