#include "CaseFile.h"

#include <exchange/Error.h>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <fstream>
#include <functional>
#include <iterator>
#include <system_error>

namespace EnSight {

namespace {

using Exchange::Error;

template <typename Number>
std::optional<Number> numberIn(std::string const& word)
{
    Number number{};
    auto const [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
    if (error != std::errc() || end != word.data() + word.size())
        return std::nullopt;
    return number;
}

template <typename Number>
Number required(std::string const& word)
{
    auto const number = numberIn<Number>(word);
    if (!number)
        throw Error("The case has '" + word + "' where a number is to be.");
    return *number;
}

template <typename Number>
std::vector<Number> numbersIn(Words const& words)
{
    std::vector<Number> numbers;
    std::transform(words.begin(), words.end(), std::back_inserter(numbers), required<Number>);
    return numbers;
}

std::uint64_t firstNumber(Words const& words)
{
    return required<std::uint64_t>(words.empty() ? std::string() : words.front());
}

std::string joined(Words const& words)
{
    std::string text;
    for (std::string const& word : words)
        text += (text.empty() ? "" : " ") + word;
    return text;
}

/// 0 of what has no values for each node or element.
std::size_t componentsOf(Words const& key)
{
    constexpr std::size_t vector = 3;
    constexpr std::size_t symmetric = 6;
    constexpr std::size_t tensor = 9;
    bool const isKnown =
        contains(key, "per") && (contains(key, "node") || contains(key, "element"));
    if (!isKnown)
        return 0;
    if (contains(key, "tensor"))
        return contains(key, "asym") ? tensor : symmetric;
    if (contains(key, "vector"))
        return vector;
    return contains(key, "scalar") ? 1 : 0;
}

template <typename Set>
Set const* setOf(std::vector<Set> const& sets, std::string const& id)
{
    auto const set =
        std::find_if(sets.begin(), sets.end(), [&](Set const& each) { return each.id == id; });
    return set == sets.end() ? nullptr : &*set;
}

bool isNumbered(std::string const& pattern)
{
    return pattern.find('*') != std::string::npos;
}

} // namespace

CaseFile::CaseFile(std::filesystem::path const& path, Exchange::Report& report)
    : folder_(path.parent_path()), report_(report)
{
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);)
        addLine(line);
    auto const readAll = [this](std::string const& section, auto const& read) {
        for (Entry const& entry : entries_)
            if (entry.section == section)
                read(entry);
    };
    readAll("FORMAT", [this](Entry const& entry) { isGold_ |= contains(entry.values, "gold"); });
    readAll("TIME", [this](Entry const& entry) { readTime(entry); });
    readAll("FILE", [this](Entry const& entry) { readFileSet(entry); });
    finishTimes();
    readAll("GEOMETRY", [this](Entry const& entry) { readMesh(entry); });
    readAll("VARIABLE", [this](Entry const& entry) { readVariable(entry); });
    readAll("MATERIAL", [this](Entry const& entry) { leaveOut(entry); });
    if (!model_ && !measured_)
        throw Error("The case names no mesh.");
}

/// A line without a colon goes on with the values of the line before it, or begins a section.
void CaseFile::addLine(std::string const& line)
{
    Words const words = wordsOf(line);
    auto const colon = line.find(':');
    if (words.empty() || line.find_first_not_of(" \t") == line.find('#'))
        return;
    if (colon != std::string::npos)
        entries_.push_back(
            {section_, wordsOf(line.substr(0, colon)), wordsOf(line.substr(colon + 1))});
    else if (std::isalpha(static_cast<unsigned char>(words.front()[0])) != 0)
        section_ = words.front();
    else if (!entries_.empty())
        entries_.back().values.insert(entries_.back().values.end(), words.begin(), words.end());
}

void CaseFile::readTime(Entry const& entry)
{
    std::string const key = joined(entry.key);
    if (key == "time set" && !entry.values.empty())
        timeSets_.push_back({entry.values.front()});
    if (timeSets_.empty())
        return;
    TimeSet& set = timeSets_.back();
    if (key == "number of steps")
        set.stepCount = firstNumber(entry.values);
    else if (key == "filename start number")
        set.firstNumber = firstNumber(entry.values);
    else if (key == "filename increment")
        set.increment = firstNumber(entry.values);
    else if (key == "filename numbers")
        set.numbers = numbersIn<std::uint64_t>(entry.values);
    else if (key == "filename numbers file")
        set.numbers = numbersIn<std::uint64_t>(wordsOfFile(joined(entry.values)));
    else if (key == "time values")
        set.times = numbersIn<double>(entry.values);
    else if (key == "time values file")
        set.times = numbersIn<double>(wordsOfFile(joined(entry.values)));
}

