// Texts reach the C library in the user's multibyte encoding, adopted at start-up.
#include "gui_test_support.h"

#include "app/libc_text.h"

#include <gtest/gtest.h>

#include <clocale>
#include <string>

namespace {

// The harness runs the program in a UTF-8 locale (gui_session.sh).
TEST(LibcTextTest, NonAsciiTextCrossesInTheUserEncoding)
{
    const wxString path = wxString::FromUTF8("/tmp/Schrift \xc3\xa4\xe2\x82\xac.ttf");
    EXPECT_EQ(ToLibcText(path), "/tmp/Schrift \xc3\xa4\xe2\x82\xac.ttf");
    EXPECT_EQ(FromLibcText("/tmp/Schrift \xc3\xa4\xe2\x82\xac.ttf"), path);
    EXPECT_EQ(ToLibcText(""), "");
}

TEST(LibcTextTest, TextTheLocaleCannotHoldBecomesEmpty)
{
    const std::string previous = std::setlocale(LC_CTYPE, nullptr);
    std::setlocale(LC_CTYPE, "C");
    EXPECT_EQ(ToLibcText(wxString::FromUTF8("\xe2\x82\xac")), "");
    EXPECT_EQ(ToLibcText("plain ascii"), "plain ascii");
    std::setlocale(LC_CTYPE, previous.c_str());
}

} // namespace
