#pragma once

#include "export/export_options.h"

#include <string>
#include <vector>

// How the path chosen for the source file names the pair: in the desktop's save dialog
// (always the ds format) and as the command line's OUTPUT in either format. The desktop
// takes any name; the command line only one that ends in an ending of its format with a
// name before it, and then names the pair as the desktop does.
struct OutputNameCase
{
    std::string path;
    FontFormat format;
    std::string directory, baseName, sanitized;
    bool commandLineTakes;
};

// clang-format off
inline const std::vector<OutputNameCase> kOutputNameCases = {
    {"/tmp/out/My Font-2.CPP", FontFormat::Ds, "/tmp/out/", "My Font-2", "My_Font_2", true},
    {"font.cpp", FontFormat::Ds, "./", "font", "font", true},
    {"/font.cpp", FontFormat::Ds, "/", "font", "font", true},
    // One ending only, however many there are.
    {"Font.cpp.cpp", FontFormat::Ds, "./", "Font.cpp", "Font_cpp", true},
    {"Font.CPP.cPp", FontFormat::Ds, "./", "Font.CPP", "Font_CPP", true},
    {"Font.c", FontFormat::Ds, "./", "Font.c", "Font_c", false},
    {"Font.h", FontFormat::Ds, "./", "Font.h", "Font_h", false},
    {".CpP", FontFormat::Ds, "./", "", "", false},
    {"cpp", FontFormat::Ds, "./", "cpp", "cpp", false},
    {"/tmp/dir.cpp/caf\xC3\xA9", FontFormat::Ds, "/tmp/dir.cpp/", "caf\xC3\xA9", "caf__", false},
    {"8x8_ok\t\x7F", FontFormat::Ds, "./", "8x8_ok\t\x7F", "8x8_ok__", false},
    // A packed font's source is a .c file, but OUTPUT may name a .cpp one as well.
    {"Font.c", FontFormat::Packed, "./", "Font", "Font", true},
    {"Font.C", FontFormat::Packed, "./", "Font", "Font", true},
    {"Font.Cpp", FontFormat::Packed, "./", "Font", "Font", true},
    {"Font.cpp.c", FontFormat::Packed, "./", "Font.cpp", "Font_cpp", true},
    {"Font.c.CPP", FontFormat::Packed, "./", "Font.c", "Font_c", true},
    {"Font.c.c", FontFormat::Packed, "./", "Font.c", "Font_c", true},
    {"Font.cc", FontFormat::Packed, "./", "Font.cc", "Font_cc", false},
    {".c", FontFormat::Packed, "./", "", "", false},
};
// clang-format on
