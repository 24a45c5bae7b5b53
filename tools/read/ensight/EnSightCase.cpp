#include "EnSightCase.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstdlib>
#include <fstream>
#include <optional>
#include <sstream>

namespace VtkRead {

namespace {

using Words = std::vector<std::string>;

Words wordsOf(std::string const& text)
{
    Words words;
    std::istringstream stream(text);
    for (std::string word; stream >> word;)
        words.push_back(word);
    return words;
}

std::optional<std::uint64_t> numberIn(std::string const& word)
{
    std::uint64_t number = 0;
    auto const [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
    if (error != std::errc() || end != word.data() + word.size())
        return std::nullopt;
    return number;
}

/// As VTK's reader holds it.
float timeIn(std::string const& word)
{
    return std::strtof(word.c_str(), nullptr);
}

std::uint64_t firstNumber(Words const& words)
{
    return words.empty() ? 0 : numberIn(words.front()).value_or(0);
}

bool contains(Words const& words, std::string const& word)
{
    return std::find(words.begin(), words.end(), word) != words.end();
}

/// 0 of what has no values for each node or element.
std::uint64_t componentsOf(Words const& key)
{
    constexpr std::uint64_t vector = 3;
    constexpr std::uint64_t symmetric = 6;
    constexpr std::uint64_t tensor = 9;
    if (!contains(key, "per") || contains(key, "case"))
        return 0;
    if (contains(key, "tensor"))
        return contains(key, "asym") ? tensor : symmetric;
    if (contains(key, "vector"))
        return vector;
    return contains(key, "scalar") ? 1 : 0;
}

/// The words before the name are numbers of sets.
Words setsBefore(Words const& values, std::size_t end)
{
    Words sets(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(end));
    constexpr std::size_t kindsOfSets = 2;
    sets.resize(std::min(sets.size(), kindsOfSets));
    return sets;
}

template <typename Set>
Set const* setOf(std::vector<Set> const& sets, std::string const& id)
{
    auto const set =
        std::find_if(sets.begin(), sets.end(), [&](Set const& each) { return each.id == id; });
    return set == sets.end() ? nullptr : &*set;
}

} // namespace

EnSightCase::EnSightCase(std::filesystem::path const& path) : folder_(path.parent_path())
{
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);)
        addLine(line);
    for (Entry const& entry : entries_)
        readEntry(entry);
    for (Entry const& entry : entries_)
        resolve(entry);
}

bool EnSightCase::hasSeveralSteps() const
{
    return std::any_of(timeSets_.begin(), timeSets_.end(),
                       [](TimeSet const& set) { return set.steps > 1; });
}

void EnSightCase::addLine(std::string const& line)
{
    Words const words = wordsOf(line);
    auto const colon = line.find(':');
    if (words.empty() || words.front().front() == '#')
        return;
    if (colon != std::string::npos)
        entries_.push_back(
            {section_, wordsOf(line.substr(0, colon)), wordsOf(line.substr(colon + 1))});
    else if (std::isalpha(static_cast<unsigned char>(words.front().front())) != 0)
        section_ = words.front();
    else if (!entries_.empty())
        entries_.back().values.insert(entries_.back().values.end(), words.begin(), words.end());
}

void EnSightCase::readEntry(Entry const& entry)
{
    if (entry.section == "FORMAT" && entry.key == Words{"type"})
        isGold_ = contains(entry.values, "gold");
    else if (entry.section == "TIME")
        readTime(entry);
    else if (entry.section == "FILE")
        readFileSet(entry);
}

void EnSightCase::readTime(Entry const& entry)
{
    if (entry.key == Words{"time", "set"} && !entry.values.empty())
        timeSets_.push_back({entry.values.front(), 1, 0, 1, {}, {}});
    if (timeSets_.empty())
        return;
    TimeSet& set = timeSets_.back();
    if (entry.key == Words{"number", "of", "steps"})
        set.steps = firstNumber(entry.values);
    else if (entry.key == Words{"filename", "start", "number"})
        set.first = firstNumber(entry.values);
    else if (entry.key == Words{"filename", "increment"})
        set.increment = firstNumber(entry.values);
    else if (entry.key == Words{"filename", "numbers"})
        for (std::string const& word : entry.values)
            set.numbers.push_back(numberIn(word).value_or(0));
    else if (entry.key == Words{"time", "values"})
        for (std::string const& word : entry.values)
            set.times.push_back(timeIn(word));
}

void EnSightCase::readFileSet(Entry const& entry)
{
    if (entry.key == Words{"file", "set"} && !entry.values.empty())
        fileSets_.push_back({entry.values.front(), {}, {}});
    if (fileSets_.empty())
        return;
    if (entry.key == Words{"filename", "index"})
        fileSets_.back().indices.push_back(firstNumber(entry.values));
    else if (entry.key == Words{"number", "of", "steps"})
        fileSets_.back().steps.push_back(firstNumber(entry.values));
}

