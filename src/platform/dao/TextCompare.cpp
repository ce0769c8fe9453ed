#include "platform/dao/TextCompare.h"

#include "platform/dao/Sqlite.h"

#include <QChar>
#include <QString>
#include <sqlite3.h>

#include <array>
#include <vector>

namespace dao {
namespace {

/// The characters of a UTF-8 text, one after the other. A broken sequence gives its bytes one by one.
class Characters {
public:
    explicit Characters(std::string_view utf8) : next(utf8.data()), end(next + utf8.size()) {}
    bool AtEnd() const { return next == end; }

    char32_t Take()
    {
        const auto first = static_cast<unsigned char>(*next++);
        if (first < 0xC0)
            return first;
        const int following = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : 1;
        if (end - next < following)
            return first;
        char32_t character = first & (0x3Fu >> following);
        for (int i = 0; i < following; ++i)
            character = (character << 6) | (static_cast<unsigned char>(*next++) & 0x3Fu);
        return character;
    }

private:
    const char* next;
    const char* end;
};

char32_t WithoutAccent(char32_t character)
{
    while (true) {
        const QString parts = QChar::decomposition(character);
        const auto kind = QChar::decompositionTag(character);
        if (parts.isEmpty() || kind != QChar::Canonical)
            return character;
        character = parts.toUcs4().first();
    }
}

/// A letter as it counts in a comparison: first its place in the alphabet, then what tells it from its neighbours.
struct Letter {
    char32_t base = 0;
    char32_t folded = 0;
};

Letter MakeLetter(char32_t character)
{
    const char32_t folded = QChar::toCaseFolded(character);
    return {WithoutAccent(folded), folded};
}

Letter LetterOf(char32_t character)
{
    // Latin letters with their accents, Greek, Cyrillic, Hebrew and Arabic lie below this bound.
    static const std::array<Letter, 0x700> known = [] {
        std::array<Letter, 0x700> letters;
        for (char32_t each = 0; each < letters.size(); ++each)
            letters[each] = MakeLetter(each);
        return letters;
    }();
    return character < known.size() ? known[character] : MakeLetter(character);
}

std::u32string Folded(std::string_view utf8)
{
    std::u32string folded;
    folded.reserve(utf8.size());
    for (Characters characters(utf8); !characters.AtEnd();)
        folded += LetterOf(characters.Take()).folded;
    return folded;
}

/// One place of a pattern.
struct Place {
    enum class Sort { Run, Any, Digit, Letter, OneOf, NoneOf };
    Sort sort = Sort::Any;
    char32_t letter = 0;
    std::vector<std::pair<char32_t, char32_t>> ranges;

    bool Takes(char32_t character) const
    {
        switch (sort) {
        case Sort::Digit:
            return character >= U'0' && character <= U'9';
        case Sort::Letter:
            return character == letter;
        case Sort::OneOf:
            return Lists(character);
        case Sort::NoneOf:
            return !Lists(character);
        default:
            return true;
        }
    }

    bool Lists(char32_t character) const
    {
        for (const auto& [from, to] : ranges) {
            if (character >= from && character <= to)
                return true;
        }
        return false;
    }
};

Place ListPlace(std::u32string_view listed)
{
    Place place;
    place.sort = Place::Sort::OneOf;
    if (listed.size() > 1 && listed.front() == U'!') {
        place.sort = Place::Sort::NoneOf;
        listed.remove_prefix(1);
    }
    for (std::size_t i = 0; i < listed.size(); ++i) {
        const bool range = i + 2 < listed.size() && listed[i + 1] == U'-';
        place.ranges.emplace_back(listed[i], listed[range ? i + 2 : i]);
        i += range ? 2 : 0;
    }
    return place;
}

class Pattern {
public:
    explicit Pattern(std::string_view utf8)
    {
        const std::u32string folded = Folded(utf8);
        for (std::size_t i = 0; i < folded.size(); ++i) {
            const std::size_t closing = folded[i] == U'[' ? folded.find(U']', i + 1) : folded.npos;
            if (closing == folded.npos) {
                places.push_back(SinglePlace(folded[i]));
                continue;
            }
            if (closing > i + 1) // an empty list stands for nothing
                places.push_back(ListPlace(std::u32string_view(folded).substr(i + 1, closing - i - 1)));
            i = closing;
        }
    }

