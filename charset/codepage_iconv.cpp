#include "charset/codepage_reader.h"

#include <iconv.h>

#include <cerrno>

namespace {

// UTF-32 in a fixed byte order, so that characters can be read back without a BOM.
constexpr const char* kUtf32 = "UTF-32LE";

// One iconv conversion descriptor; closed with the object.
class Converter
{
public:
    Converter(const char* to, const char* from) : cd(iconv_open(to, from)) {}
    ~Converter()
    {
        if (IsOpen())
            iconv_close(cd);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    bool IsOpen() const { return cd != reinterpret_cast<iconv_t>(-1); }

    // Converts all of `input` from the initial state; the error number when iconv stops
    // early (EILSEQ: not a valid sequence, EINVAL: cut off), 0 when all of it went.
    int Convert(const std::string& input, std::string& output)
    {
        iconv(cd, nullptr, nullptr, nullptr, nullptr);
        output.clear();
        char* in = const_cast<char*>(input.data());
        size_t inLeft = input.size();
        char chunk[256];
        while (true) {
            char* out = chunk;
            size_t outLeft = sizeof chunk;
            size_t result = iconv(cd, &in, &inLeft, &out, &outLeft);
            // CP1255 and CP1258 hold back a letter that a combining mark may follow.
            if (result != static_cast<size_t>(-1))
                result = iconv(cd, nullptr, nullptr, &out, &outLeft);
            const int error = result == static_cast<size_t>(-1) ? errno : 0;
            output.append(chunk, sizeof chunk - outLeft);
            if (error != E2BIG)
                return error;
        }
    }

private:
    iconv_t cd;
};

std::u32string FromUtf32(const std::string& bytes)
{
    std::u32string characters;
    for (size_t i = 0; i + 3 < bytes.size(); i += 4) {
        characters.push_back(static_cast<char32_t>(static_cast<uint8_t>(bytes[i])) |
                             static_cast<char32_t>(static_cast<uint8_t>(bytes[i + 1])) << 8 |
                             static_cast<char32_t>(static_cast<uint8_t>(bytes[i + 2])) << 16 |
                             static_cast<char32_t>(static_cast<uint8_t>(bytes[i + 3])) << 24);
    }
    return characters;
}

} // namespace

CodepageRead ReadCodepageWithIconv(const std::string& name)
{
    CodepageRead read;
    if (IconvCodeName(name) == "//")
        return read;
    Converter decoder(kUtf32, name.c_str());
    if (!decoder.IsOpen())
        return read;
    std::string decoded;
    for (int byte = 0; byte < 256; ++byte) {
        const int failure = decoder.Convert(std::string(1, static_cast<char>(byte)), decoded);
        const std::u32string characters = FromUtf32(decoded);
        if (failure == EINVAL)
            return {CodepageRead::Outcome::MultiByte, {}};
        read.characters[byte] = failure == 0 && characters.size() == 1 ? characters[0] : kNoCharacter;
    }
    read.outcome = CodepageRead::Outcome::Found;
    return read;
}
