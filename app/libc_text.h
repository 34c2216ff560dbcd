#pragma once

#include <wx/string.h>

#include <string>

// Texts cross between the toolkit and the C library / FreeType in the multibyte encoding
// of the current C locale (wxConvLibc). A text the locale cannot represent becomes empty.
std::string ToLibcText(const wxString& text);
wxString FromLibcText(const char* text);
