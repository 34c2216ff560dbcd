#include "raster/ft_exception.h"

#include <cstring>

namespace {

char* CopyText(const char* text)
{
    char* copy = new char[std::strlen(text) + 1];
    std::strcpy(copy, text);
    return copy;
}

} // namespace

FTException::FTException(const char* text) : message(CopyText(text))
{
}

// Throwing may copy the exception object; each copy owns its own text.
FTException::FTException(const FTException& other) : std::exception(other), message(CopyText(other.message))
{
}

FTException::~FTException()
{
    delete[] message;
}

const char* FTException::what() const noexcept
{
    return message;
}
