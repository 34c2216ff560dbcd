#include "export/files/base_name.h"

#include <cctype>

void SanitizeBaseName(std::string& baseName)
{
    for (char& c : baseName) {
        if (!std::isalnum(static_cast<unsigned char>(c)) && c != '_')
            c = '_';
    }
}
