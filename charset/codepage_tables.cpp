#include "charset/codepage_tables.h"
#include "charset/codepage_reader.h"

#include <algorithm>

CodepageRead ReadCodepageFromTables(const std::string& name)
{
    using namespace codepage_tables;
    CodepageRead read;
    const std::string key = IconvCodeName(name);
    const NamedEncoding* end = kNames + kNameCount;
    const NamedEncoding* found = std::lower_bound(
        kNames, end, key, [](const NamedEncoding& entry, const std::string& k) { return k.compare(entry.name) > 0; });
    if (found == end || key != found->name)
        return read;
    if (found->table < 0) {
        read.outcome = CodepageRead::Outcome::MultiByte;
        return read;
    }
    read.outcome = CodepageRead::Outcome::Found;
    for (size_t byte = 0; byte < 256; ++byte) {
        const uint16_t character = kTables[found->table][byte];
        read.characters[byte] = character == kNone ? kNoCharacter : character;
    }
    return read;
}