void CaseFile::readFileSet(Entry const& entry)
{
    std::string const key = joined(entry.key);
    if (key == "file set" && !entry.values.empty())
        fileSets_.push_back({entry.values.front()});
    if (fileSets_.empty())
        return;
    if (key == "filename index")
        fileSets_.back().numbers.push_back(firstNumber(entry.values));
    else if (key == "number of steps")
        fileSets_.back().stepCounts.push_back(firstNumber(entry.values));
}

void CaseFile::finishTimes()
{
    for (TimeSet& set : timeSets_) {
        if (set.times.size() < set.stepCount)
            throw Error("The time set '" + set.id + "' has " + std::to_string(set.times.size()) +
                        " times for " + std::to_string(set.stepCount) + " steps.");
        set.times.resize(set.stepCount);
        bool const areNumbers = std::all_of(set.times.begin(), set.times.end(),
                                            [](double time) { return std::isfinite(time); });
        if (!areNumbers || std::adjacent_find(set.times.begin(), set.times.end(),
                                              std::greater_equal<>()) != set.times.end())
            throw Error("The times of the time set '" + set.id + "' do not ascend.");
        times_.insert(times_.end(), set.times.begin(), set.times.end());
    }
    std::sort(times_.begin(), times_.end());
    times_.erase(std::unique(times_.begin(), times_.end()), times_.end());
}

void CaseFile::readMesh(Entry const& entry)
{
    std::string const key = joined(entry.key);
    if (key != "model" && key != "measured")
        return leaveOut(entry);
    Words values = entry.values;
    Mesh mesh;
    auto const changes = std::find(values.begin(), values.end(), "change_coords_only");
    if (changes != values.end())
        mesh.stepOfElements =
            changes + 1 == values.end() ? 0 : required<std::uint32_t>(*(changes + 1));
    values.erase(changes, values.end());
    if (values.empty())
        throw Error("The case does not name the file of '" + key + "'.");
    mesh.files = seriesOf(values.back(), {values.begin(), values.end() - 1});
    (key == "model" ? model_ : measured_) = mesh;
}

void CaseFile::readVariable(Entry const& entry)
{
    if (contains(entry.key, "constant"))
        return readConstant(entry);
    Variable variable;
    variable.components = componentsOf(entry.key);
    if (variable.components == 0)
        return leaveOut(entry);
    // A complex variable has two files, then a frequency.
    std::vector<std::string> endings = {""};
    if (contains(entry.key, "complex"))
        endings = {"_r", "_i"};
    std::size_t const behindName = endings.size() == 1 ? 1 : endings.size() + 1;
    if (entry.values.size() < 1 + behindName)
        throw Error("The case does not name the files of '" + joined(entry.key) + "'.");
    auto const name = entry.values.end() - static_cast<std::ptrdiff_t>(1 + behindName);
    variable.isPerElement = contains(entry.key, "element");
    variable.isMeasured = contains(entry.key, "measured");
    auto file = name;
    for (std::string const& ending : endings) {
        variable.name = *name + ending;
        variable.files = seriesOf(*++file, {entry.values.begin(), name});
        variables_.push_back(variable);
    }
    if (auto const frequency = numberIn<double>(entry.values.back()); frequency && behindName > 1)
        constants_.push_back({*name + " frequency", nullptr, {*frequency}});
}

