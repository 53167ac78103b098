// The entry point of the window program: every layer registers its services through the
// composition root, then the toolkit runs the application object, which builds the core.
#include "MyApp.h"
#include "ServiceRegistry.h"

#include <wx/init.h>

wxIMPLEMENT_APP_NO_MAIN(MyApp);

int main(int argc, char** argv) {
    RegisterServices();
    return wxEntry(argc, argv);
}
