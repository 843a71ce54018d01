#include "support/numbers.h"

#include <string>

#include <gtest/gtest.h>

namespace {

// The longest digits there are, far beyond 64 bits.
const std::string NINES(200, '9');

}  // namespace

TEST(Numbers, AreScannedAsPeopleWriteThem) {
    struct Case {
        std::string Text;
        int Number;
        std::string Rest;
    };
    for (const Case& example : {
             Case{"12", 12, ""},
             {"12 13", 12, " 13"},
             {" \t\n\v\f\r+5x", 5, "x"},
             {"-0", 0, ""},
             {"2x", 2, "x"},
             {"1.5", 1, ".5"},
             {"3-4", 3, "-4"},
             // The prefix chooses the base.
             {"010", 8, ""},
             {"-017", -15, ""},
             {"08", 0, "8"},
             {"0x10", 16, ""},
             {"-0XfFg", -255, "g"},
             {"00x1", 0, "x1"},
             // A prefix alone is a zero and what follows it.
             {"0x", 0, "x"},
             {"0xg", 0, "xg"},
             {"-0X ", 0, "X "},
             // What does not fit becomes the nearest number that does.
             {"2147483647", INT_HIGHEST, ""},
             {"2147483648", INT_HIGHEST, ""},
             {"-2147483648", INT_LOWEST, ""},
             {"-2147483649", INT_LOWEST, ""},
             {"0xffffffff", INT_HIGHEST, ""},
             {"037777777777", INT_HIGHEST, ""},
             {"18446744073709551617", INT_HIGHEST, ""},
             {NINES + "z", INT_HIGHEST, "z"},
             {"-" + NINES, INT_LOWEST, ""},
         }) {
        std::string_view text = example.Text;
        EXPECT_EQ(ScanInt(text), example.Number) << example.Text;
        EXPECT_EQ(text, example.Rest) << example.Text;
        EXPECT_EQ(ReadInt(example.Text), example.Number) << example.Text;
    }
}

TEST(Numbers, OtherTextIsLeftAlone) {
    for (const std::string_view whole :
         {"", "  ", "+", "-", "- 5", "+-5", "x1", "= 11", ".5", "d3"}) {
        std::string_view text = whole;
        EXPECT_EQ(ScanInt(text), std::nullopt) << whole;
        EXPECT_EQ(text, whole);
    }
}
