#pragma once

#include "charset/export_characters.h"
#include "export/export_listener.h"
#include "export/export_options.h"
#include "proof/proof_text.h"
#include "proof/written_font.h"
#include "raster/ft_font.h"

#include <sys/types.h>

#include <optional>
#include <string>

// The sizes of the two files as written; -1 when a stream could not tell (a pipe).
struct FontPairSizes
{
    off_t source = -1;
    off_t header = -1;
};

// A proof image to write with the pair, drawn from what the export wrote (see
// WriteProofImage).
struct ProofOutput
{
    std::string path;
    const WrittenFont& font;
    const ProofLines& lines;
    unsigned exportHeight;
};

// Writes the bitmap font source `path` + ".cpp", its header `path` + ".h" and the proof,
// if any, through SafeOutput: they replace the earlier files only once all are complete,
// so a failure, whatever it is, leaves those as they were. `baseName` must be sanitized
// and the faces set to the export size (see WriteFontSource, which takes the fonts).
// Returns kWriteFailedMessage when a file cannot be created, written, closed or renamed
// into place, the proof's messages, and sets `why` to the file and the system's reason
// ("cannot write \"out/Font.h\": No space left on device"); throws FTException when a
// glyph cannot be rendered.
std::optional<std::string> WriteExportFiles(const std::vector<FTFont*>& fonts, const std::string& path,
                                            const std::string& baseName, const ExportCharacters& characters,
                                            const ExportOptions& options, const ExportListeners& listeners,
                                            const ProofOutput* proof, FontPairSizes& sizes, std::string& why);
