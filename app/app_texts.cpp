#include "app/app_texts.h"

wxString g_appTitle;
wxString g_aboutText;
