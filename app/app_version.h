#pragma once

// The program's name and version: one definition for the desktop window's title and the
// command-line exporter's --version. Header only, so the exporter links no GUI code.
#define VELTRANE_APP_NAME "Veltrane Bitmap Font Generator"
#define VELTRANE_APP_VERSION "v1.00"

inline constexpr const char* kAppTitleFormat = VELTRANE_APP_NAME " %s";
inline constexpr const char* kAppVersion = VELTRANE_APP_VERSION;
inline constexpr const char* kAppTitle = VELTRANE_APP_NAME " " VELTRANE_APP_VERSION;
