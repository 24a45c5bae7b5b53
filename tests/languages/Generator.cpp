#include "languages/Generator.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace Languages {

namespace {

using std::literals::string_literals::operator""s;

struct Type
{
    std::int64_t number;
    std::size_t width;
    bool hasName;
};

std::vector<Type> const datasetTypes{
    {0, 1, true},   {1, 1, true},   {2, 1, true},   {3, 1, true},   {4, 1, true},   {5, 1, true},
    {6, 1, true},   {7, 1, true},   {8, 1, true},   {9, 3, true},   {10, 1, false}, {11, 3, false},
    {12, 6, false}, {13, 6, false}, {14, 1, false}, {15, 3, false}, {16, 6, false}, {17, 6, false},
    {18, 1, false}, {19, 3, false}, {20, 6, false}, {21, 6, false}, {22, 1, false}, {23, 1, false},
    {24, 3, false}, {25, 6, false}, {26, 6, false}, {27, 1, true},  {28, 1, true},  {29, 3, true},
    {30, 6, true}};

std::vector<std::string> const names{"a",
                                     "b",
                                     "Beam",
                                     "Steel plate",
                                     "door/left",
                                     "",
                                     "Größe",
                                     "節点",
                                     "wheel|rear",
                                     "a name that is longer than short strings are",
                                     "zero\0inside"s,
                                     "\\tab\there"};

std::vector<std::string> const elementNames{"float32", "float64", "int32",
                                            "uint32",  "int64",   "uint64"};
std::vector<std::string> const separators{"/", "|", "/|", "::"};

std::size_t sizeOf(std::string const& element)
{
    return element.substr(element.size() - 2) == "64" ? 8 : 4;
}

template <typename BitsT, typename T>
std::uint64_t bitsOf(T value)
{
    BitsT bits{};
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

} // namespace

void Generator::makeSequence()
{
    slots_ = {};
    emit(Line().word("sequence").number(++sequence_));
    makeModel();
    for (std::size_t left = 5 + random_.below(40); left > 0; --left) {
        current_ = random_.chance(75) ? current_ : random_.below(slots_.size());
        if (slot().lives)
            makeCall();
        else
            makeModel();
    }
    for (current_ = 0; current_ < slots_.size(); ++current_)
        if (slot().lives)
            destroy();
    current_ = 0;
}

std::vector<std::string> Generator::missing() const
{
    std::vector<std::string> result;
    for (char const* const call :
         {"save_to", "save_to_wide", "add_node", "set_node_data", "get_node_id",
          "get_node_id_by_names", "set_current_node_id", "move_to_parent_node", "add_components",
          "add_component_map", "add_array"})
        for (char const* const end : {" that ends well", " that fails"})
            if (ended_.count(call + std::string(end)) == 0)
                result.push_back(call + std::string(end));
    for (int const status : {2, 3, 5, 11, 12, 14, 17, 19, 20})
        if (statuses_.count(status) == 0)
            result.push_back("a failure of kind " + std::to_string(status));
    return result;
}

Outcome Generator::emit(Line const& line)
{
    sequences_ << line.string() << '\n';
    auto const outcome = player_.take(line.string());
    if (!outcome)
        return {};
    Words words(line.string());
    words.word();
    ended_.insert(words.word() + (outcome->status == 0 ? " that ends well" : " that fails"));
    statuses_.insert(outcome->status);
    return *outcome;
}

Line Generator::callOf(char const* call) const
{
    Line line;
    line.number(static_cast<std::int64_t>(current_)).word(call);
    return line;
}

void Generator::makeModel()
{
    auto const files = slot().files;
    slot() = Slot();
    slot().files = files;
    slot().lives = true;
    emit(callOf("new"));
    if (random_.chance(90))
        save();
    if (random_.chance(90))
        addNode();
}

void Generator::makeCall()
{
    if (!slot().isOpen && random_.chance(70))
        return save();
    if (slot().isOpen && slot().cursor == 0 && random_.chance(40))
        return setCurrentNodeId();
    switch (random_.below(20)) {
    case 0:
    case 1:
    case 2:
    case 3:
        return addNode();
    case 4:
    case 5:
        return setNodeData();
    case 6:
        return getNodeId();
    case 7:
        return getNodeIdByNames();
    case 8:
        return setCurrentNodeId();
    case 9:
    case 10:
        return moveToParentNode();
    case 11:
    case 12:
        return addComponents();
    case 13:
        return random_.chance(20) ? save() : random_.chance(40) ? close() : addArray();
    case 14:
        return random_.chance(20) ? destroy() : addArray();
    default:
        return addArray();
    }
}

void Generator::save()
{
    std::string const path = pathToSave();
    std::string const options = givenOrDefault(60, [this] { emitOptions(); });
    auto const outcome =
        emit(callOf(random_.chance(75) ? "save_to" : "save_to_wide").text(path).word(options));
    if (outcome.status == 0) {
        auto const files = slot().files;
        slot() = Slot();
        slot().files = files;
        slot().lives = true;
        if (!path.empty())
            slot().files.push_back(path);
    }
    // A file that can't be opened leaves a model that has to be closed.
    slot().isOpen = true;
}

std::string Generator::pathToSave()
{
    if (!slot().files.empty() && random_.chance(30))
        return random_.pick(slot().files);
    if (random_.chance(5))
        return "";
    if (random_.chance(4))
        return "no folder/a.mox";
    return std::to_string(sequence_) + "-" + std::to_string(current_) + "-" +
           std::to_string(slot().files.size()) + ".mox";
}

void Generator::addNode()
{
    std::int64_t const type = nodeType();
    std::string const given = name();
    std::string const attributes = givenOrDefault(40, [this] { emitAttributes(); });
    auto const outcome = emit(callOf("add_node").number(type).text(given).word(attributes));
    if (outcome.status == 0)
        noteNode(outcome.values.at(0), type == 4, given);
}

std::int64_t Generator::nodeType()
{
    if (random_.chance(5))
        return static_cast<std::int64_t>(random_.below(12)) - 2;
    if (slot().hasRoot)
        return random_.chance(45) ? 3 : 4;
    return random_.chance(5) ? 4 : static_cast<std::int64_t>(1 + random_.below(3));
}

void Generator::noteNode(unsigned int id, bool isShape, std::string const& name)
{
    Slot& to = slot();
    auto const parent = to.names.find(to.cursor);
    auto path = parent == to.names.end() ? std::vector<std::string>() : parent->second;
    path.push_back(name);
    to.hasRoot = true;
    to.names[id] = path;
    (isShape ? to.shapes : to.groups).push_back(id);
    to.cursor = id;
    to.last = std::max(to.last, id);
}

void Generator::setNodeData()
{
    bool const ofGroup = random_.chance(50);
    unsigned int const id = random_.chance(90) ? (ofGroup ? groupOr(1) : shapeOr(1)) : anyId();
    std::string const properties = givenOrDefault(85, [this, ofGroup] { emitProperties(ofGroup); });
    std::string const attributes = givenOrDefault(40, [this] { emitAttributes(); });
    auto const outcome = emit(callOf("set_node_data").number(id).word(properties).word(attributes));
    // For a shape, the cursor is not where the id is.
    if (outcome.status == 0)
        slot().cursor = ofGroup ? id : 0;
}

std::vector<std::string> Generator::namesToSearch()
{
    if (slot().names.empty() || random_.chance(5))
        return {};
    auto known = slot().names.begin();
    std::advance(known, random_.below(slot().names.size()));
    auto path = known->second;
    if (random_.chance(20))
        path.push_back(name());
    return path;
}

void Generator::getNodeId()
{
    bool const isDefault = random_.chance(50);
    std::string const separator = isDefault ? "/" : random_.pick(separators);
    std::string path;
    for (std::string const& name : namesToSearch())
        path += separator + name;
    auto const outcome =
        emit(callOf("get_node_id")
                 .text(path)
                 .optionalText(isDefault ? std::nullopt : std::make_optional(separator)));
    if (outcome.status == 0)
        slot().cursor = 1;
}

void Generator::getNodeIdByNames()
{
    auto const path = namesToSearch();
    Line line = callOf("get_node_id_by_names");
    line.number(static_cast<std::int64_t>(path.size()));
    for (std::string const& name : path)
        line.text(name);
    if (emit(line).status == 0)
        slot().cursor = 1;
}

void Generator::setCurrentNodeId()
{
    unsigned int const id = random_.chance(85) ? groupOr(1) : anyId();
    if (emit(callOf("set_current_node_id").number(id)).status == 0)
        slot().cursor = id;
}

void Generator::moveToParentNode()
{
    auto const outcome = emit(callOf("move_to_parent_node"));
    if (outcome.status == 0 && outcome.values.at(0) != 0)
        slot().cursor = outcome.values.at(0);
}

void Generator::addComponents()
{
    bool const isDefault = random_.chance(60);
    std::string const separator = isDefault ? "/" : random_.pick(separators);
    std::vector<std::string> paths;
    for (std::size_t left = random_.below(5); left > 0; --left)
        paths.push_back(componentPath(separator));
    bool const isMap = random_.chance(40);
    if (isMap) {
        emitAttributes();
        std::sort(paths.begin(), paths.end());
        paths.erase(std::unique(paths.begin(), paths.end()), paths.end());
    }
    Line line = callOf(isMap ? "add_component_map" : "add_components");
    line.optionalText(isDefault ? std::nullopt : std::make_optional(separator));
    line.number(static_cast<std::int64_t>(paths.size()));
    for (std::string const& path : paths)
        line.text(path);
    noteComponents(emit(line), paths, separator);
}

std::string Generator::componentPath(std::string const& separator)
{
    if (random_.chance(5))
        return name();
    auto const root = slot().names.find(1);
    std::string path =
        separator + (root == slot().names.end() || random_.chance(4) ? "a" : root->second.at(0));
    for (std::size_t depth = 1 + random_.below(4); depth > 0; --depth)
        path += separator + name();
    return random_.chance(30) ? path + separator : path;
}

void Generator::noteComponents(Outcome const& outcome, std::vector<std::string> const& paths,
                               std::string const& separator)
{
    slot().cursor = 0;
    if (outcome.status != 0 || paths.empty())
        return;
    for (std::size_t index = 0; index < paths.size(); ++index) {
        std::string const& path = paths[index];
        if (!slot().hasRoot && !path.empty()) {
            slot().hasRoot = true;
            std::size_t const start = path.find_first_not_of(separator);
            slot().names[1] = {path.substr(start, path.find_first_of(separator, start) - start)};
        }
        unsigned int const id = outcome.values.at(index + 1);
        if (id <= 1)
            continue;
        bool const isGroup = path.size() >= separator.size() &&
                             path.substr(path.size() - separator.size()) == separator;
        (isGroup ? slot().groups : slot().shapes).push_back(id);
        slot().last = std::max(slot().last, id);
    }
}

void Generator::addArray()
{
    Type type = random_.pick(datasetTypes);
    std::size_t const width = random_.chance(95) ? type.width : random_.below(8);
    if (random_.chance(2))
        type.number = 31 + static_cast<std::int64_t>(random_.below(60));
    bool const hasName = random_.chance(type.hasName ? 30 : 96);
    emitArray(width);
    std::string const steps = givenOrDefault(70, [this] { emitSteps(); });
    std::string const attributes = givenOrDefault(40, [this] { emitAttributes(); });
    Line line = callOf("add_array");
    line.optionalText(hasName ? std::make_optional(name()) : std::nullopt)
        .number(type.number)
        .word(steps)
        .word(attributes);
    std::size_t const count = random_.below(10) == 0 ? 0 : 1 + random_.below(3);
    line.number(static_cast<std::int64_t>(count));
    for (std::size_t left = count; left > 0; --left)
        line.number(random_.chance(95) ? shapeOr(1) : anyId());
    emit(line);
    slot().cursor = 0;
}

void Generator::close()
{
    emit(callOf("close"));
    noteClosed();
}

void Generator::destroy()
{
    if (random_.chance(50))
        close();
    emit(callOf("destroy"));
    noteClosed();
    slot().lives = false;
}

void Generator::noteClosed()
{
    auto const files = slot().files;
    slot() = Slot();
    slot().files = files;
    slot().lives = true;
}

void Generator::emitOptions()
{
    Line line;
    line.word("options").number(random_.chance(60) ? 1 : 0);
    line.text(random_.chance(70) ? name() : "").text(name()).text(name());
    line.number(random_.chance(5) ? 1025 : static_cast<std::int64_t>(random_.below(4)) - 1);
    line.number(random_.chance(5)    ? 4294967295
                : random_.chance(50) ? static_cast<std::int64_t>(random_.below(3000))
                                     : 0);
    emit(line);
}

void Generator::emitAttributes()
{
    Line line;
    line.word("attributes");
    appendAttributes(line);
    emit(line);
}

void Generator::appendAttributes(Line& line)
{
    std::size_t const count = random_.below(4);
    line.number(static_cast<std::int64_t>(count));
    for (std::size_t left = count; left > 0; --left)
        appendAttribute(line);
}

void Generator::appendAttribute(Line& line)
{
    line.text(name());
    switch (random_.below(7)) {
    case 0:
        line.word("float").float32(number());
        break;
    case 1:
        line.word("double").float64(double{number()} / 3);
        break;
    case 2:
        line.word("int").number(static_cast<std::int32_t>(random_.word()));
        break;
    case 3:
        line.word("unsigned").number(random_.word());
        break;
    case 4:
        line.word("long").number((std::int64_t{random_.word()} - 0x7FFFFFFF) * 65537);
        break;
    case 5:
        line.word("string").text(name());
        break;
    default:
        line.word("string").text(text());
        break;
    }
}

void Generator::emitProperties(bool ofGroup)
{
    std::size_t const count = random_.below(5);
    Line line;
    line.word("properties").number(static_cast<std::int64_t>(count));
    for (std::size_t left = count; left > 0; --left)
        if (random_.chance(96))
            emitProperty(line, random_.chance(98) ? ofGroup : !ofGroup);
        else
            emitWrongProperty(line);
    emit(line);
}

void Generator::emitProperty(Line& line, bool ofGroup)
{
    static constexpr std::array<std::size_t, 7> sizes{3, 4, 3, 4, 3, 3, 3};
    std::size_t const type = ofGroup ? random_.below(3) : 3 + random_.below(7);
    line.number(static_cast<std::int64_t>(type));
    if (type >= sizes.size()) {
        if (random_.chance(50))
            line.word("float").float32(number());
        else
            line.word("double").float64(double{number()} / 7);
        return;
    }
    std::size_t const size = random_.chance(97) ? sizes.at(type) : random_.below(6);
    line.word("floats").number(static_cast<std::int64_t>(size));
    for (std::size_t left = size; left > 0; --left)
        line.float32(number());
}

void Generator::emitWrongProperty(Line& line)
{
    line.number(static_cast<std::int64_t>(random_.below(14)));
    switch (random_.below(5)) {
    case 0:
        line.word("int").number(-7);
        break;
    case 1:
        line.word("bool").number(1);
        break;
    case 2:
        line.word("string").text(name());
        break;
    case 3:
        line.word("ints").number(2).number(-1).number(2147483647);
        break;
    default:
        line.word("float").float32(number());
        break;
    }
}

void Generator::emitSteps()
{
    std::size_t const count = random_.chance(8) ? 0 : 1 + random_.below(3);
    Line line;
    line.word("steps").number(static_cast<std::int64_t>(count));
    for (std::size_t left = count; left > 0; --left) {
        line.text(name());
        appendAttributes(line);
    }
    emit(line);
}

void Generator::emitArray(std::size_t width)
{
    std::string const& element = random_.pick(elementNames);
    auto const size = static_cast<std::int64_t>(sizeOf(element));
    auto const columns = static_cast<std::int64_t>(width);
    std::int64_t const rows = random_.chance(6) ? 0
                              : random_.chance(3)
                                  ? static_cast<std::int64_t>(200 + random_.below(150))
                                  : static_cast<std::int64_t>(1 + random_.below(12));
    // Where the elements lie, in elements.
    std::int64_t rowStride = columns;
    std::int64_t columnStride = 1;
    std::int64_t offset = 0;
    std::int64_t count = rows * columns;
    switch (random_.below(10)) {
    case 0: // one column after the other
    case 1:
        rowStride = 1;
        columnStride = rows;
        break;
    case 2: // rows and columns with gaps
    case 3:
        rowStride = 2 * columns + 3;
        columnStride = 2;
        count = rows * rowStride;
        break;
    case 4: // backwards
        rowStride = -columns;
        columnStride = -1;
        offset = std::max<std::int64_t>(count, 1) - 1;
        break;
    case 5: // all rows the same
        rowStride = 0;
        break;
    default:
        break;
    }
    Line line;
    line.word("array").word(element).number(rows).number(columns);
    line.number(rowStride * size).number(columnStride * size).number(offset * size);
    line.text(elements(element, static_cast<std::size_t>(std::max<std::int64_t>(count, 1))));
    emit(line);
}

std::string Generator::elements(std::string const& element, std::size_t count)
{
    std::size_t const misfit = random_.chance(8) ? random_.below(count) : count;
    std::string bytes;
    for (std::size_t index = 0; index < count; ++index) {
        std::uint64_t bits = elementBits(element, index == misfit);
        for (std::size_t left = sizeOf(element); left > 0; --left, bits >>= 8U)
            bytes += static_cast<char>(bits & 0xFFU);
    }
    return bytes;
}

/// \param isMisfit whether it should be a value that can't be stored, where the type has such
std::uint64_t Generator::elementBits(std::string const& element, bool isMisfit)
{
    constexpr std::uint64_t beyond = 4294967296U;
    if (element == "float32")
        return bitsOf<std::uint32_t>(random_.chance(2) ? std::numeric_limits<float>::infinity()
                                                       : number());
    if (element == "float64")
        return bitsOf<std::uint64_t>(isMisfit ? 1e39 * (1 + double{number()} / 2000)
                                              : double{number()} / 3);
    if (element == "int32")
        return isMisfit ? 0xFFFFFFF0U : random_.word() >> 1U;
    if (element == "uint32")
        return random_.word();
    if (element == "int64" && isMisfit && random_.chance(50))
        return ~std::uint64_t{0} - random_.word();
    return isMisfit ? beyond * (1 + random_.below(1000)) : random_.word();
}

template <typename EmitT>
std::string Generator::givenOrDefault(unsigned int percentGiven, EmitT emit)
{
    if (!random_.chance(percentGiven))
        return "default";
    emit();
    return "given";
}

float Generator::number()
{
    return random_.number();
}

std::string Generator::name()
{
    return random_.pick(names);
}

/// Around the length up to which an attribute is stored.
std::string Generator::text()
{
    std::string result;
    for (std::size_t left = random_.chance(50) ? 250 + random_.below(12) : random_.below(12);
         left > 0; --left)
        result += static_cast<char>('!' + random_.below(90));
    return result;
}

unsigned int Generator::groupOr(unsigned int otherwise)
{
    return slot().groups.empty() ? otherwise : random_.pick(slot().groups);
}

unsigned int Generator::shapeOr(unsigned int otherwise)
{
    return slot().shapes.empty() ? otherwise : random_.pick(slot().shapes);
}

unsigned int Generator::anyId()
{
    return random_.chance(10) ? 2147483647U
                              : static_cast<unsigned int>(random_.below(slot().last + 4));
}

} // namespace Languages
