#pragma once

#include "proof/grey_image.h"

#include <cstdio>

// Writes `image` to `file` as an 8-bit greyscale PNG with libpng, compressed for speed
// rather than size. False when libpng fails; the caller closes the file and checks that.
bool WriteGreyPng(FILE* file, const GreyImage& image);
