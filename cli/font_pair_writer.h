#pragma once

#include "charset/export_characters.h"
#include "export/export_listener.h"
#include "export/export_options.h"
#include "raster/ft_font.h"

#include <sys/types.h>

#include <cstdio>
#include <functional>
#include <optional>
#include <string>

// The sizes of the two files as written; -1 when a stream could not tell (a pipe).
struct FontPairSizes {
    off_t source = -1;
    off_t header = -1;
};

// A file made from what the export wrote (a proof image), written after the pair and
// replacing its earlier self together with it.
struct CompanionFile {
    std::string path;
    std::string writeFailed; // the message when the file cannot be created or closed
    // Writes the file into the stream; the message of a failure, nothing otherwise.
    std::function<std::optional<std::string>(FILE*)> write;
};

// Writes the bitmap font source `path` + ".cpp", its header `path` + ".h" and the
// companion, if any, through SafeOutput: they replace the earlier files only once all are
// complete, so a failure, whatever it is, leaves those as they were. `baseName` must be
// sanitized and the face set to the export size (see WriteFontSource).
// Returns kWriteFailedMessage when a file of the pair cannot be created, written, closed or
// renamed into place, or the companion's messages, and sets `why` to the file and the
// system's reason ("cannot write \"out/Font.h\": No space left on device"); throws
// FTException when a glyph cannot be rendered.
std::optional<std::string> WriteFontPair(FTFont& font, const std::string& path, const std::string& baseName,
                                         const ExportCharacters& characters, const ExportOptions& options,
                                         const ExportListeners& listeners, FontPairSizes& sizes, std::string& why,
                                         const CompanionFile* companion = nullptr);
