// Start-up adopts the user's LC_CTYPE, so non-ASCII texts reach the C library in the
// user's encoding (the harness runs the program in a UTF-8 locale).
#include "gui_test_support.h"

#include "app/libc_text.h"

#include <gtest/gtest.h>

namespace {

TEST(LibcTextTest, NonAsciiTextCrossesInTheUserEncoding)
{
    const char* const utf8 = "/tmp/Schrift \xc3\xa4\xe2\x82\xac.ttf";
    EXPECT_EQ(ToLibcText(wxString::FromUTF8(utf8)), utf8);
    EXPECT_EQ(FromLibcText(utf8), wxString::FromUTF8(utf8));
}

} // namespace
