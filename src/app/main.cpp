#include "app/MyApp.h"

wxIMPLEMENT_APP(MyApp);
