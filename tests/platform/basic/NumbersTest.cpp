#include "platform/basic/Numbers.h"
#include "support/Printing.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

using namespace basic;

TEST(Val, ReadsTheLeadingNumberAndSkipsBlanks)
{
    const struct {
        const char* text;
        double number;
    } rows[] = {
        {"", 0},
        {".", 0},
        {"-", 0},
        {"+", 0},
        {"+-5", 0},
        {"--5", 0},
        {"abc", 0},
        {"&H1F", 0},
        {"inf", 0},
        {"nan", 0},
        {"-infinity", 0},
        {"e5", 0},
        {"12 000.50", 12000.5},
        {" -  1 234.50", -1234.5},
        {"1,5", 1},
        {"1.2.3", 1.2},
        {"5-3", 5},
        {".5", 0.5},
        {"-.5", -0.5},
        {"7.", 7},
        {"+7", 7},
        {"1/", 1},
        {"08", 8},
        {"150 DA", 150},
        {"1e3", 1000},
        {"1E3", 1000},
        {"2d2", 200},
        {"1 e 3", 1000},
        {"1e", 1},
        {"1e+", 1},
        {"1e-400", 0},
        {"12\t3", 123},
        {"٣", 0},
        {"1"
         "\xC2\xA0"
         "5",
         1},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Val(QString::fromUtf8(row.text)), row.number) << row.text;
    EXPECT_EQ(ErrorOf([] { Val("1e400"); }), Error::Overflow);
}

TEST(PlainText, WritesAtMostFifteenDigits)
{
    const struct {
        double number;
        const char* text;
    } rows[] = {
        {0, "0"},
        {-0.0, "0"},
        {150, "150"},
        {0.5, "0.5"},
        {-2.25, "-2.25"},
        {0.1 + 0.2, "0.3"},
        {1.0 / 3, "0.333333333333333"},
        {123456.78, "123456.78"},
        {100.004 + 50.004, "150.008"},
        {1e14, "100000000000000"},
        {999999999999999.0, "999999999999999"},
        {1e15, "1E+15"},
        {1e20, "1E+20"},
        {1234567890123456.0, "1.23456789012346E+15"},
        {0.0001, "0.0001"},
        {0.00001, "1E-05"},
        {1.5e300, "1.5E+300"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(PlainText(row.number), QString(row.text));
    EXPECT_EQ(Str(7), " 7");
    EXPECT_EQ(Str(0), " 0");
    EXPECT_EQ(Str(-7), "-7");
    EXPECT_EQ(ErrorOf([] { PlainText(std::numeric_limits<double>::infinity()); }), Error::Overflow);
}

TEST(Format, FillsTheMaskFromTheDecimalText)
{
    const struct {
        double number;
        const char* mask;
        const char* text;
    } rows[] = {
        {1234.5, "# ### ##0.00", " 1 234.50"},
        {12.5, "### ###.00", " 12.50"},
        {0.5, "### ###.00", " .50"},
        {0, "# ### ##0.00", "  0.00"},
        {100, "# ### ##0.00", "  100.00"},
        {1234567.891, "# ### ##0.00", "1 234 567.89"},
        {123456789.5, "# ### ##0.00", "123 456 789.50"},
        {1234567.5, "### ###.00", "1234 567.50"},
        {999999.995, "### ###.00", "1000 000.00"},
        {9.995, "0.00", "10.00"},
        {2.675, "0.00", "2.68"},
        {1.005, "0.00", "1.01"},
        {-2.675, "0.00", "-2.68"},
        {0.145, "0.00", "0.15"},
        {0.004, "0.00", "0.00"},
        {-0.004, "0.00", "0.00"},
        {-0.005, "0.00", "-0.01"},
        {-1234.5, "# ### ##0.00", "- 1 234.50"},
        {-12.5, "### ###.00", "- 12.50"},
        {0.5, "### ###", " 1"},
        {0.49, "### ###", " "},
        {1500, "### ### ###", " 1 500"},
        {1500000, "### ### ###", "1 500 000"},
        {7, "00", "07"},
        {5, "0.##", "5."},
        {5.1, "0.##", "5.1"},
        {1e17, "### ###.00", "100000000000000 000.00"},
        {1e-20, "0.00", "0.00"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Format(row.number, row.mask), QString(row.text)) << row.number << " under " << row.mask;
}

TEST(RoundToInt, RoundsHalfToEven)
{
    EXPECT_EQ(RoundToInt(0.5), 0);
    EXPECT_EQ(RoundToInt(1.5), 2);
    EXPECT_EQ(RoundToInt(2.5), 2);
    EXPECT_EQ(RoundToInt(-2.5), -2);
    EXPECT_EQ(RoundToInt(2147483647.5 - 0.1), 2147483647);
    EXPECT_EQ(ErrorOf([] { RoundToInt(2147483647.5); }), Error::Overflow);
    EXPECT_EQ(ErrorOf([] { RoundToInt(-2147483649.0); }), Error::Overflow);
    EXPECT_EQ(ErrorOf([] { RoundToInt(std::nan("")); }), Error::Overflow);
}

TEST(FixedText, PadsOrTruncates)
{
    EXPECT_EQ(FixedText("Élodie", 8), "Élodie  ");
    EXPECT_EQ(FixedText("L'Hôpital d'O'Brien", 9), "L'Hôpital");
}
