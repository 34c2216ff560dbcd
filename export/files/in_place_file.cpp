#include "export/files/in_place_file.h"

#include <cerrno>

bool InPlaceFile::Open()
{
    FILE* opened = std::fopen(Target().c_str(), "w");
    if (opened == nullptr)
        return Fail("cannot write", Target(), errno);
    Adopt(opened);
    return true;
}
