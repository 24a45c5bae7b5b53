#include "languages/Player.h"

#include <Zyl2/Exception/Exception.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <iterator>
#include <map>
#include <stdexcept>

namespace Languages {

namespace {

using namespace Zyl2::Mox2;
using Values = std::vector<unsigned int>;

constexpr int outOfBounds = 11;

Attributes readAttributes(Words& words)
{
    Attributes result;
    for (std::size_t left = words.count(); left > 0; --left) {
        std::string const name = words.text();
        std::string const type = words.word();
        if (type == "float")
            result.set(name, words.float32());
        else if (type == "double")
            result.set(name, words.float64());
        else if (type == "int")
            result.set(name, static_cast<int>(words.number()));
        else if (type == "unsigned")
            result.set(name, static_cast<unsigned int>(words.number()));
        else if (type == "long")
            result.set(name, static_cast<long>(words.number()));
        else
            result.set(name, words.text());
    }
    return result;
}

template <typename T, typename Read>
std::vector<T> readVector(Words& words, Read read)
{
    std::vector<T> result;
    for (std::size_t left = words.count(); left > 0; --left)
        result.push_back(static_cast<T>((words.*read)()));
    return result;
}

std::vector<std::string> readTexts(Words& words)
{
    return readVector<std::string>(words, &Words::text);
}

/// The sentence that shows text and detail.
std::string sentenceOf(std::exception const& failure)
{
    std::string const text = failure.what();
    std::string const detail = Zyl2::Exception::detail(failure);
    if (detail.empty())
        return text;
    return text + (text.back() == '.' ? " " : ": ") + detail;
}

std::string escaped(std::string const& text)
{
    std::string result;
    for (char const byte : text) {
        auto const value = static_cast<unsigned char>(byte);
        if (value >= 0x20 && value <= 0x7E && byte != '\\') {
            result += byte;
            continue;
        }
        char escape[5];
        std::snprintf(escape, sizeof escape, "\\x%02x", value);
        result += escape;
    }
    return result;
}

Values listed(Array1d<unsigned int> const& ids)
{
    Values values{static_cast<unsigned int>(ids.size())};
    values.insert(values.end(), ids.data(), ids.data() + ids.size());
    return values;
}

} // namespace

std::optional<Outcome> Player::take(std::string const& line)
{
    Words words(line);
    std::string const first = words.word();
    if (std::isdigit(static_cast<unsigned char>(first.front())) == 0) {
        prepare(first, words);
        return std::nullopt;
    }
    model_ = std::stoul(first);
    call_ = words.word();
    ++calls_;
    return call(words);
}

std::string Player::logged(Outcome const& outcome) const
{
    Line line;
    line.number(sequence_).number(calls_).number(static_cast<std::int64_t>(model_)).word(call_);
    line.number(outcome.status);
    for (unsigned int const value : outcome.values)
        line.number(value);
    if (outcome.status != 0)
        line.word(escaped(outcome.sentence));
    return line.string();
}

void Player::prepare(std::string const& what, Words& words)
{
    if (what == "sequence")
        beginSequence(words);
    else if (what == "options")
        readOptions(words);
    else if (what == "attributes")
        attributes_ = readAttributes(words);
    else if (what == "properties")
        readProperties(words);
    else if (what == "steps")
        readSteps(words);
    else if (what == "array")
        readArray(words);
    else
        throw std::runtime_error("no such line: " + what);
}

void Player::beginSequence(Words& words)
{
    *this = Player();
    sequence_ = words.number();
}

void Player::readOptions(Words& words)
{
    options_.overwrite = words.number() != 0;
    options_.text1 = words.text();
    options_.text2 = words.text();
    options_.text3 = words.text();
    options_.threads = static_cast<int>(words.number());
    options_.blockSize = static_cast<std::uint64_t>(words.number());
}

void Player::readProperties(Words& words)
{
    properties_ = NodeProperties();
    for (std::size_t left = words.count(); left > 0; --left) {
        auto const type = static_cast<PropertyType>(words.number());
        std::string const form = words.word();
        if (form == "float")
            properties_.set(type, words.float32());
        else if (form == "double")
            properties_.set(type, words.float64());
        else if (form == "int")
            properties_.set(type, static_cast<int>(words.number()));
        else if (form == "bool")
            properties_.set(type, words.number() != 0);
        else if (form == "string")
            properties_.set(type, words.text());
        else if (form == "floats")
            properties_.set(type, readVector<float>(words, &Words::float32));
        else
            properties_.set(type, readVector<int>(words, &Words::number));
    }
}

void Player::readSteps(Words& words)
{
    steps_.clear();
    for (std::size_t left = words.count(); left > 0; --left) {
        std::string const name = words.text();
        steps_.emplace_back(name, readAttributes(words));
    }
}

void Player::readArray(Words& words)
{
    static std::map<std::string, ArrayView::Element> const elements{
        {"float32", ArrayView::Element::Float32}, {"float64", ArrayView::Element::Float64},
        {"int32", ArrayView::Element::Int32},     {"uint32", ArrayView::Element::UInt32},
        {"int64", ArrayView::Element::Int64},     {"uint64", ArrayView::Element::UInt64}};
    array_.element = elements.at(words.word());
    array_.rows = words.count();
    array_.columns = words.count();
    array_.rowStride = words.number();
    array_.columnStride = words.number();
    array_.offset = words.count();
    array_.bytes = words.text();
}

Outcome Player::call(Words& words)
{
    Outcome outcome;
    try {
        outcome.values = run(words);
    } catch (Zyl2::Exception::Exception const& failure) {
        outcome.status = failure.errorCode();
        outcome.sentence = sentenceOf(failure);
    } catch (std::out_of_range const& failure) {
        outcome.status = outOfBounds;
        outcome.sentence = failure.what();
    }
    return outcome;
}

Values Player::run(Words& words)
{
    if (call_ == "new")
        return models_.at(model_).emplace(), Values();
    if (call_ == "save_to")
        return save(words);
    if (call_ == "save_to_wide")
        return saveWide(words);
    if (call_ == "add_node")
        return addNode(words);
    if (call_ == "set_node_data")
        return setNodeData(words);
    if (call_ == "get_node_id")
        return getNodeId(words);
    if (call_ == "get_node_id_by_names")
        return {model().getNodeId(readTexts(words))};
    if (call_ == "set_current_node_id")
        return model().setCurrentNodeId(static_cast<unsigned int>(words.number())), Values();
    if (call_ == "move_to_parent_node")
        return {model().moveToParentNode()};
    if (call_ == "add_components")
        return addComponents(words);
    if (call_ == "add_component_map")
        return addComponentMap(words);
    if (call_ == "add_array")
        return addArray(words);
    if (call_ == "close")
        return model().close(), Values();
    if (call_ == "destroy")
        return destroy();
    throw std::runtime_error("no such call: " + call_);
}

Values Player::save(Words& words)
{
    std::string const path = words.text();
    model().saveTo(path, options(words));
    return {};
}

Values Player::saveWide(Words& words)
{
    std::string const path = words.text();
    model().saveTo(std::wstring(path.begin(), path.end()), options(words));
    return {};
}

Values Player::addNode(Words& words)
{
    auto const type = static_cast<NodeType>(words.number());
    std::string const name = words.text();
    return {model().addNode(type, name, attributes(words))};
}

Values Player::setNodeData(Words& words)
{
    auto const id = static_cast<unsigned int>(words.number());
    bool const isGiven = words.word() == "given";
    model().setNodeData(id, isGiven ? properties_ : NodeProperties(), attributes(words));
    return {};
}

Values Player::getNodeId(Words& words)
{
    std::string const path = words.text();
    auto const separator = words.optionalText();
    return {separator ? model().getNodeId(path, *separator) : model().getNodeId(path)};
}

Values Player::addComponents(Words& words)
{
    auto const separator = words.optionalText().value_or(Model::defaultPathSeparator());
    return listed(model().addAssemblyComponents(readTexts(words), separator));
}

Values Player::addComponentMap(Words& words)
{
    auto const separator = words.optionalText().value_or(Model::defaultPathSeparator());
    std::map<std::string, Attributes> components;
    for (std::string const& path : readTexts(words))
        components[path] = attributes_;
    return listed(model().addAssemblyComponents(components, separator));
}

Values Player::addArray(Words& words)
{
    auto const name = words.optionalText();
    auto const type = static_cast<DatasetType>(words.number());
    StepList const list = steps(words);
    Attributes const& given = attributes(words);
    auto const ids = readVector<unsigned int>(words, &Words::number);
    if (name)
        model().addArrayProperty(*name, type, view(), ids, list, given);
    else
        model().addArrayProperty(type, view(), ids, list, given);
    return {};
}

Values Player::destroy()
{
    // The destructor must not have anything left that can fail: it would end the process.
    Model ended(std::move(model()));
    models_.at(model_).reset();
    ended.close();
    return {};
}

Attributes const& Player::attributes(Words& words) const
{
    return words.word() == "given" ? attributes_ : Model::emptyAttributes();
}

SaverOptions Player::options(Words& words) const
{
    return words.word() == "given" ? options_ : SaverOptions();
}

StepList Player::steps(Words& words) const
{
    bool const isGiven = words.word() == "given";
    StepList list(isGiven ? steps_.size() : 1);
    for (std::size_t index = 0; isGiven && index < steps_.size(); ++index)
        list.set(index, steps_[index]);
    return list;
}

ArrayView Player::view() const
{
    return {array_.bytes.data() + array_.offset,
            array_.element,
            array_.rows,
            array_.columns,
            array_.rowStride,
            array_.columnStride};
}

} // namespace Languages
