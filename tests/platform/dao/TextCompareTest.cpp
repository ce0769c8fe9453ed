#include "platform/dao/TextCompare.h"

#include <gtest/gtest.h>

namespace dao {
namespace {

TEST(LikePattern, MeetsTexts)
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
        {"aaaaaaaaaaaaaaaaaaaaaaaaab", "*a*a*a*a*a*a*a*c", false},
    };
    for (const auto& each : cases)
        EXPECT_EQ(IsLike(each.text, each.pattern), each.meets) << each.text << " like " << each.pattern;
}

TEST(TextOrder, PutsAccentsBesideTheirLetter)
{
    const char* const ascending[] = {"", " ", "a", "ab", "eve", "Ève", "evelyne", "ÉVRARD 1", "zidane", "أحمد", "بشير"};
    for (std::size_t i = 0; i < std::size(ascending); ++i) {
        for (std::size_t k = 0; k < std::size(ascending); ++k) {
            const int order = CompareTexts(ascending[i], ascending[k]);
            EXPECT_EQ(order < 0, i < k) << ascending[i] << " / " << ascending[k];
            EXPECT_EQ(order == 0, i == k) << ascending[i] << " / " << ascending[k];
        }
    }
    EXPECT_EQ(CompareTexts("ÉVRARD", "évrard"), 0);
    EXPECT_NE(CompareTexts("\xC3", "\xC3\xA9"), 0); // cut in the middle of a letter
}

} // namespace
} // namespace dao
