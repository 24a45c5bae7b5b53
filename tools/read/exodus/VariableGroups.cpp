#include "VariableGroups.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <optional>

namespace Exodus {

namespace {

using Endings = std::vector<std::string>;

std::vector<Endings> patterns(std::int64_t dimensionOfFile)
{
    std::vector<Endings> all = {{"XX", "XY", "XZ", "YX", "YY", "YZ", "ZX", "ZY", "ZZ"},
                                {"XX", "YY", "ZZ", "XY", "YZ", "ZX"},
                                {"XX", "YY", "ZZ", "XY", "YZ", "XZ"},
                                {"X", "Y", "Z"}};
    if (dimensionOfFile == 2)
        all.push_back({"X", "Y"});
    return all;
}

std::string lowerCase(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(), [](char letter) {
        return static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
    });
    return text;
}

bool endsWith(std::string const& text, std::string const& ending)
{
    return text.size() >= ending.size() &&
           text.compare(text.size() - ending.size(), ending.size(), ending) == 0;
}

bool endsInAxis(std::string const& text, bool isLower)
{
    return text.find_last_of(isLower ? "xyz" : "XYZ") == text.size() - 1;
}

/// What is before the ending, with its underscore; nothing when that is no name.
std::optional<std::string> stemOf(std::string const& variable, std::string const& ending,
                                  bool isLower)
{
    if (!endsWith(variable, ending))
        return std::nullopt;
    std::string const stem = variable.substr(0, variable.size() - ending.size());
    if (stem.empty() || stem == "_" || (ending.size() == 1 && endsInAxis(stem, isLower)))
        return std::nullopt;
    return stem;
}

std::string withoutUnderscore(std::string stem)
{
    if (stem.back() == '_')
        stem.pop_back();
    return stem;
}

class Grouping
{
public:
    explicit Grouping(std::vector<std::string> const& variables)
        : variables_(variables), isTaken_(variables.size())
    {
        for (std::size_t i = variables.size(); i-- > 0;)
            indices_[variables[i]] = i;
    }

    void addAll(Endings const& endings, bool isLower)
    {
        for (std::string const& variable : variables_)
            if (auto const stem = stemOf(variable, endings.front(), isLower))
                add(*stem, endings);
    }

    void addRest()
    {
        for (std::size_t i = 0; i < variables_.size(); ++i)
            if (!isTaken_[i])
                groups_.push_back(singleGroup(variables_, i));
    }

    std::vector<VariableGroup> sorted()
    {
        std::sort(groups_.begin(), groups_.end(),
                  [](auto const& a, auto const& b) { return first(a) < first(b); });
        return groups_;
    }

private:
    static std::size_t first(VariableGroup const& group)
    {
        return *std::min_element(group.components.begin(), group.components.end());
    }

    void add(std::string const& stem, Endings const& endings)
    {
        VariableGroup group;
        group.name = withoutUnderscore(stem);
        group.componentNames = endings;
        for (std::string const& ending : endings) {
            auto const found = indices_.find(stem + ending);
            if (found == indices_.end() || isTaken_[found->second])
                return;
            group.components.push_back(found->second);
        }
        for (std::size_t const component : group.components)
            isTaken_[component] = true;
        while (group.components.size() < 3)
            group.components.push_back(variables_.size());
        groups_.push_back(std::move(group));
    }

    std::vector<std::string> const& variables_;
    std::map<std::string, std::size_t> indices_;
    std::vector<bool> isTaken_;
    std::vector<VariableGroup> groups_;
};

Endings inLowerCase(Endings endings)
{
    std::transform(endings.begin(), endings.end(), endings.begin(), lowerCase);
    return endings;
}

} // namespace

VariableGroup singleGroup(std::vector<std::string> const& variables, std::size_t index)
{
    return {variables[index], {index}, {}};
}

std::vector<VariableGroup> groupsOf(std::vector<std::string> const& variables,
                                    std::int64_t dimensionOfFile)
{
    Grouping grouping(variables);
    for (Endings const& endings : patterns(dimensionOfFile)) {
        grouping.addAll(endings, false);
        grouping.addAll(inLowerCase(endings), true);
    }
    grouping.addRest();
    return grouping.sorted();
}

} // namespace Exodus
