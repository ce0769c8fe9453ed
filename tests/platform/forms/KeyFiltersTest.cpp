#include "platform/forms/KeyFilters.h"

#include "support/ScriptedDesk.h"

#include <gtest/gtest.h>

namespace {

/// The characters of `typed` that pass, each tested on the same text.
template <class Filter>
QString Passing(const QString& typed, Filter filter)
{
    QString passed;
    for (const QChar character : typed) {
        int code = character.unicode();
        EXPECT_EQ(filter(code), code) << "the result is the code left behind";
        if (code != 0)
            passed += QChar(code);
    }
    return passed;
}

const QString EveryKey = QStringLiteral("/0123456789:.,-+ aé€\r\b");

} // namespace

using namespace forms;

TEST(KeyFilters, DigitsAlsoAcceptsBlankEnterAndBackspace)
{
    EXPECT_EQ(Passing(EveryKey, KeyFilterDigits), "0123456789 \r\b");
}

TEST(KeyFilters, DecimalTurnsTheFirstCommaIntoAPointAndAcceptsMinusAnywhere)
{
    const auto onto = [](const QString& text) { return [text](int& code) { return KeyFilterDecimal(text, code); }; };
    EXPECT_EQ(Passing(EveryKey, onto("12")), "0123456789..- \r\b");
    EXPECT_EQ(Passing(EveryKey, onto("12.5")), "0123456789- \r\b");
    EXPECT_EQ(Passing("-,.", onto("1-2")), "-..");
}

TEST(KeyFilters, DateAcceptsKeysByLengthAndBeepsOtherwise)
{
    const struct {
        const char* text;
        QString passing;
    } table[] = {
        {"", "0123\b"},
        {"3", "0123456789\b"},
        {"17", EveryKey},
        {"17/", "01\b"},
        {"17/0", "0123456789\b"},
        {"17/06", "0123456789\b"},
        {"         ", "0123456789\b"}, // the raw length counts
        {"17/06/200", "0123456789\b"},
        {"17/06/2008", EveryKey},
        {"17/06/2008 ", EveryKey},
    };
    for (const auto& line : table) {
        ScriptedDesk desk;
        const QString text = line.text;
        EXPECT_EQ(Passing(EveryKey, [&](int& code) { return KeyFilterDate(text, code); }), line.passing) << line.text;
        EXPECT_EQ(desk.BeepCount(), EveryKey.size() - line.passing.size()) << line.text;
    }
}

TEST(DateText, AppendsASlashAfterDayAndMonth)
{
    const auto slashed = [](QString text) {
        EXPECT_EQ(DateAutoSlash(text), text);
        return text;
    };
    EXPECT_EQ(slashed("17"), "17/");
    EXPECT_EQ(slashed(" 17 "), " 17 /");
    EXPECT_EQ(slashed("17/06"), "17/06/");
    for (const char* unchanged : {"", "1", "17/", "17/06/2", "17/06/2008"})
        EXPECT_EQ(slashed(unchanged), unchanged);
}

TEST(DateText, BeepsOnceForEachFailedTest)
{
    const struct {
        const char* text;
        int beeps;
    } table[] = {
        {"17/06/2008", 0}, {"31/12/2004", 0}, {"12-05-2004", 0}, {"29/02/2004", 0},
        {"29/02/1900", 0}, {"29/02/2100", 0}, // every fourth year, without the century rule
        {"31/02/2004", 1}, {"30/02/2004", 1}, {"29/02/2003", 1}, {"31/04/2004", 1},
        {"30/04/2004", 0}, {"32/01/2004", 2}, // two failures: above 31, and past the end of the month
        {"00/01/2000", 1}, {"15/00/2000", 1}, {"15/13/2000", 1}, {"15/01/1899", 1},
        {"15/01/9999", 0}, {"15/01/200", 2}, // "/200" isn't a year, and the text is too short
        {"3a/02/2004", 1},                   // days of February are compared as text
        {"1/1/2004", 2},                     // the month is cut as "/2"
        {"", 4},           {"abc", 4},        {"99/99/0000", 3},
    };
    for (const auto& line : table) {
        ScriptedDesk desk;
        EXPECT_EQ(DateIsInvalid(line.text), line.beeps > 0 ? 1 : 0) << line.text;
        EXPECT_EQ(desk.BeepCount(), line.beeps) << line.text;
    }
}
