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
    using Pairs = std::initializer_list<std::pair<const char*, const char*>>;
    for (const auto& [text, pattern] : Pairs{{"", ""},
                                             {"", "*"},
                                             {"abc", "a*"},
                                             {"abc", "*c"},
                                             {"abc", "*b*"},
                                             {"abc", "a?c"},
                                             {"aXbXc", "a*x*c"},
                                             {"aab", "*ab"},
                                             {"ababac", "*abac"},
                                             {"ÉCOLE", "école"},
                                             {"ÉCOLE", "?cole"},
                                             {"œuvre", "ŒUVRE"},
                                             {"7b", "#b"},
                                             {"b", "[a-c]"},
                                             {"B", "[a-c]"},
                                             {"d", "[!a-c]"},
                                             {"!", "[!a-c]"},
                                             {"*", "[*]"},
                                             {"-", "[a-]"},
                                             {"ab", "a[]b"},
                                             {"[x", "[x"},
                                             {"!", "[!]"},
                                             {"مريم", "م*"},
                                             {"a.b", "a.b"},
                                             {"a\\^b", "a[\\]^b"},
                                             {"^", "[^]"},
                                             {"deux\nlignes", "deux*"},
                                             {"abab", "a*b"},
                                             {"abcabd", "*ab?"}})
        EXPECT_TRUE(IsLike(text, pattern)) << text << " like " << pattern;
    for (const auto& [text, pattern] : Pairs{{"a", ""},
                                             {"abc", "a?"},
                                             {"ababa", "*abac"},
                                             {"ecole", "école"},
                                             {"xb", "#b"},
                                             {"٣b", "#b"},
                                             {"d", "[a-c]"},
                                             {"b", "[!a-c]"},
                                             {"x", "[*]"},
                                             {"axb", "a.b"},
                                             {"b", "[c-a]"}})
        EXPECT_FALSE(IsLike(text, pattern)) << text << " like " << pattern;
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
