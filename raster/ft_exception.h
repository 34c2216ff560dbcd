#pragma once

#include <exception>

// The tool's only error type: a fixed lower-case message from the FreeType wrapper.
class FTException : public std::exception
{
public:
    explicit FTException(const char* text);
    FTException(const FTException& other);
    FTException& operator=(const FTException&) = delete;
    ~FTException() override;

    const char* what() const noexcept override;

private:
    char* message;
};
