#include "platform/store/TextCompare.h"

#include <QStringList>
#include <gtest/gtest.h>
#include <sqlite3.h>

namespace dao {
namespace {

/// What SQLite answers to a question with two texts, on a connection of the program.
bool IsTrue(const char* sql, const char* first, const char* second)
{
    sqlite3* database = nullptr;
    sqlite3_open(":memory:", &database);
    store::DefineTextComparison(database);
    sqlite3_stmt* question = nullptr;
    sqlite3_prepare_v2(database, sql, -1, &question, nullptr);
    sqlite3_bind_text(question, 1, first, -1, SQLITE_STATIC);
    sqlite3_bind_text(question, 2, second, -1, SQLITE_STATIC);
    EXPECT_EQ(sqlite3_step(question), SQLITE_ROW);
    const bool is = sqlite3_column_int(question, 0) != 0;
    sqlite3_finalize(question);
    sqlite3_close(database);
    return is;
}

bool IsLike(const char* text, const char* pattern)
{
    return IsTrue("select ? like ?", text, pattern);
}

TEST(LikePattern, Matches)
{
    const struct {
        const char* text;
        const char* pattern;
        bool meets;
    } cases[] = {
        {"", "", true},
        {"", "*", true},
        {"a", "", false},
        {"abc", "a*", true},
        {"abc", "*c", true},
        {"abc", "*b*", true},
        {"abc", "a?c", true},
        {"abc", "a?", false},
        {"aXbXc", "a*x*c", true},
        {"aab", "*ab", true},
        {"ababac", "*abac", true},
        {"ababa", "*abac", false},
        {"ÉCOLE", "école", true},
        {"ecole", "école", false},
        {"ÉCOLE", "?cole", true},
        {"œuvre", "ŒUVRE", true},
        {"7b", "#b", true},
        {"xb", "#b", false},
        {"٣b", "#b", false},
        {"b", "[a-c]", true},
        {"B", "[a-c]", true},
        {"d", "[a-c]", false},
        {"d", "[!a-c]", true},
        {"b", "[!a-c]", false},
        {"*", "[*]", true},
        {"x", "[*]", false},
        {"-", "[a-]", true},
        {"ab", "a[]b", true},
        {"[x", "[x", true},
        {"!", "[!]", true},
        {"مريم", "م*", true},
        {"a.b", "a.b", true},
        {"axb", "a.b", false},
        {"a\\^b", "a[\\]^b", true},
        {"^", "[^]", true},
        {"b", "[c-a]", false},
        {"deux\nlignes", "deux*", true},
        {"abab", "a*b", true},
        {"abcabd", "*ab?", true},
    };
    for (const auto& each : cases)
        EXPECT_EQ(IsLike(each.text, each.pattern), each.meets) << each.text << " like " << each.pattern;
    // As many "*" as a field can hold: backtracking would never end.
    EXPECT_FALSE(IsLike(std::string(2000, 'a').append("b").c_str(), "*a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*c"));
    EXPECT_TRUE(IsLike(std::string(2000, 'a').append("c").c_str(), "*a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*c"));
}

TEST(TextOrder, SortsAccentsNextToTheirLetter)
{
    const std::string lower = std::string("select ? < ? collate ") + store::TextCollation;
    const QStringList ascending = {"",    " ",       "a",        "AB",     "abc",  "eve",
                                   "Ève", "evelyne", "ÉVRARD 1", "zidane", "أحمد", "بشير"};
    for (qsizetype i = 0; i < ascending.size(); ++i) {
        for (qsizetype k = 0; k < ascending.size(); ++k) {
            const int order = store::CompareTexts(ascending[i], ascending[k]);
            EXPECT_EQ(order < 0, i < k) << ascending[i].toStdString() << " / " << ascending[k].toStdString();
            EXPECT_EQ(order == 0, i == k) << ascending[i].toStdString() << " / " << ascending[k].toStdString();
            EXPECT_EQ(IsTrue(lower.c_str(), qUtf8Printable(ascending[i]), qUtf8Printable(ascending[k])), i < k)
                << ascending[i].toStdString() << " / " << ascending[k].toStdString();
        }
    }
    EXPECT_EQ(store::CompareTexts(u"ÉVRARD", u"évrard"), 0);
    EXPECT_FALSE(IsTrue(lower.c_str(), "Benali", "BENALI") || IsTrue(lower.c_str(), "BENALI", "Benali"));
}

} // namespace
} // namespace dao
