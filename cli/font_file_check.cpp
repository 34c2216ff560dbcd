#include "cli/font_file_check.h"

#include "cli/export_report.h"

#include <ft2build.h>
#include FT_FREETYPE_H

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace {

// How many faces FreeType finds in the file (a negative index asks only that); 0 when it
// cannot read the file as a font at all.
long FaceCount(const std::string& path)
{
    FT_Library library = nullptr;
    if (FT_Init_FreeType(&library) != 0)
        return 0;
    FT_Face face = nullptr;
    long count = 0;
    if (FT_New_Face(library, path.c_str(), -1, &face) == 0) {
        count = face->num_faces;
        FT_Done_Face(face);
    }
    FT_Done_FreeType(library);
    return count;
}

std::string FaceRange(long count)
{
    if (count == 1)
        return "1 face, 0";
    return std::to_string(count) + " faces, 0 to " + std::to_string(count - 1);
}

} // namespace

std::string WhyFontCannotLoad(const std::string& path, long faceIndex)
{
    const std::string quoted = Quoted(path);
    struct stat status = {};
    if (stat(path.c_str(), &status) != 0)
        return quoted + ": " + std::strerror(errno);
    if (S_ISDIR(status.st_mode))
        return quoted + " is a directory";
    const int fd = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK); // a pipe must not hang the check
    if (fd < 0)
        return quoted + ": " + std::strerror(errno);
    close(fd);
    const long faces = FaceCount(path);
    if (faces <= 0)
        return quoted + " is not a font file FreeType can read";
    if (faceIndex >= faces)
        return quoted + " has no face " + std::to_string(faceIndex) + ": the file has " + FaceRange(faces);
    return quoted + " is not a font file FreeType can read (face " + std::to_string(faceIndex) + " is damaged)";
}
