#include "export/files/export_files.h"

#include "export/ds/font_header.h"
#include "export/ds/font_source.h"
#include "export/files/output_writer.h"
#include "export/packed/packed_render.h"
#include "export/packed/packed_source.h"

OutputFile* ExportFiles::OpenAll()
{
    for (OutputFile* file : {&source, &header, extra}) {
        if (file != nullptr && !file->Open())
            return file;
    }
    return nullptr;
}

OutputFile* ExportFiles::WriteFont(const std::vector<FTFont*>& fonts, const std::string& baseName,
                                   const ExportCharacters& characters, const ExportOptions& options,
                                   const ExportListeners& listeners)
{
    if (!source.IsOpen() && !source.Open())
        return &source;
    {
        OutputWriter out(source);
        if (options.format == FontFormat::Packed) {
            const PackedFont font = RenderPackedFont(fonts, characters, options, listeners);
            for (ExportListener* listener : listeners)
                listener->FontPacked(font);
            WritePackedFontSource(out, baseName, font);
        } else {
            WriteFontSource(out, fonts, baseName, characters, options, listeners);
        }
        if (!out.Flush())
            return &source;
    }
    // The header is opened (and so emptied) while the source is still open: on ext4,
    // truncating a file right after closing a large one waits for the journal to
    // commit that file's data, which made the export up to a third slower. Should
    // the source's close then fail, the header is left empty and the export fails.
    const bool headerOpen = header.IsOpen() || header.Open();
    if (!source.Close())
        return &source;
    if (!headerOpen)
        return &header;
    {
        OutputWriter out(header);
        if (options.format == FontFormat::Packed)
            WritePackedFontHeader(out, baseName);
        else
            WriteFontHeader(out, baseName, options.rotations);
        out.Flush();
    }
    return header.Close() ? nullptr : &header;
}

OutputFile* ExportFiles::Commit()
{
    // The header first: its bytes follow from the name alone, so it is the right one for
    // the earlier source too, should the source's commit then fail.
    for (OutputFile* file : {&header, &source, extra}) {
        if (file != nullptr && !file->Commit())
            return file;
    }
    return nullptr;
}
