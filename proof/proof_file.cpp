#include "proof/proof_file.h"

#include "proof/grey_png.h"
#include "proof/proof_picture.h"

std::optional<std::string> WriteProofImage(FILE* file, const WrittenFont& font, const ProofLines& lines,
                                           unsigned exportHeight, const RotationList& rotations)
{
    const ProofLayout layout = LayOutProof(font, lines, exportHeight, rotations);
    const int64_t width = layout.PictureWidth(), height = layout.PictureHeight();
    if (width > kProofMaxSide || height > kProofMaxSide || width * height > kProofMaxPixels)
        return "The proof image would be " + std::to_string(width) + " x " + std::to_string(height) +
               " pixels, too large (at most " + std::to_string(kProofMaxSide) + " a side and " +
               std::to_string(kProofMaxPixels) + " in all) !";
    if (!WriteGreyPng(file, DrawProof(font, lines, layout)))
        return kProofWriteFailedMessage;
    return std::nullopt;
}
