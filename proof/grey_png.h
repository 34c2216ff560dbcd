#pragma once

#include "proof/grey_image.h"

#include <string>

// Writes `image` to `path` as an 8-bit greyscale PNG with libpng, compressed for speed
// rather than size. False when the file cannot be created or written completely.
bool WriteGreyPng(const std::string& path, const GreyImage& image);
