#include "app/libc_text.h"

#include <wx/strconv.h>

std::string ToLibcText(const wxString& text)
{
    const wxCharBuffer narrow = text.mb_str(wxConvLibc);
    if (narrow.data() == nullptr)
        return {};
    return std::string(narrow.data(), narrow.length());
}

wxString FromLibcText(const char* text)
{
    return wxString(text, wxConvLibc);
}
