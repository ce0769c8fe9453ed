#include "platform/basic/Numbers.h"
#include "support/Printing.h"

#include <QStringList>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>

using namespace basic;

TEST(Val, ReadsTheLeadingNumberAndSkipsBlanks)
{
    const struct {
        double number;
        QStringList texts;
    } rows[] = {
        {0, {"", ".", "-", "+", "+-5", "--5", "abc", "&H1F", "inf", "nan", "-infinity", "e5", "1e-400", "٣"}},
        {1, {"1,5", "1/", "1e", "1e+", "1\u00A05"}},
        {1000, {"1e3", "1E3", "1 e 3"}},
        {7, {"7.", "+7"}},
    };
    for (const auto& [number, texts] : rows)
        for (const QString& text : texts)
            EXPECT_EQ(Val(text), number) << text.toStdString();
    const std::pair<const char*, double> others[] = {{"12 000.50", 12000.5},
                                                     {" -  1 234.50", -1234.5},
                                                     {"1.2.3", 1.2},
                                                     {"5-3", 5},
                                                     {".5", 0.5},
                                                     {"-.5", -0.5},
                                                     {"08", 8},
                                                     {"150 DA", 150},
                                                     {"2d2", 200},
                                                     {"12\t3", 123}};
    for (const auto& [text, number] : others)
        EXPECT_EQ(Val(text), number) << text;
    EXPECT_EQ(ErrorOf([] { Val("1e400"); }), Error::Overflow);
}

TEST(PlainText, WritesAtMostFifteenDigits)
{
    QStringList texts;
    for (const double number : {0.0, -0.0, 150.0, 0.5, -2.25, 0.1 + 0.2, 1.0 / 3, 123456.78, 100.004 + 50.004, 1e14,
                                999999999999999.0, 1e15, 1e20, 1234567890123456.0, 0.0001, 0.00001, 1.5e300})
        texts << PlainText(number);
    EXPECT_EQ(texts.join('|'),
              "0|0|150|0.5|-2.25|0.3|0.333333333333333|123456.78|150.008|100000000000000|999999999999999|1E+15|1E+20|"
              "1.23456789012346E+15|0.0001|1E-05|1.5E+300");
    EXPECT_EQ(Str(7) + Str(0) + Str(-7), " 7 0-7");
    EXPECT_EQ(ErrorOf([] { PlainText(std::numeric_limits<double>::infinity()); }), Error::Overflow);
}

TEST(Format, FillsTheMaskFromTheDecimalText)
{
    const auto texts = [](const char* mask, std::initializer_list<double> numbers) {
        QStringList formatted;
        for (const double number : numbers)
            formatted << Format(number, mask);
        return formatted.join('|');
    };
    EXPECT_EQ(texts("# ### ##0.00", {1234.5, 0, 100, 1234567.891, 123456789.5, -1234.5}),
              " 1 234.50|  0.00|  100.00|1 234 567.89|123 456 789.50|- 1 234.50");
    EXPECT_EQ(texts("### ###.00", {12.5, 0.5, 1234567.5, 999999.995, -12.5, 1e17}),
              " 12.50| .50|1234 567.50|1000 000.00|- 12.50|100000000000000 000.00");
    EXPECT_EQ(texts("0.00", {9.995, 2.675, 1.005, -2.675, 0.145, 0.004, -0.004, -0.005, 1e-20}),
              "10.00|2.68|1.01|-2.68|0.15|0.00|0.00|-0.01|0.00");
    EXPECT_EQ(texts("### ###", {0.5, 0.49}), " 1| ");
    EXPECT_EQ(texts("### ### ###", {1500, 1500000}), " 1 500|1 500 000");
    EXPECT_EQ(texts("00", {7}) + texts("0.##", {5, 5.1}), "075.|5.1");
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
