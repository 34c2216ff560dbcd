// The program's entry point: the toolkit's main creates the GuiApplication and runs it.
#include "app/gui_application.h"

wxIMPLEMENT_APP(GuiApplication);