    bool Meets(std::string_view utf8) const
    {
        // On a mismatch the last run takes one character more; earlier runs never need to.
        Characters text(utf8);
        Characters afterRun = text;
        std::size_t at = 0;
        std::size_t lastRun = places.size();
        while (true) {
            if (at < places.size() && places[at].sort == Place::Sort::Run) {
                lastRun = at++;
                afterRun = text;
                continue;
            }
            if (text.AtEnd())
                return at == places.size();
            if (at < places.size() && places[at].Takes(LetterOf(text.Take()).folded)) {
                ++at;
                continue;
            }
            if (lastRun == places.size() || afterRun.AtEnd())
                return false;
            afterRun.Take();
            text = afterRun;
            at = lastRun + 1;
        }
    }

private:
    static Place SinglePlace(char32_t character)
    {
        Place place;
        if (character == U'*') {
            place.sort = Place::Sort::Run;
        } else if (character == U'#') {
            place.sort = Place::Sort::Digit;
        } else if (character != U'?') {
            place.sort = Place::Sort::Letter;
            place.letter = character;
        }
        return place;
    }

    std::vector<Place> places;
};

int Collate(void*, int leftLength, const void* left, int rightLength, const void* right)
{
    return CompareTexts({static_cast<const char*>(left), std::size_t(leftLength)},
                        {static_cast<const char*>(right), std::size_t(rightLength)});
}

std::string_view TextArgument(sqlite3_value* value)
{
    const auto* const text = reinterpret_cast<const char*>(sqlite3_value_text(value));
    return text != nullptr ? std::string_view(text, std::size_t(sqlite3_value_bytes(value))) : std::string_view();
}

/// like(pattern, text), as the store calls it for "text like pattern".
void Like(sqlite3_context* context, int, sqlite3_value** arguments)
{
    if (sqlite3_value_type(arguments[0]) == SQLITE_NULL || sqlite3_value_type(arguments[1]) == SQLITE_NULL)
        return;
    auto* pattern = static_cast<Pattern*>(sqlite3_get_auxdata(context, 0));
    if (pattern == nullptr) {
        auto made = std::make_unique<Pattern>(TextArgument(arguments[0]));
        sqlite3_result_int(context, made->Meets(TextArgument(arguments[1])) ? 1 : 0);
        // Kept for the statement's next rows, as long as the pattern is one for all of them.
        sqlite3_set_auxdata(context, 0, made.release(),
                            [](void* kept) { std::unique_ptr<Pattern>(static_cast<Pattern*>(kept)); });
        return;
    }
    sqlite3_result_int(context, pattern->Meets(TextArgument(arguments[1])) ? 1 : 0);
}

} // namespace

int CompareTexts(std::string_view left, std::string_view right)
{
    Characters leftRest(left);
    Characters rightRest(right);
    int accents = 0;
    while (!leftRest.AtEnd() && !rightRest.AtEnd()) {
        const Letter leftLetter = LetterOf(leftRest.Take());
        const Letter rightLetter = LetterOf(rightRest.Take());
        if (leftLetter.base != rightLetter.base)
            return leftLetter.base < rightLetter.base ? -1 : 1;
        if (accents == 0 && leftLetter.folded != rightLetter.folded)
            accents = leftLetter.folded < rightLetter.folded ? -1 : 1;
    }
    if (leftRest.AtEnd() != rightRest.AtEnd())
        return leftRest.AtEnd() ? -1 : 1;
    return accents;
}

bool IsLike(std::string_view text, std::string_view pattern)
{
    return Pattern(pattern).Meets(text);
}

void TeachTextComparison(sqlite3* database)
{
    Check(database, sqlite3_create_collation_v2(database, textCollation, SQLITE_UTF8, nullptr, Collate, nullptr));
    constexpr int traits = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;
    Check(database, sqlite3_create_function(database, "like", 2, traits, nullptr, Like, nullptr, nullptr));
}

} // namespace dao
