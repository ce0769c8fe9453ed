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

TEST(KeyFilters, DecimalTurnsTheFirstCommaIntoAPointAndAcceptsMinusAnywhere)
{
    EXPECT_EQ(Passing(EveryKey, KeyFilterDigits), "0123456789 \r\b");
    const auto onto = [](const QString& text) { return [text](int& code) { return KeyFilterDecimal(text, code); }; };
    EXPECT_EQ(Passing(EveryKey, onto("1-2")), "0123456789..- \r\b");
    EXPECT_EQ(Passing(EveryKey, onto("12.5")), "0123456789- \r\b");
}

TEST(KeyFilters, DateAcceptsKeysByLengthAndBeepsOtherwise)
{
    const std::pair<QString, QStringList> table[] = {
        // the raw length counts
        {"0123\b", {""}},
        {"01\b", {"17/"}},
        {"0123456789\b", {"3", "17/0", "17/06", "         ", "17/06/200"}},
        {EveryKey, {"17", "17/06/2008", "17/06/2008 "}},
    };
    for (const auto& [passing, texts] : table) {
        for (const QString& text : texts) {
            ScriptedDesk desk;
            EXPECT_EQ(Passing(EveryKey, [&](int& code) { return KeyFilterDate(text, code); }), passing)
                << text.toStdString();
            EXPECT_EQ(desk.BeepCount(), EveryKey.size() - passing.size()) << text.toStdString();
        }
    }
}

TEST(DateText, BeepsOnceForEachFailedTest)
{
    const std::pair<int, QStringList> table[] = {
        // Every fourth year has a 29th of February, without the century rule.
        {0, {"31/12/2004", "12-05-2004", "29/02/2004", "29/02/1900", "29/02/2100", "30/04/2004", "15/01/9999"}},
        {1,
         {"30/02/2004", "29/02/2003", "31/04/2004", "31/06/2004", "31/09/2004", "31/11/2004", "00/01/2000",
          "15/00/2000", "15/13/2000", "15/01/1899", "3a/02/2004"}}, // days of February are compared as text
        // Past 31 and past the month's end; "/200" is no year and too short; the month is cut as "/2".
        {2, {"32/01/2004", "15/01/200", "1/1/2004"}},
        {3, {"99/99/0000"}},
        {4, {"", "abc"}},
    };
    for (const auto& [beeps, texts] : table) {
        for (const QString& text : texts) {
            ScriptedDesk desk;
            EXPECT_EQ(DateIsInvalid(text), beeps > 0 ? 1 : 0) << text.toStdString();
            EXPECT_EQ(desk.BeepCount(), beeps) << text.toStdString();
        }
    }
}
