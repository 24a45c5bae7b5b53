#include "integration/CheckedModel.h"

#include "integration/Comparison.h"
#include "integration/DatasetTypes.h"

#include <Zyl2/Exception/Exception.h>

#include <gtest/gtest.h>

#include <map>
#include <stdexcept>
#include <variant>

namespace Integration {

namespace {

using Zyl2::Mox2::Array1d;

constexpr char const* notOpen = "File not open.";
constexpr char const* notInitialized = "Not initialized";

using Ids = std::vector<unsigned int>;
using Outcome = std::variant<Ids, Refusal>;

Ids plain(Array1d<unsigned int> const& ids)
{
    Ids result;
    for (unsigned long index = 0; index < ids.size(); ++index)
        result.push_back(ids[index]);
    return result;
}

Outcome realOutcome(std::function<Ids()> const& call)
{
    try {
        return call();
    } catch (Zyl2::Exception::Exception const& exception) {
        return Refusal{exception.errorCode(), exception.what()};
    } catch (std::out_of_range const&) {
        return Refusal{0, "out of range"};
    }
}

Outcome expectedOutcome(std::function<Ids()> const& call)
{
    try {
        return call();
    } catch (Refusal const& refusal) {
        return refusal;
    }
}

std::string textOf(Outcome const& outcome)
{
    if (auto const* const refusal = std::get_if<Refusal>(&outcome))
        return "refused with " + std::to_string(refusal->code) + " \"" + refusal->text + '"';
    std::string text = "answered";
    for (unsigned int const id : std::get<Ids>(outcome))
        text += ' ' + std::to_string(id);
    return text;
}

unsigned int onlyOf(Ids const& ids)
{
    return ids.empty() ? 0 : ids.front();
}

/// What a path says by the rules for hosts: any character of the separator stands between names,
/// the whole separator makes the end a group.
ComponentPath parsed(std::string const& path, std::string const& separator)
{
    auto const isSeparator = [&](char c) { return separator.find(c) != std::string::npos; };
    ComponentPath result;
    if (path.empty())
        return result;
    if (!isSeparator(path.front()))
        throw Refusal{3, "Relative paths not supported"};
    for (std::size_t i = 0; i < path.size(); ++i) {
        if (isSeparator(path[i]))
            continue;
        if (isSeparator(path[i - 1]))
            result.names.emplace_back();
        result.names.back() += path[i];
    }
    std::size_t const size = separator.size();
    result.endsInGroup = path.size() >= size && path.substr(path.size() - size) == separator;
    return result;
}

/// Refuses what is refused before the model looks at its state.
void requireKnownType(ArrayCall const& call)
{
    bool const isType = static_cast<std::size_t>(call.type) < datasetTypes().size();
    if (!call.name && (!isType || factsOf(call.type).defaultName == nullptr))
        throw Refusal{3, "Can't guess result name for specified type"};
    if (!isType)
        throw Refusal{3, "Can't guess result width for specified type"};
}

} // namespace

CheckedModel::Answer CheckedModel::check(char const* what, Call const& real, Call const& expected)
{
    Outcome const wanted = expectedOutcome(expected);
    Outcome const found = realOutcome(real);
    EXPECT_TRUE(found == wanted) << what << ": " << textOf(found)
                                 << ", expected: " << textOf(wanted);
    auto const* const ids = std::get_if<Ids>(&wanted);
    return ids == nullptr ? Ids() : *ids;
}

void CheckedModel::requireOpen(char const* text) const
{
    if (!isOpen_)
        throw Refusal{17, text};
}

void CheckedModel::save()
{
    check(
        "saveTo",
        [&] {
            model_.saveTo(path_);
            return Answer();
        },
        [&] {
            if (isOpen_)
                throw Refusal{17, "Not Empty"};
            return Answer();
        });
    hasFile_ = hasFile_ || !isOpen_;
    isOpen_ = true;
}

unsigned int CheckedModel::addNode(Zyl2::Mox2::NodeType type, std::string const& name,
                                   AttributeSet const& attributes)
{
    return onlyOf(check(
        "addNode", [&] { return Answer{model_.addNode(type, name, attributes.host())}; },
        [&] {
            requireOpen(notOpen);
            return Answer{expected_.addNode(type, name, attributes)};
        }));
}

void CheckedModel::setNodeData(unsigned int id, PropertySet const& properties,
                               AttributeSet const& attributes)
{
    check(
        "setNodeData",
        [&] {
            model_.setNodeData(id, properties.host(), attributes.host());
            return Answer();
        },
        [&] {
            requireOpen(notOpen);
            expected_.setNodeData(id, properties, attributes);
            return Answer();
        });
}

std::vector<unsigned int> CheckedModel::addComponents(std::vector<std::string> const& paths,
                                                      std::string const& separator)
{
    return check(
        "addAssemblyComponents",
        [&] { return plain(model_.addAssemblyComponents(paths, separator)); },
        [&] {
            Answer ids;
            for (std::string const& path : paths) {
                requireOpen(notOpen);
                ids.push_back(expected_.addComponent(parsed(path, separator)));
            }
            return ids;
        });
}

std::vector<unsigned int>
CheckedModel::addComponentMap(std::vector<ComponentText> const& components,
                              std::string const& separator)
{
    std::map<std::string, Zyl2::Mox2::Attributes> given;
    std::map<std::string, AttributeSet> sorted;
    for (ComponentText const& component : components) {
        given[component.path] = component.attributes.host();
        sorted[component.path] = component.attributes;
    }
    return check(
        "addAssemblyComponents with a map",
        [&] { return plain(model_.addAssemblyComponents(given, separator)); },
        [&] {
            Answer ids;
            for (auto const& [text, attributes] : sorted) {
                requireOpen(notOpen);
                ComponentPath const path = parsed(text, separator);
                ids.push_back(expected_.addComponent(path));
                if (!path.names.empty() && path.endsInGroup && !attributes.isStorable())
                    throw Refusal{3, "Invalid arguments"};
            }
            return ids;
        });
}

void CheckedModel::addArray(ArrayCall const& call)
{
    check(
        "addArrayProperty",
        [&] {
            call.run(model_);
            return Answer();
        },
        [&] {
            requireKnownType(call);
            requireOpen(notOpen);
            expected_.addArray(call);
            return Answer();
        });
}

unsigned int CheckedModel::getNodeId(std::string const& path, std::string const& separator)
{
    return onlyOf(check(
        "getNodeId", [&] { return Answer{model_.getNodeId(path, separator)}; },
        [&] {
            requireOpen(notInitialized);
            return Answer{expected_.getNodeId(path, separator)};
        }));
}

unsigned int CheckedModel::getNodeId(std::vector<std::string> const& names)
{
    return onlyOf(check(
        "getNodeId with names", [&] { return Answer{model_.getNodeId(names)}; },
        [&] {
            requireOpen(notInitialized);
            return Answer{expected_.getNodeId(names)};
        }));
}

unsigned int CheckedModel::moveToParentNode()
{
    return onlyOf(check(
        "moveToParentNode", [&] { return Answer{model_.moveToParentNode()}; },
        [&] {
            requireOpen(notInitialized);
            return Answer{expected_.moveToParentNode()};
        }));
}

void CheckedModel::setCurrentNodeId(unsigned int id)
{
    check(
        "setCurrentNodeId",
        [&] {
            model_.setCurrentNodeId(id);
            return Answer();
        },
        [&] {
            requireOpen(notInitialized);
            expected_.setCurrentNodeId(id);
            return Answer();
        });
}

void CheckedModel::closeAndCompare()
{
    model_.close();
    isOpen_ = false;
    if (hasFile_)
        expectFile(path_, expected_);
}

} // namespace Integration
