#include "fault/RecoverableRun.h"

#include "fault/Host.h"

#include "support/WritingRecord.h"

#include "Zyl2/Wvf/BlockEncoder.h"

#include <Zyl2/Exception/Exception.h>

#include <exception>
#include <map>
#include <random>

namespace Fault {

namespace {

using namespace Zyl2::Mox2;

class Dice
{
public:
    explicit Dice(std::uint32_t seed) : engine_(seed) {}
    std::uint32_t below(std::uint32_t end) { return static_cast<std::uint32_t>(engine_() % end); }

private:
    std::mt19937 engine_;
};

Attributes attributesOf(Dice& dice)
{
    Attributes attributes;
    for (std::uint32_t left = dice.below(4); left != 0; --left) {
        std::string const name = "attribute " + std::to_string(dice.below(5));
        switch (dice.below(8)) {
        case 0:
            attributes.set(name, 7U);
            break;
        case 1:
            attributes.set(name, 0.5F);
            break;
        case 2:
            attributes.set(name, std::string("zero\0byte", 9));
            break;
        case 3:
            attributes.set(name, -3L);
            break;
        case 4:
            attributes.set("Category", "Vibration");
            break;
        default:
            attributes.set(name, static_cast<int>(dice.below(1000)));
        }
    }
    // What can't be stored ends a call half-way.
    if (dice.below(12) == 0)
        attributes.set("curve", std::vector<bool>{true, false});
    if (dice.below(20) == 0) {
        attributes.set("texts", std::vector<std::string>{"a", ""});
        attributes.set("wide", std::vector<std::wstring>{L"a", L"", L"\u00e4"});
    }
    return attributes;
}

NodeProperties propertiesOf(Dice& dice)
{
    NodeProperties properties;
    if (dice.below(2) == 0)
        properties.set(PropertyType::Translation, std::vector<float>{1, 2, 3});
    if (dice.below(2) == 0)
        properties.set(PropertyType::DiffuseColor, std::vector<float>{0.5F, 0.25F, 0.125F});
    if (dice.below(3) == 0)
        properties.set(PropertyType::Transparency, 0.5F);
    if (dice.below(5) == 0)
        properties.set(PropertyType::Shininess, "a text");
    return properties;
}

std::vector<float> valuesOf(Dice& dice, std::size_t count)
{
    bool const isNoise = dice.below(2) == 0;
    std::vector<float> values(count);
    for (std::size_t at = 0; at < count; ++at)
        values[at] = isNoise ? static_cast<float>(dice.below(1U << 24U))
                             : static_cast<float>(at % 100) * 0.5F;
    return values;
}

StepList stepsOf(Dice& dice, std::size_t number)
{
    std::size_t const count = dice.below(10) == 0 ? 0 : 1 + dice.below(2);
    StepList steps(count);
    for (std::size_t step = 0; step < count; ++step)
        steps.set(step, Step(dice.below(4) == 0 ? "" : "step " + std::to_string(number / 5 + step),
                             attributesOf(dice)));
    return steps;
}

/// To the node's parent or, where there is no such node, to the root.
void moveTo(Model& model, unsigned int node)
{
    try {
        model.setCurrentNodeId(node);
        model.moveToParentNode();
    } catch (Zyl2::Exception::OutOfBounds const&) {
        model.setCurrentNodeId(1);
    }
}

Encoder encoderOf(Dice& dice)
{
    auto const encoder = static_cast<Encoder>(1 + dice.below(3));
    bool const isThere =
        encoder == Encoder::Zlib ||
        Zyl2Wvf::FindEncoder(encoder == Encoder::Isal ? "isal" : "libdeflate") != nullptr;
    return isThere ? encoder : Encoder::Zlib;
}

} // namespace

RecoverableRun::RecoverableRun(std::uint32_t seed, Cursor cursor) : cursor_(cursor)
{
    Dice dice(seed);
    options_.overwrite = true;
    options_.text1 = "host \xff " + std::to_string(seed);
    options_.text2 = "source";
    options_.encoder = encoderOf(dice);
    options_.threads = dice.below(2) == 0 ? 0 : 2;
    options_.blockSize = std::uint64_t(1024) << dice.below(8);
    std::size_t const count = 5 + dice.below(60);
    calls_.push_back([](Model& model) { model.addNode(NodeType::RootGroup, "root"); });
    calls_.push_back([](Model& model) { model.addNode(NodeType::Shape, "shape"); });
    for (std::size_t number = 2; number < count; ++number)
        calls_.push_back(randomCall(dice.below(~0U), number));
}

RecoverableRun::Call RecoverableRun::randomCall(std::uint32_t seed, std::size_t number)
{
    Dice dice(seed);
    std::uint32_t const node = 1 + dice.below(ids_ + 1);
    std::string const name = "node " + std::to_string(number);
    switch (dice.below(10)) {
    case 0:
    case 1: {
        Attributes const attributes = attributesOf(dice);
        bool const isShape = dice.below(2) == 0;
        bool const isWrong = dice.below(10) == 0;
        ids_ += isShape ? 2 : 1;
        bool const isCursorSet = cursor_ == Cursor::Set || dice.below(4) != 0;
        return [=](Model& model) {
            if (isCursorSet)
                moveTo(model, node);
            model.addNode(isWrong   ? NodeType::RootGroup
                          : isShape ? NodeType::Shape
                                    : NodeType::Group,
                          name, attributes);
        };
    }
    case 2: {
        NodeProperties const properties = propertiesOf(dice);
        Attributes const attributes = attributesOf(dice);
        return [=](Model& model) { model.setNodeData(node, properties, attributes); };
    }
    case 3: {
        std::vector<std::string> paths{"/root/a/" + name, "/root/b/", "", "/root/" + name + "/c"};
        if (dice.below(4) == 0)
            paths.insert(paths.begin() + 2, "relative");
        ids_ += 4;
        return [=](Model& model) {
            try {
                model.getNodeId("/root/shape/shape");
            } catch (std::exception const&) {
                // The cursor is where it is.
            }
            model.addAssemblyComponents(paths);
        };
    }
    case 4: {
        std::map<std::string, Attributes> const components{
            {"|root|" + name + "|", attributesOf(dice)}, {"|root|shape", attributesOf(dice)}};
        ids_ += 1;
        return [=](Model& model) { model.addAssemblyComponents(components, "|"); };
    }
    default:
        return array(dice.below(~0U), number);
    }
}

RecoverableRun::Call RecoverableRun::array(std::uint32_t seed, std::size_t number) const
{
    Dice dice(seed);
    // Some are longer than a block, most share one.
    auto const block = static_cast<std::uint32_t>(options_.blockSize / sizeof(float));
    std::size_t const rows = dice.below(dice.below(4) == 0 ? 2 * block : block / 3 + 1) / 3;
    bool const isTable = dice.below(2) == 0;
    bool const isWrong = dice.below(12) == 0;
    std::vector<float> const values = valuesOf(dice, isTable ? rows * 3 : rows);
    std::vector<unsigned int> ids{3};
    for (std::uint32_t left = dice.below(3); left != 0; --left)
        ids.push_back(1 + dice.below(ids_ + 2));
    StepList const steps = stepsOf(dice, number);
    Attributes const attributes = attributesOf(dice);
    std::string const name = "array " + std::to_string(dice.below(6));
    bool const isView = dice.below(3) == 0;
    // Values without a place in a float are taken back when others of them are there already.
    bool const isMisfit = dice.below(5) == 0;
    DatasetType const type = isTable != isWrong ? DatasetType::Result11 : DatasetType::Result10;
    return [=](Model& model) {
        if (isView && !isTable) {
            std::vector<double> doubles(values.begin(), values.end());
            if (isMisfit && !doubles.empty())
                doubles.back() = 1e99;
            model.addArrayProperty(name, type, doubles, ids, steps, attributes);
        } else if (isTable) {
            model.addArrayProperty(name, type, ArrayView::table(values, 3), ids, steps, attributes);
        } else {
            std::vector<unsigned int> numbers(values.begin(), values.end());
            model.addArrayProperty(name, type, Array1d<unsigned int>(numbers),
                                   Array1d<unsigned int>(ids), steps, attributes);
        }
    };
}

void RecoverableRun::makeCalls(Model& model, std::string const& path, bool isRecoverable,
                               std::size_t count,
                               std::function<void(std::size_t)> const& done) const
{
    SaverOptions options = options_;
    options.recoverable = isRecoverable ? 1 : 0;
    model.saveTo(path, options);
    for (std::size_t call = 0; call < count; ++call) {
        try {
            calls_[call](model);
        } catch (std::exception const&) {
            // Hosts go on.
        }
        if (done)
            done(call + 1);
    }
}

bool RecoverableRun::open(Model& model, std::string const& path, bool isRecoverable) const
{
    SaverOptions options = options_;
    options.recoverable = isRecoverable ? 1 : 0;
    try {
        AtWork const atWork;
        model.saveTo(path, options);
        return true;
    } catch (std::exception const&) {
        return false;
    }
}

std::vector<std::size_t> RecoverableRun::addedCalls(Model& model) const
{
    std::vector<std::size_t> added;
    added.reserve(calls_.size());
    for (std::size_t call = 0; call < calls_.size(); ++call) {
        Ending ending{};
        try {
            AtWork const atWork;
            calls_[call](model);
        } catch (...) {
            ending = endingOfCurrentException();
        }
        if (ending == 0 || ending == OtherOfTheFamily)
            added.push_back(call);
    }
    return added;
}

void RecoverableRun::makeCalls(Model& model, std::vector<std::size_t> const& calls) const
{
    for (std::size_t const call : calls) {
        try {
            calls_[call](model);
        } catch (std::exception const&) {
            // As it did before.
        }
    }
}

void RecoverableRun::writeWhole(std::string const& path, std::size_t count) const
{
    Model model;
    makeCalls(model, path, false, count);
    model.close();
}

std::string RecoverableRun::contentOf(std::string const& path) const
{
    return options_.encoder == Encoder::Isal ? Support::inflatedWithoutWritingRecord(path)
                                             : Support::withoutWritingRecord(path);
}

} // namespace Fault
