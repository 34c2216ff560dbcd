#pragma once

#include "export/files/output_file.h"

// An output file written where it is, as fopen with mode "w" does: opening creates the
// target or empties it, and what is written is there at once.
class InPlaceFile : public OutputFile
{
public:
    using OutputFile::OutputFile;

    bool Open() override;
    // The bytes are in place already.
    bool Commit() override { return true; }
};
