#include "platform/basic/Dates.h"
#include "support/Printing.h"

#include <gtest/gtest.h>

using namespace basic;

TEST(DateValue, ReadsDayFirstOrYearFirst)
{
    const struct {
        const char* text;
        QDate date;
    } rows[] = {
        {"25/03/2004", {2004, 3, 25}},   {"5/3/2004", {2004, 3, 5}},    {"2004/3/5", {2004, 3, 5}},
        {" 12-05-2004 ", {2004, 5, 12}}, {"12 05 2004", {2004, 5, 12}}, {"29/02/2000", {2000, 2, 29}},
        {"29/02/2100", {2100, 3, 1}},    {"29/02/1900", {1900, 3, 1}},  {"31/12/2004", {2004, 12, 31}},
        {"31/04/2004", {2004, 5, 1}},    {"01/02/29", {2029, 2, 1}},    {"01/02/30", {1930, 2, 1}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(DateValue(row.text), row.date) << row.text;

    for (const char* text : {"", " ", "..../.../...", "12/05", "1/2/3/4", "00/01/2000", "32/01/2000", "15/13/2000",
                             "15/00/2000", "12 mai 2004", "2004/3/", "15/01/20045", "99/99/9999", "2004/02/0"})
        EXPECT_EQ(ErrorOf([&] { DateValue(text); }), Error::TypeMismatch) << text;
}

TEST(Dates, CountAndName)
{
    EXPECT_EQ(DateText({987, 1, 2}), "02/01/0987");
    EXPECT_EQ(AddDays({2008, 2, 28}, 1), QDate(2008, 2, 29));
    EXPECT_EQ(ErrorOf([] { AddDays({9999, 12, 31}, 1); }), Error::Overflow);
    EXPECT_EQ(DaysBetween({2008, 3, 1}, {2008, 2, 28}), -2);
    EXPECT_EQ(Weekday({2024, 6, 16}), 1); // a Sunday
    EXPECT_EQ(Weekday({2024, 6, 15}), 7);
    EXPECT_EQ(ErrorOf([] { Weekday({}); }), Error::TypeMismatch);
}

TEST(QueryDate, CutsWithoutValidation)
{
    EXPECT_EQ(QueryDate("25/03/2004"), "03/25/2004");
    EXPECT_EQ(QueryDate("29/02/2100"), "02/29/2100");
    EXPECT_EQ(QueryDate("5/3/2004"), "/2/5//2004");
    EXPECT_EQ(QueryDate(""), "//");
}

TEST(DateToQueryText, SplitsDigitsIntoGroups)
{
    EXPECT_EQ(DateToQueryText(""), "..../.../...");
    EXPECT_EQ(DateToQueryText("  "), "..../.../...");
    EXPECT_EQ(DateToQueryText("12/05/2004"), "2004/05/12");
    EXPECT_EQ(DateToQueryText("5/3/2004"), "2004/3/5");
    EXPECT_EQ(DateToQueryText("12/05/2004/7"), "2004/05/12");
    EXPECT_EQ(DateToQueryText("12//2004"), "2004//12");
    EXPECT_EQ(DateToQueryText("12052004"), "//12052004");
}