void EnSightCase::resolve(Entry const& entry)
{
    Words values = entry.values;
    if (entry.section == "VARIABLE")
        return contains(entry.key, "constant") ? resolveConstant(entry) : resolveVariable(entry);
    if (entry.section != "GEOMETRY")
        return;
    auto const changes = std::find(values.begin(), values.end(), "change_coords_only");
    bool const isFirstWhole = changes != values.end();
    values.erase(changes, values.end());
    if (values.empty())
        return;
    if (entry.key == Words{"model"})
        meshes_ = filesOf(values.back(), setsBefore(values, values.size() - 1));
    if (isFirstWhole && !meshes_.empty())
        meshes_.resize(1);
    if (entry.key == Words{"measured"})
        measured_ = filesOf(values.back(), setsBefore(values, values.size() - 1));
}

void EnSightCase::resolveVariable(Entry const& entry)
{
    std::uint64_t const components = componentsOf(entry.key);
    // A complex variable has two files, then a frequency.
    bool const isComplex = contains(entry.key, "complex");
    std::size_t const behindFiles = isComplex ? 1 : 0;
    std::size_t const fileCount = behindFiles + 1;
    if (components == 0 || entry.values.size() < 1 + fileCount + behindFiles)
        return;
    std::size_t const firstFile = entry.values.size() - behindFiles - fileCount;
    Words const sets = setsBefore(entry.values, firstFile - 1);
    bool const isPerElement = contains(entry.key, "element");
    bool const isMeasured = contains(entry.key, "measured");
    for (std::size_t i = 0; i < fileCount; ++i)
        variables_.push_back({entry.values[firstFile - 1], components, isPerElement, isMeasured,
                              fileSetOf(sets) != nullptr,
                              filesOf(entry.values[firstFile + i], sets), isComplex, sets});
}

/// Its name may be behind the number of a time set.
void EnSightCase::resolveConstant(Entry const& entry)
{
    auto const name = std::find_if(entry.values.begin(), entry.values.end(),
                                   [](std::string const& word) { return !numberIn(word); });
    if (name != entry.values.end())
        constants_.push_back(*name);
}

bool EnSightCase::hasValuesAt(std::string const& name, double time) const
{
    auto const variable = std::find_if(variables_.begin(), variables_.end(),
                                       [&](Variable const& each) { return each.name == name; });
    TimeSet const* const set = variable == variables_.end() ? nullptr : timeSetOf(variable->sets);
    return set == nullptr || set->times.empty() ||
           std::find(set->times.begin(), set->times.end(), static_cast<float>(time)) !=
               set->times.end();
}

EnSightCase::TimeSet const* EnSightCase::timeSetOf(Words const& sets) const
{
    if (!sets.empty())
        return setOf(timeSets_, sets[0]);
    return timeSets_.size() == 1 ? &timeSets_.front() : nullptr;
}

EnSightCase::FileSet const* EnSightCase::fileSetOf(Words const& sets) const
{
    return sets.size() > 1 ? setOf(fileSets_, sets[1]) : nullptr;
}

std::vector<EnSightCase::DataFile> EnSightCase::filesOf(std::string const& pattern,
                                                        Words const& sets) const
{
    if (FileSet const* const set = fileSetOf(sets))
        return filesOf(pattern, *set);
    if (pattern.find('*') == std::string::npos)
        return {{pathOf(pattern, 0), 1}};
    TimeSet const* const set = timeSetOf(sets);
    return set == nullptr ? std::vector<DataFile>() : filesOf(pattern, *set);
}

std::vector<EnSightCase::DataFile> EnSightCase::filesOf(std::string const& pattern,
                                                        TimeSet const& set) const
{
    std::vector<DataFile> files;
    std::uint64_t const count =
        set.numbers.empty() ? set.steps : std::min<std::uint64_t>(set.steps, set.numbers.size());
    for (std::uint64_t i = 0; i < count; ++i) {
        std::uint64_t const number =
            set.numbers.empty() ? set.first + i * set.increment : set.numbers[i];
        std::filesystem::path const path = pathOf(pattern, number);
        // However many steps the case claims to have.
        bool const isAnother = i == 0 || !set.numbers.empty() || number > set.first;
        if (!isAnother || !std::filesystem::exists(path))
            break;
        files.push_back({path, 1});
    }
    return files;
}

std::vector<EnSightCase::DataFile> EnSightCase::filesOf(std::string const& pattern,
                                                        FileSet const& set) const
{
    std::vector<DataFile> files;
    for (std::size_t i = 0; i < set.steps.size(); ++i)
        files.push_back(
            {pathOf(pattern, i < set.indices.size() ? set.indices[i] : 0), set.steps[i]});
    return files;
}

std::filesystem::path EnSightCase::pathOf(std::string pattern, std::uint64_t number) const
{
    pattern.erase(std::remove(pattern.begin(), pattern.end(), '"'), pattern.end());
    auto const first = pattern.find('*');
    if (first == std::string::npos)
        return folder_ / pattern;
    std::size_t const width = pattern.find_last_of('*') + 1 - first;
    std::string digits = std::to_string(number);
    digits.insert(0, width - std::min(width, digits.size()), '0');
    return folder_ / pattern.replace(first, width, digits);
}

} // namespace VtkRead
