#pragma once

// The program's name and version (header only, so the exporter needs no GUI code), one definition for the desktop window's title and the
// command-line exporter's --version. The title is the format filled with the version.
#define VELTRANE_APP_NAME "Veltrane Bitmap Font Generator"
#define VELTRANE_APP_VERSION "v1.00"

inline constexpr const char* kAppTitleFormat = VELTRANE_APP_NAME " %s";
inline constexpr const char* kAppVersion = VELTRANE_APP_VERSION;
inline constexpr const char* kAppTitle = VELTRANE_APP_NAME " " VELTRANE_APP_VERSION;
