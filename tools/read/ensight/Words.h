#ifndef READ_ENSIGHT_WORDS_H
#define READ_ENSIGHT_WORDS_H

#include <algorithm>
#include <string>
#include <vector>

namespace EnSight {

using Words = std::vector<std::string>;

/// What stands between blanks; blanks within double quotes belong to a word.
inline Words wordsOf(std::string const& line)
{
    Words words;
    bool isInWord = false;
    bool isQuoted = false;
    for (char const letter : line) {
        bool const isBlank = letter == ' ' || (letter >= '\t' && letter <= '\r');
        if (isBlank && !isQuoted) {
            isInWord = false;
            continue;
        }
        if (!isInWord)
            words.emplace_back();
        isInWord = true;
        if (letter == '"')
            isQuoted = !isQuoted;
        else
            words.back() += letter;
    }
    return words;
}

inline bool contains(Words const& words, std::string const& word)
{
    return std::find(words.begin(), words.end(), word) != words.end();
}

} // namespace EnSight

#endif