/// Its name may be behind the number of a time set.
void CaseFile::readConstant(Entry const& entry)
{
    Words values = entry.values;
    constexpr std::size_t withSet = 3;
    Constant constant;
    if (values.size() >= withSet)
        constant.timeSet = setOf(timeSets_, values.front());
    if (constant.timeSet != nullptr)
        values.erase(values.begin());
    if (values.size() < 2 || !contains(entry.key, "case"))
        return leaveOut(entry);
    constant.name = values.front();
    values.erase(values.begin());
    constant.values =
        numbersIn<double>(contains(entry.key, "file") ? wordsOfFile(values.front()) : values);
    std::size_t const count = constant.timeSet == nullptr ? 1 : constant.timeSet->times.size();
    if (constant.values.size() == 1)
        constant.values.resize(count, constant.values.front());
    if (constant.values.size() < count)
        throw Error("The constant '" + constant.name + "' has too few values.");
    constants_.push_back(constant);
}

void CaseFile::leaveOut(Entry const& entry)
{
    report_.warn("'" + joined(entry.key) + "' of the case's section " + entry.section +
                 " was left out.");
}

/// \param sets the numbers of a time set and a file set, where they are given
CaseFile::Series CaseFile::seriesOf(std::string const& pattern, Words const& sets) const
{
    Series series{pattern};
    if (!sets.empty())
        series.timeSet = setOf(timeSets_, sets[0]);
    else if (timeSets_.size() == 1 && isNumbered(pattern))
        series.timeSet = &timeSets_.front();
    if (sets.size() > 1)
        series.fileSet = setOf(fileSets_, sets[1]);
    if (isNumbered(pattern) && series.timeSet == nullptr && series.fileSet == nullptr)
        throw Error("The case does not say which files '" + pattern + "' stands for.");
    return series;
}

Words CaseFile::wordsOfFile(std::string const& name) const
{
    std::ifstream file(pathOf(name, 0));
    if (!file)
        throw Error("There is no file '" + pathOf(name, 0).string() + "'.");
    return {std::istream_iterator<std::string>(file), {}};
}

std::optional<std::size_t> CaseFile::stepAt(TimeSet const* set, std::size_t step) const
{
    if (set == nullptr || times_.empty())
        return 0;
    auto const time = std::lower_bound(set->times.begin(), set->times.end(), times_[step]);
    if (time == set->times.end() || *time != times_[step])
        return std::nullopt;
    return time - set->times.begin();
}

std::size_t CaseFile::latestStepAt(TimeSet const* set, std::size_t step) const
{
    if (set == nullptr || times_.empty())
        return 0;
    auto const later = std::upper_bound(set->times.begin(), set->times.end(), times_[step]);
    return static_cast<std::size_t>(std::max<std::ptrdiff_t>(1, later - set->times.begin()) - 1);
}

CaseFile::StepPlace CaseFile::placeOf(Series const& series, std::size_t step) const
{
    if (series.fileSet != nullptr) {
        FileSet const& set = *series.fileSet;
        std::uint64_t left = step;
        for (std::size_t i = 0; i < set.stepCounts.size(); ++i) {
            if (left < set.stepCounts[i])
                return {pathOf(series.pattern, i < set.numbers.size() ? set.numbers[i] : 0), left};
            left -= set.stepCounts[i];
        }
        throw Error("The file set '" + set.id + "' has no step " + std::to_string(step + 1) + ".");
    }
    if (!isNumbered(series.pattern))
        return {pathOf(series.pattern, 0), step};
    TimeSet const& set = *series.timeSet;
    if (!set.numbers.empty() && step >= set.numbers.size())
        throw Error("The time set '" + set.id + "' has no file number for its step " +
                    std::to_string(step + 1) + ".");
    return {pathOf(series.pattern, set.numbers.empty() ? set.firstNumber + step * set.increment
                                                       : set.numbers[step]),
            0};
}

std::uint64_t CaseFile::bytesOfVariables() const
{
    std::uint64_t bytes = 0;
    for (Variable const& variable : variables_) {
        std::error_code error;
        auto const size = std::filesystem::file_size(placeOf(variable.files, 0).path, error);
        bytes += error ? 0 : size;
    }
    return bytes;
}

std::filesystem::path CaseFile::pathOf(std::string pattern, std::uint64_t number) const
{
    auto const first = pattern.find('*');
    if (first == std::string::npos)
        return folder_ / pattern;
    std::size_t const width = pattern.find_last_of('*') + 1 - first;
    std::string digits = std::to_string(number);
    digits.insert(0, width - std::min(width, digits.size()), '0');
    return folder_ / pattern.replace(first, width, digits);
}

} // namespace EnSight
