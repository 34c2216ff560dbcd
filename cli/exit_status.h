#pragma once

// Exit statuses of veltrane-fontgen-export, as build scripts see them.
inline constexpr int kExitSuccess = 0; // both files written (also --help and --version)
inline constexpr int kExitFailure = 1; // the export failed; one message on standard error
inline constexpr int kExitUsage = 2;   // the command line could not be read; why, on standard error
