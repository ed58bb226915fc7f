#include "app/Printable.h"

#include <gtest/gtest.h>

namespace
{
TEST (PrintableTest, leavesTextAsItIs)
{
    for (const auto* text : { "", "a b.wav", "\xc3\xa4 \xe2\x99\xaa \xf0\x9f\x8e\xb5", "C:\\x1b", "'~ & $HOME'" })
        EXPECT_EQ (printable (text), text);
}

TEST (PrintableTest, showsWhatSteersATerminalAsItsBytes)
{
    EXPECT_EQ (printable ("a\x1b[31mb"), "a\\x1b[31mb");
    EXPECT_EQ (printable ("a\nb\tc\rd\x7f"), "a\\x0ab\\x09c\\x0dd\\x7f");
    EXPECT_EQ (printable (std::string_view ("a\0b", 3)), "a\\x00b");

    // The second set of control characters, as terminals read it; and letters written backwards.
    EXPECT_EQ (printable ("\xc2\x9b"
                          "31m"),
               "\\xc2\\x9b31m");
    EXPECT_EQ (printable ("\xe2\x80\xaegpj.exe"), "\\xe2\\x80\\xaegpj.exe");
    EXPECT_EQ (printable ("\xc2\xa0"), "\xc2\xa0");
}

TEST (PrintableTest, showsWhatIsNoTextAsItsBytes)
{
    EXPECT_EQ (printable ("\xe4.wav"), "\\xe4.wav");
    EXPECT_EQ (printable ("a\xc3"), "a\\xc3");
    EXPECT_EQ (printable ("\xc0\x9b"), "\\xc0\\x9b") << "an escape in a longer form than it has";
    EXPECT_EQ (printable ("\xed\xa0\x80"), "\\xed\\xa0\\x80") << "half a character";
    EXPECT_EQ (printable ("\xff\xc3\xa4"), "\\xff\xc3\xa4");
    EXPECT_EQ (printable ("\xf8\x88\x80\x80\x80"), "\\xf8\\x88\\x80\\x80\\x80");
}
} // namespace
